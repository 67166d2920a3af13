/// A catalog: its import, with and without validation, the logs, conversions, and messages of its operations.
/// Pieces of the input can stand for many: see expansion.h.

#include <algorithm>

#include "catalog_files.h"
#include "catalogs.h"
#include "expansion.h"
#include "import/text/format_text.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

constexpr std::size_t kMaxMessages = 8;
constexpr std::size_t kMaxBytes = 24;

/// Half of the messages have small values, which more often mean something as a selector.
std::vector<std::uint8_t> DrawBytes(Draw& draw) {
    std::vector<std::uint8_t> bytes(draw.Below(kMaxBytes + 1));
    const unsigned end = draw.Flag() ? 4 : 256;
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(draw.Below(end));
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Draw draw(TextOf(data, size));
    const std::string path = WriteCatalog(Expanded(TextOf(data, size), kMaxCatalog));
    const std::string logPath = ScratchFile("catalog.log");
    const auto manager = MakeManager();
    manager->Validate = draw.Flag();
    manager->ReadNewer = draw.Flag();
    std::string console;
    manager->MessageSink = [&](const std::string& text, ImportEvent /*event*/) {
        console += RenderAsFormat(text);
    };
    std::string name;
    const bool isImported = manager->Import(name, path, 1, logPath);
    Require(!console.empty(), "an import says what it does");
    const std::string log = ReadFile(logPath);
    const std::string result = "Import of file " + path + (isImported ? " completed" : " failed");
    Require(log.find(result) != std::string::npos, "the log tells the result");
    if (!isImported) {
        return 0;
    }
    manager->WriteTreeLog(ScratchFile("catalog.tree"));
    const ZMTCatalog* catalog = manager->FindCatalog(name);
    Require(catalog != nullptr, "an imported catalog is there");
    const bool withNames = draw.Below(4) == 0;
    RequireConversion(*catalog, withNames ? TARVEX_EXAMPLES "/aliases.txt" : "",
                      withNames ? TARVEX_EXAMPLES "/network.txt" : "", draw);

    std::vector<CapturedMessage> messages = MessagesOf(*catalog);
    for (std::size_t i = 0; i < std::min(messages.size(), kMaxMessages); ++i) {
        CapturedMessage& message = messages[draw.Below(static_cast<unsigned>(messages.size()))];
        message.data = DrawBytes(draw);
        RequireDecoding(*catalog, message);
    }
    return 0;
}
