/// Names and texts as a catalog writes them; those of the tree lack what databases do not take.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalog/fblock.h"
#include "catalog/function.h"
#include "catalog/param.h"
#include "params/bool_field.h"
#include "params/enumeration.h"

namespace tarvex::review {

// The elements have to be there still. Texts come out in one line, with the name in the tree where the
// catalog has none that could have become it; whoever prints them hides their control characters.

/// In one line, whatever the indentation of the catalog.
std::string InOneLine(std::string_view text);

/// The element of a block, which holds those of its functions; null for none.
const Element* ElementOf(const ZMTFBlock& block);
inline const Element* ElementOf(const ZMTFunction& function) {
    return function.GetElement();
}

std::string OwnName(const ZMTFBlock& block);
std::string OwnName(const ZMTFunction& function);
std::string OwnName(const ZMTParam& param);  ///< Also of a field, an element of an array, a signal or a bit.

// The same as it stands in the document, which may be something else than the name; empty for none.
std::string_view RawName(const ZMTFBlock& block);
std::string_view RawName(const ZMTFunction& function);
std::string_view RawName(const ZMTParam& param);

/// Both have the same name, in the tree and in the catalog.
template <class Node>
bool HaveSameNames(const Node& a, const Node& b) {
    return a.GetName() == b.GetName() && (RawName(a) == RawName(b) || OwnName(a) == OwnName(b));
}

/// Letters of a name in the catalog did not come into the tree.
bool LacksLetters(const std::string& ownName);

/// A name for people: that of the tree, or the catalog's in quotes where nothing of it came into the tree.
std::string ShortestName(const ZMTParam& param);

/// What the catalog says of a value; newer ones may have a sentence about it.
struct ValueTexts {
    std::string name;
    std::string description;

    bool operator==(const ValueTexts&) const = default;
};
/// Of all values, in their order.
std::vector<ValueTexts> OwnValues(const ZMTParamEnum& enumeration);
/// Whether the elements of the values are written alike. Two others may still say the same.
bool AreValuesWrittenAlike(const ZMTParamEnum& a, const ZMTParamEnum& b);
/// The element that the values stand in; null for none.
const Element* ElementOfValues(const ZMTParamEnum& enumeration);

struct BitTexts {
    std::string name;
    std::string whenTrue;
    std::string whenFalse;

    bool operator==(const BitTexts&) const = default;
    /// "on / off"
    std::string Meanings() const { return whenTrue + " / " + whenFalse; }
};
BitTexts OwnTexts(const ZMTParamBoolField& bit);

}  // namespace tarvex::review
