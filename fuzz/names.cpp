/// A file of aliases or network nodes, also in a conversion of the fixed catalog.

#include <algorithm>

#include "catalogs.h"
#include "export/alias_names.h"
#include "export/config_lines.h"
#include "export/network_nodes.h"

using namespace tarvex;
using namespace tarvex::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = ScratchFile("names.txt");
    WriteFile(path, TextOf(data, size));
    std::map<std::string, std::string> last;
    const ConfigFile file = ReadConfigLines(path, [&](std::string_view name, std::string_view value) {
        Require(name.find_first_of(",\n") == std::string::npos, "a name ends before the first comma");
        Require(value.find('\n') == std::string::npos, "a value is one line");
        Require(name.size() + value.size() < kMaxConfigLine, "a line has a bounded length");
        last[std::string(name)] = value;
    });
    Require(file == ConfigFile::Whole, "a file of lines can be read");
    AliasNames aliases;
    Require(aliases.Read(path) == ConfigFile::Whole, "aliases can be read");
    for (const auto& [name, alias] : last) {
        Require(aliases.Of(name) == alias, "the last alias of a name counts");
    }
    Require(aliases.Of("a,b") == "a,b", "a name without an alias stands for itself");

    NodeAddresses nodes;
    Require(ReadNodeAddresses(path, nodes) == ConfigFile::Whole, "nodes can be read");
    for (const auto& [address, name] : nodes) {
        Require(last.contains(name), "a node has the name of a line");
    }

    Draw draw(TextOf(data, size));
    if (draw.Below(16) == 0) {
        const bool isAliasFile = draw.Flag();
        RequireConversion(FixedCatalog(), isAliasFile ? path : "", isAliasFile ? "" : path, draw);
    }
    return 0;
}
