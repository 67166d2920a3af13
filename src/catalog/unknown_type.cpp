#include "catalog/unknown_type.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "import/xml/element.h"

namespace tarvex {
namespace {

/// What stands beside the type.
constexpr std::string_view kOtherElements[] = {"ParamName",        "ParamDescription", "TRecordFieldName",
                                               "TRecordFieldDesc", "TArrayName",       "TArrayDesc"};
constexpr std::string_view kTypeWrapper = "Type";
constexpr std::string_view kOpTypeWrapper = "OPType";

bool MayBeType(const Element& element) {
    return std::ranges::find(kOtherElements, element.name) == std::end(kOtherElements) &&
           !element.name.ends_with(kOpTypeWrapper);
}

}  // namespace

const Element& FindUnknownType(const Element& element) {
    for (const Element* child = FirstChildElement(&element); child != nullptr;
         child = NextSiblingElement(*child)) {
        if (!MayBeType(*child)) {
            continue;
        }
        const Element* inside = child->name.ends_with(kTypeWrapper) ? FirstChildElement(child) : nullptr;
        return inside != nullptr ? *inside : *child;
    }
    return element;
}

}  // namespace tarvex
