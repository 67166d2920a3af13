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
    const auto lines = ReadConfigLines(path);
    Require(lines.has_value(), "a file of lines can be read");

    std::map<std::string, std::string> last;
    for (const ConfigLine& line : *lines) {
        Require(line.name.find_first_of(",\n") == std::string::npos, "a name ends before the first comma");
        Require(line.value.find('\n') == std::string::npos, "a value is one line");
        Require(line.name.size() + line.value.size() < kMaxConfigLine, "a line has a bounded length");
        last[line.name] = line.value;
    }
    AliasNames aliases;
    Require(aliases.Read(path), "aliases can be read");
    for (const auto& [name, alias] : last) {
        Require(aliases.Of(name) == alias, "the last alias of a name counts");
    }
    Require(aliases.Of("a,b") == "a,b", "a name without an alias stands for itself");

    const auto nodes = ReadNodeAddresses(path);
    Require(nodes.has_value(), "nodes can be read");
    for (const auto& [address, name] : *nodes) {
        Require(last.contains(name), "a node has the name of a line");
    }

    Draw draw(TextOf(data, size));
    if (draw.Below(16) == 0) {
        const bool isAliasFile = draw.Flag();
        RequireConversion(FixedCatalog(), isAliasFile ? path : "", isAliasFile ? "" : path, draw);
    }
    return 0;
}
