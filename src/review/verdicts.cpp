#include "review/verdicts.h"

#include <algorithm>

#include "import/text/format_text.h"

namespace tarvex::review {
namespace {

void CountFunction(const ZMTFBlock& block, const ZMTFunction& function, Verdicts& verdicts) {
    ++verdicts.functions;
    const unsigned end = std::max<unsigned>(function.Size(), std::size(kOpTypes));
    for (unsigned opType = 0; opType < end; ++opType) {
        const Address address{block.FBlockID(), function.FunctionID(), opType};
        const ZMTOperation* operation = function.GetAt(opType);
        if (operation == nullptr) {
            if (function.LostParams().FirstOf(opType) != nullptr) {
                verdicts.lostMessages.push_back(address);
            }
            continue;
        }
        ++verdicts.messages;
        switch (LayoutOf(*operation)) {
            case Layout::Complete:
                ++verdicts.complete;
                break;
            case Layout::Open:
                ++verdicts.open;
                break;
            case Layout::Incomplete:
                verdicts.incomplete.push_back(address);
                break;
        }
    }
}

/// What the catalog has, lost or not.
void CountElements(const Element& root, std::size_t& blocks, std::size_t& functions) {
    for (const Element* block = FindChildElement(&root, "FBlock"); block != nullptr;
         block = FindNextSiblingElement(*block, "FBlock")) {
        ++blocks;
        for (const Element* element = NextDescendant(*block, *block); element != nullptr;
             element = NextDescendant(*block, *element)) {
            functions += HasTagName(*element, "Function") ? 1 : 0;
        }
    }
}

}  // namespace

std::string AddressText(const Address& address) {
    return FormatText("%02X.%03X.%X", address.fBlockID, address.functionID, address.opType);
}

Verdicts VerdictsOf(const CatalogReading& reading) {
    Verdicts verdicts;
    if (const ZMTCatalog* catalog = reading.Catalog()) {
        for (const ZMTFBlock& block : catalog->Items()) {
            ++verdicts.blocks;
            for (const ZMTFunction& function : block.Items()) {
                CountFunction(block, function, verdicts);
            }
        }
    }
    if (const Element* root = reading.Root()) {
        std::size_t blocks = 0;
        std::size_t functions = 0;
        CountElements(*root, blocks, functions);
        verdicts.lostBlocks = blocks - std::min(blocks, verdicts.blocks);
        verdicts.lostFunctions = functions - std::min(functions, verdicts.functions);
    }
    return verdicts;
}

}  // namespace tarvex::review
