#include "import/test_texts.h"

#include <algorithm>

#include "support/catalog_import.h"

namespace tarvex::test {
namespace {

constexpr const char* kNumberWithoutValues =
    R"(<TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType><Unit UnitRef="unit_none"/></TNumber>)";

}  // namespace

std::ostream& operator<<(std::ostream& out, const SinkText& sinkText) {
    return out << '"' << sinkText.text << "\" (" << sinkText.level << ")";
}

std::string CleanCatalog() {
    return CatalogOfParams(Param("Title", R"(<TString TypeRef="type_string" MaxSize="10"/>)"));
}

std::string CatalogWithFourWarnings() {
    return CatalogOfParams(Param("Level", kNumberWithoutValues));
}

std::string CatalogWithOneErrorAndFourWarnings() {
    return CatalogOfParams(Param("Level", kNumberWithoutValues) + Param("Odd", "<TUnknownToAll/>"));
}

std::string WithPath(std::string text, const std::string& path) {
    constexpr std::string_view kMark = "@PATH@";
    for (std::size_t at = text.find(kMark); at != std::string::npos;
         at = text.find(kMark, at + path.size())) {
        text.replace(at, kMark.size(), path);
    }
    return text;
}

ManagerRun::ManagerRun(std::unique_ptr<DocumentReader> reader) : manager(std::move(reader)) {
    manager.Validate = false;
    manager.MessageSink = [this](const std::string& text, ImportEvent event) {
        console.push_back({text, static_cast<int>(event)});
    };
}

bool ManagerRun::Import(const std::string& path, const std::string& logPath) {
    std::string name;
    return manager.Import(name, path, 1, logPath);
}

bool ManagerRun::ImportAs(std::string name, const std::string& path, std::uint16_t group) {
    return manager.Import(name, path, group, "");
}

std::size_t ManagerRun::CountOfTexts(std::string_view start) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(console, [&](const SinkText& sent) { return sent.text.starts_with(start); }));
}

}  // namespace tarvex::test
