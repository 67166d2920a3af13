#include "params/enumeration.h"

#include <set>

#include "catalog/import_context.h"
#include "import/parse_value.h"
#include "params/factory.h"

namespace tarvex {
namespace {

constexpr std::int32_t kDefaultEnumMax = 255;
constexpr std::int32_t kLargestEnumMax = 65535;
constexpr std::uint32_t kLargestOneByteCode = 255;

/// An earlier value has its lowest or its highest code within a later value's range. A value that merely
/// surrounds a later one does not count.
bool Overlap(const std::vector<ZMTEnumValue*>& values) {
    std::set<std::uint32_t> ends;  // of the values so far
    for (const ZMTEnumValue* value : values) {
        const auto next = ends.lower_bound(value->CodeMin());
        if (next != ends.end() && *next <= value->CodeMax()) {
            return true;
        }
        ends.insert({value->CodeMin(), value->CodeMax()});
    }
    return false;
}

}  // namespace

bool ZMTParamEnum::Import(const DOMElement& element, ImportContext& context) {
    if (!ImportParamName(element, context) || !ImportParamPos(element, context)) {
        return false;
    }
    const DOMElement* enumElement = FindTypeElement(element, "TEnum");
    if (enumElement == nullptr) {
        return Raise<kNoTEnum>(context.log, "TEnum");
    }
    ImportEnumMax(*enumElement, context);
    std::string typeRef;
    if (GetAttribute(*enumElement, "TypeRef", typeRef)) {
        ResolveType(typeRef, context);
        ImportValues(*enumElement, context);
    } else {
        Raise<kEnumWithoutType>(context.log, "TypeRef");
    }
    if (enumMax_ > kLargestEnumMax) {
        Raise<kEnumMaxOutOfRange>(context.log, enumMax_, 0, kLargestEnumMax + 1, kLargestEnumMax);
        enumMax_ = kLargestEnumMax;
    }
    SetBytesInMsg(enumMax_ > kLargestOneByteCode ? 2 : 1);
    CheckCodes(context);
    return true;
}

void ZMTParamEnum::ImportEnumMax(const DOMElement& enumElement, ImportContext& context) {
    std::string text;
    if (!GetAttribute(enumElement, "TEnumMax", text)) {
        Raise<kEnumWithoutMax>(context.log, "TEnumMax");
    }
    std::int32_t value = 0;
    if (!ParseInteger(text, value) || value <= 0) {
        Raise<kEnumMaxUnreadable>(context.log, text, kDefaultEnumMax);
        value = kDefaultEnumMax;
    }
    enumMax_ = static_cast<std::uint32_t>(value);
}

void ZMTParamEnum::ImportValues(const DOMElement& enumElement, ImportContext& context) {
    for (const DOMElement* child = FindChildElement(&enumElement, "TEnumValue"); child != nullptr;
         child = FindNextSiblingElement(*child, "TEnumValue")) {
        auto value = std::make_unique<ZMTEnumValue>();
        value->SetParent(this);
        if (value->Import(*child, context)) {
            Append(std::move(value));
        } else {
            Raise<kEnumValueFailed>(context.log, "TEnumValue");
        }
    }
}

void ZMTParamEnum::CheckCodes(ImportContext& context) const {
    const std::vector<ZMTEnumValue*> values = GetItems(false);
    const bool isInRange = std::ranges::all_of(values, [&](const ZMTEnumValue* value) {
        return value->CodeMin() <= enumMax_ && value->CodeMax() <= enumMax_;
    });
    if (!isInRange) {
        Raise<kEnumCodeOutOfRange>(context.log);
    } else if (Overlap(values)) {
        Raise<kEnumCodesOverlap>(context.log);
    }
}

bool ZMTParamEnum::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    ResolveOrDelete(context);
    return true;
}

bool ZMTParamEnum::Dump(ZMostFCatLog& treeLog) const {
    DumpLine(treeLog, "PARAMENUM: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".EnumMax: %d", enumMax_));
    DumpAll(treeLog);
    return true;
}

bool ZMTParamEnum::CopyFrom(const ZMTNode* other) {
    if (!ZMTParam::CopyFrom(other)) {
        return false;
    }
    const auto& enumeration = static_cast<const ZMTParamEnum&>(*other);
    enumMax_ = enumeration.enumMax_;
    return ZMTChildList<ZMTEnumValue>::CopyFrom(&enumeration, this);
}

}  // namespace tarvex
