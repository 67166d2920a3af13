#include "review/verdicts.h"

#include <algorithm>
#include <bitset>
#include <unordered_map>
#include <unordered_set>

#include "catalog/op_type_selection.h"
#include "import/text/format_text.h"

namespace tarvex::review {
namespace {

using Elements = std::unordered_set<const Element*>;

/// Its messages, also those that have lost all that they had: a database can have them. False when there are
/// none.
bool CountMessages(const ZMTFBlock& block, const ZMTFunction& function, Verdicts& verdicts) {
    const std::size_t before = verdicts.messages;
    const unsigned end = std::max<unsigned>(function.Size(), std::size(kOpTypes));
    for (unsigned opType = 0; opType < end; ++opType) {
        const ZMTOperation* operation = function.GetAt(opType);
        if (operation == nullptr && function.LostParams().FirstOf(opType) == nullptr) {
            continue;
        }
        ++verdicts.messages;
        switch (operation == nullptr ? Layout::Incomplete : LayoutOf(*operation)) {
            case Layout::Complete:
                ++verdicts.complete;
                break;
            case Layout::Open:
                ++verdicts.open;
                break;
            case Layout::Incomplete:
                verdicts.incomplete.push_back({block.FBlockID(), function.FunctionID(), opType});
                break;
        }
    }
    return verdicts.messages > before;
}

const Element* FunctionAround(const Element& element) {
    const Element* around = element.parent;
    while (around != nullptr && !HasTagName(*around, "Function")) {
        around = around->parent;
    }
    return around;
}

/// The operations that the elements of a function name, as bits: of properties, then of methods.
using OperationBits = std::bitset<2 * std::size(kOpTypes)>;

/// Counts what the catalog has and the tree has not. `kept` are the elements of functions that have messages.
void CountLost(const Element& root, const Elements& kept, Verdicts& verdicts) {
    std::size_t blocks = 0;
    std::size_t functions = 0;
    std::unordered_map<const Element*, OperationBits> operations;  // of functions that are not kept
    for (const Element* block = FindChildElement(&root, "FBlock"); block != nullptr;
         block = FindNextSiblingElement(*block, "FBlock")) {
        ++blocks;
        for (const Element* element = NextDescendant(*block, *block); element != nullptr;
             element = NextDescendant(*block, *element)) {
            if (HasTagName(*element, "Function")) {
                ++functions;
            } else if (const OpTypeSelection* selection = FindOpTypeSelection(element->name)) {
                const Element* function = FunctionAround(*element);
                if (function != nullptr && !kept.contains(function)) {
                    const bool isMethod = selection->kind == ClassKind::Method;
                    operations[function].set(selection->opType + (isMethod ? std::size(kOpTypes) : 0));
                }
            }
        }
    }
    verdicts.lostBlocks = blocks - std::min(blocks, verdicts.blocks);
    verdicts.lostFunctions = functions - std::min(functions, verdicts.functions);
    for (const auto& [function, bits] : operations) {
        verdicts.lostMessages += bits.count();
    }
}

}  // namespace

std::string AddressText(const Address& address) {
    return FormatText("%02X.%03X.%X", address.fBlockID, address.functionID, address.opType);
}

Verdicts VerdictsOf(const CatalogReading& reading) {
    Verdicts verdicts;
    Elements kept;
    if (const ZMTCatalog* catalog = reading.Catalog()) {
        for (const ZMTFBlock& block : catalog->Items()) {
            ++verdicts.blocks;
            for (const ZMTFunction& function : block.Items()) {
                ++verdicts.functions;
                if (CountMessages(block, function, verdicts)) {
                    kept.insert(function.GetElement());
                }
            }
        }
    }
    if (const Element* root = reading.Root()) {
        CountLost(*root, kept, verdicts);
    }
    return verdicts;
}

}  // namespace tarvex::review
