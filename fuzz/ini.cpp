/// An initialisation file: its settings, and those of a file that is written from them.

#include <algorithm>

#include "driver/ini_file.h"
#include "driver/settings.h"
#include "import/text/names.h"
#include "support.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

constexpr std::size_t kMaxText = 259;

std::string Joined(const NameSet& names) {
    std::string text;
    for (const std::string& name : names) {
        Require(!name.empty() && name.find_first_of(kListSeparators) == std::string::npos,
                "a name is a token");
        text += (text.empty() ? "" : ",") + name;
    }
    return text;
}

/// In the shorter of the two systems, so that a list that fits a buffer fits it again.
std::string Joined(const std::set<std::uint32_t>& numbers) {
    std::string text;
    for (const std::uint32_t number : numbers) {
        const std::string decimal = std::to_string(static_cast<std::int32_t>(number));
        char hexadecimal[16];
        std::snprintf(hexadecimal, sizeof hexadecimal, "0x%X", number);
        text += text.empty() ? "" : ",";
        text += std::min(decimal, std::string(hexadecimal),
                         [](const std::string& a, const std::string& b) { return a.size() < b.size(); });
    }
    return text == "-1" ? "0xFFFFFFFF" : text;  // which alone means that nothing is set
}

struct Flag {
    const char* key;
    bool ExportFlags::*member;
};
constexpr Flag kFlags[] = {
    {"WriteSignals", &ExportFlags::writeSignals},
    {"UniqueSignalNames", &ExportFlags::uniqueSignalNames},
    {"StrictExport", &ExportFlags::strictExport},
    {"CreateNetworkNodes", &ExportFlags::createNetworkNodes},
    {"AssignMessagesToNodes", &ExportFlags::assignMessagesToNodes},
    {"SetMessageLength", &ExportFlags::setMessageLength},
    {"MakeExtended", &ExportFlags::makeExtended},
    {"MakeReadOnly", &ExportFlags::makeReadOnly},
};

/// The file that has these settings.
std::string Written(const Settings& settings) {
    std::string text;
    const auto add = [&](std::string_view key, std::string_view value) {
        text.append(key).append("=\"").append(value).append("\"\n");
    };
    text += "[Conversion]\n";
    for (const Flag& flag : kFlags) {
        add(flag.key, settings.exportFlags.*flag.member ? "1" : "0");
    }
    add("WarnOnOverwrite", settings.warnOnOverwrite ? "1" : "0");
    add("Exclude", Joined(settings.exclude));
    add("Include", Joined(settings.include));
    add("AliasNames", settings.aliasNamesPath);
    add("NetworkConfiguration", settings.networkConfigurationPath);
    text += "[Import]\n";
    add("FCatImportValidate", settings.importValidate ? "1" : "0");
    add("FCatImportLog", settings.importLog ? "1" : "0");
    add("FCatTreeLog", settings.treeLogPath);
    add("FCatImportLogExclude", Joined(settings.importLogExclusions));
    return text;
}

void RequireShort(const Settings& settings) {
    for (const std::string* text :
         {&settings.treeLogPath, &settings.aliasNamesPath, &settings.networkConfigurationPath}) {
        Require(text->size() <= kMaxText && text->find('\n') == std::string::npos, "a text fits its buffer");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = ScratchFile("settings.ini");
    WriteFile(path, TextOf(data, size));
    const IniFile ini(path);
    const Settings settings = ReadSettings(ini);
    RequireShort(settings);

    for (const Flag& flag : kFlags) {
        const unsigned number = ini.GetInteger("CONVERSION", flag.key, 2);
        Require(number == 2 || settings.exportFlags.*flag.member == (number == 1), "1 alone sets a flag");
        const std::string whole = ini.GetString("conversion", flag.key, "", size + 1);
        Require(ini.GetString("Conversion", flag.key, "", 4) == whole.substr(0, 3), "a value is cut");
    }

    const std::string written = Written(settings);
    WriteFile(path, written);
    Require(Written(ReadSettings(IniFile(path))) == written, "settings stay the same when they are written");
    return 0;
}
