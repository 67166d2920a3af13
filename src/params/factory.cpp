#include "params/factory.h"

#include "import/xml/element.h"
#include "params/array.h"
#include "params/bit_field.h"
#include "params/boolean.h"
#include "params/classified_stream.h"
#include "params/enumeration.h"
#include "params/fkt_id_bit_stream.h"
#include "params/number.h"
#include "params/record.h"
#include "params/short_stream.h"
#include "params/stream.h"
#include "params/string.h"
#include "params/void.h"

namespace tarvex {
namespace {

template <class T>
std::unique_ptr<ZMTParam> Make(const Element& /*element*/) {
    return std::make_unique<T>();
}

std::unique_ptr<ZMTParam> MakeStream(const Element& element) {
    if (IsFktIDBitStream(element)) {
        return std::make_unique<ZMTParamFktIDBitStream>();
    }
    return std::make_unique<ZMTParamStream>();
}

struct KindRow {
    const char* typeElement = nullptr;
    std::unique_ptr<ZMTParam> (*make)(const Element& element) = nullptr;
    bool isNewer = false;
};
constexpr KindRow kKinds[] = {
    {"TNumber", Make<ZMTParamNumber>},
    {"TEnum", Make<ZMTParamEnum>},
    {"TString", Make<ZMTParamString>},
    {"TBool", Make<ZMTParamBool>},
    {"TBitField", Make<ZMTParamBitField>},
    {"TVoid", Make<ZMTParamVoid>},
    {"TArray", Make<ZMTParamArray>},
    {"TRecord", Make<ZMTParamRecord>},
    {"TStream", MakeStream},
    {"TShortStream", Make<ZMTParamShortStream>, true},
    {"TCStream", Make<ZMTParamClassifiedStream>, true},
};

/// The kind of the first type element among the direct children; null if there is none.
const KindRow* FindKind(const Element& parent, NewerForms& newer) {
    for (const Element* child = FirstChildElement(&parent); child != nullptr;
         child = NextSiblingElement(*child)) {
        for (const KindRow& row : kKinds) {
            if (HasTagName(*child, row.typeElement) && (!row.isNewer || newer.Meet())) {
                return &row;
            }
        }
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<ZMTParam> CatalogParamFactory::Create(const Element& element, NewerForms& newer) const {
    const KindRow* kind = FindKind(element, newer);
    for (const Element* child = FirstChildElement(&element); kind == nullptr && child != nullptr;
         child = NextSiblingElement(*child)) {
        kind = FindKind(*child, newer);
    }
    return kind == nullptr ? nullptr : kind->make(element);
}

}  // namespace tarvex
