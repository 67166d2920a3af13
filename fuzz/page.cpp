/// The page of a catalog: nothing of the catalog stands outside of its data, and the data hold together.

#include "page/page.h"

#include <algorithm>

#include "catalog_files.h"
#include "catalogs.h"
#include "expansion.h"
#include "page/unpacked_page.h"
#include "review/catalog_reading.h"
#include "review/verdicts.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

using nlohmann::json;

std::string PageOf(const review::CatalogReading& reading) {
    const std::string path = ScratchFile("page.html");
    page::WritePage(reading, path);
    return ReadFile(path);
}

/// The page without the elements that hold its data.
std::string WithoutData(const std::string& page) {
    constexpr std::string_view kBegin = "<script type=\"application/octet-stream\"";
    constexpr std::string_view kEnd = "</script>\n";
    std::string rest;
    std::size_t from = 0;
    for (std::size_t at = page.find(kBegin); at != std::string::npos; at = page.find(kBegin, from)) {
        rest.append(page, from, at - from);
        from = page.find(kEnd, at) + kEnd.size();
    }
    return rest.append(page, from);
}

/// The look of each operation and the parameters of the function are there. Returns the number of its
/// operations.
std::size_t CheckFunction(const json& function, std::size_t params) {
    const std::size_t looks = function.at("looks").size();
    for (const json& operation : function.at("operations")) {
        Require(operation.value("look", 0U) < std::max<std::size_t>(looks, 1), "an operation has its look");
        Require(operation.at("positions").size() == function.at("params").size(),
                "an operation says where each parameter stands");
    }
    for (const json& param : function.at("params")) {
        Require(param.get<std::size_t>() < params, "a function has its parameters");
    }
    return function.at("operations").size();
}

/// Each entry has a line, a context and places.
void CheckSearch(const json& piece) {
    const std::string lines = piece.at("lines");
    const std::size_t entries = piece.at("contextOf").size();
    Require(static_cast<std::size_t>(std::ranges::count(lines, '\n')) + 1 == entries,
            "a line is one entry of the search");
    std::size_t at = 0;
    const json& places = piece.at("places");
    for (const json& context : piece.at("contextOf")) {
        Require(context.get<std::size_t>() < piece.at("contexts").size(), "an entry has its context");
        at += 1 + places.at(at).get<std::size_t>();
    }
    Require(at == places.size(), "each entry has its places");
}

void CheckPieces(const std::map<std::string, json>& pieces, const review::CatalogReading& reading) {
    std::size_t functions = 0;
    std::size_t messages = 0;
    for (const auto& [id, piece] : pieces) {
        if (piece.contains("lines")) {
            CheckSearch(piece);
        } else if (piece.contains("functions") && piece.contains("params")) {
            functions += piece.at("functions").size();
            for (const json& function : piece.at("functions")) {
                messages += CheckFunction(function, piece.at("params").size());
            }
        }
    }
    const review::Verdicts verdicts = review::VerdictsOf(reading);
    Require(functions == verdicts.functions, "the page has all functions");
    Require(messages == verdicts.messages, "the page has all messages");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::string sameInAllPages;
    Draw draw(TextOf(data, size));
    const std::string path = WriteCatalog(Expanded(TextOf(data, size), kMaxCatalog));
    review::ReadingOptions options;
    options.makeReader = MakeLastingReader;
    options.areNewerRead = draw.Flag();
    options.isValidated = draw.Flag();
    options.areDescriptionsRead = true;
    const review::CatalogReading reading(path, options);
    if (reading.Catalog() == nullptr) {
        return 0;
    }
    const std::string page = PageOf(reading);
    const std::string around = WithoutData(page);
    if (sameInAllPages.empty()) {
        sameInAllPages = around;
    }
    Require(around == sameInAllPages, "nothing of a catalog stands outside of the data");
    CheckPieces(test::PiecesOf(page), reading);
    Require(PageOf(reading) == page, "equal input gives equal pages");
    return 0;
}
