#include "catalog_files.h"

#include <filesystem>
#include <iterator>

#include "support.h"

namespace tarvex::fuzz {
namespace {

constexpr std::string_view kBeside[] = {"a.dtd", "b.dtd"};

/// Cuts off what stands behind the mark of a file, and writes it there. Without the mark there is no file.
std::string_view CutOff(std::string_view input, std::string_view name) {
    const std::string path = ScratchFile(name);
    const std::string mark = "<!--" + std::string(name) + "-->";
    const std::size_t at = input.find(mark);
    if (at == std::string_view::npos) {
        std::filesystem::remove(path);
        return input;
    }
    WriteFile(path, input.substr(at + mark.size()));
    return input.substr(0, at);
}

}  // namespace

std::string WriteCatalog(std::string_view input) {
    static const std::string dtd = ReadFile(TARVEX_EXAMPLES "/fcat.dtd");
    WriteFile(ScratchFile("fcat.dtd"), dtd);
    // The last file first: the marks stand in the order of the names.
    for (std::size_t i = std::size(kBeside); i > 0; --i) {
        input = CutOff(input, kBeside[i - 1]);
    }
    std::string path = ScratchFile("catalog.xml");
    WriteFile(path, input);
    return path;
}

}  // namespace tarvex::fuzz
