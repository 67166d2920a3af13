#include "params/enumeration.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

constexpr std::int32_t kDefaultEnumMax = 255;
constexpr std::int32_t kLargestEnumMax = 65535;
constexpr std::uint32_t kLargestOneByteCode = 255;

/// No value has the code.
constexpr unsigned kNoSlot = ~0U;

/// The first value that has the lowest or the highest code of an earlier one within its range; null if there
/// is none. A value that merely surrounds a later one does not count.
const ZMTEnumValue* FindOverlapping(ItemRange<const ZMTEnumValue> values) {
    std::set<std::uint32_t> ends;  // of the values so far
    for (const ZMTEnumValue& value : values) {
        const auto next = ends.lower_bound(value.CodeMin());
        if (next != ends.end() && *next <= value.CodeMax()) {
            return &value;
        }
        ends.insert({value.CodeMin(), value.CodeMax()});
    }
    return nullptr;
}

/// The last element of an enumeration that gives these codes: of two equal ones the later is at fault.
const Element& ElementOfCodes(const Element& enumElement, const ZMTEnumValue& value) {
    const Element* found = &enumElement;
    for (const Element* child = FindChildElement(&enumElement, "TEnumValue"); child != nullptr;
         child = FindNextSiblingElement(*child, "TEnumValue")) {
        std::string codes;
        std::int32_t min = 0;
        std::int32_t max = 0;
        if (GetAttribute(*child, "Code", codes) && ParseRange(codes, min, max) &&
            static_cast<std::uint32_t>(min) == value.CodeMin() &&
            static_cast<std::uint32_t>(max) == value.CodeMax()) {
            found = child;
        }
    }
    return *found;
}

bool IsAscending(ItemRange<const ZMTEnumValue> values) {
    return std::ranges::adjacent_find(values, [](const ZMTEnumValue& a, const ZMTEnumValue& b) {
               return a.CodeMin() > a.CodeMax() || a.CodeMax() >= b.CodeMin();
           }) == values.end();
}

bool IsOpen(const ZMTEnumValue& value) {
    return value.CodeMax() == static_cast<std::uint32_t>(kOpenRangeEnd);
}

bool NeedsTwoBytes(std::int32_t min, std::int32_t max) {
    constexpr auto kLargest = static_cast<std::int32_t>(kLargestOneByteCode);
    return min > kLargest || (max > kLargest && max != kOpenRangeEnd);
}

}  // namespace

bool ZMTParamEnum::Import(const Element& element, ImportContext& context) {
    const Element* enumElement = ImportHead<kNoTEnum>(element, "TEnum", context);
    if (enumElement == nullptr) {
        return false;
    }
    const bool hasMax = ImportEnumMax(*enumElement, context);
    const bool hasType = ImportTypeRef<kEnumWithoutType>(*enumElement, context);
    if (hasType) {
        ImportValues(*enumElement, context);
    }
    if (!hasMax) {
        TakeMaxFromCodes(*enumElement, hasType);
    }
    if (enumMax_ > kLargestEnumMax) {
        Raise<kEnumMaxOutOfRange>(context.At(enumElement), enumMax_, 0, kLargestEnumMax + 1, kLargestEnumMax);
        enumMax_ = kLargestEnumMax;
    }
    SetBytesInMsg(enumMax_ > kLargestOneByteCode ? 2 : 1);
    CheckCodes(*enumElement, context);
    return true;
}

/// False when the codes decide how large they may be.
bool ZMTParamEnum::ImportEnumMax(const Element& enumElement, ImportContext& context) {
    std::string text;
    if (!GetAttribute(enumElement, "TEnumMax", text)) {
        if (context.newer.AreRead()) {
            return false;
        }
        Raise<kEnumWithoutMax>(context.At(enumElement), "TEnumMax");
    }
    std::int32_t value = 0;
    if (!ParseInteger(text, value) || value <= 0) {
        Raise<kEnumMaxUnreadable>(context.At(enumElement), text, kDefaultEnumMax);
        value = kDefaultEnumMax;
    }
    enumMax_ = static_cast<std::uint32_t>(value);
    return true;
}

/// All codes that stand in the element count, also those of values that are not kept. One that can't be read
/// might be any; two bytes are the most there are.
void ZMTParamEnum::TakeMaxFromCodes(const Element& enumElement, bool hasType) {
    enumMax_ = kLargestOneByteCode;
    for (const Element* child = FindChildElement(&enumElement, "TEnumValue"); child != nullptr;
         child = FindNextSiblingElement(*child, "TEnumValue")) {
        std::string codes;
        std::int32_t min = 0;
        std::int32_t max = 0;
        const bool hasCode = GetAttribute(*child, "Code", codes);
        if (!hasCode || !ParseRange(codes, min, max)) {
            const Message& unread = hasCode ? kEnumCodeUnreadable : kEnumValueWithoutCode;
            unsureBy_ = hasType ? unread.number : kEnumWithoutType.number;
        } else if (NeedsTwoBytes(min, max)) {
            enumMax_ = kLargestEnumMax;
            unsureBy_ = 0;
            return;
        }
    }
}

void ZMTParamEnum::ImportValues(const Element& enumElement, ImportContext& context) {
    for (const Element* child = FindChildElement(&enumElement, "TEnumValue"); child != nullptr;
         child = FindNextSiblingElement(*child, "TEnumValue")) {
        auto value = std::make_unique<ZMTEnumValue>();
        value->SetParent(this);
        if (value->Import(*child, context)) {
            Append(std::move(value));
        } else {
            Raise<kEnumValueFailed>(context.At(child), "TEnumValue");
        }
    }
}

void ZMTParamEnum::CheckCodes(const Element& enumElement, ImportContext& context) {
    const ItemRange<const ZMTEnumValue> values = std::as_const(*this).Items();
    const bool countsBytes = context.newer.AreRead();  // newer catalogs have codes beyond their own bound
    const std::uint32_t largest = !countsBytes          ? enumMax_
                                  : GetBytesInMsg() > 1 ? kLargestEnumMax
                                                        : kLargestOneByteCode;
    const auto beyond = std::ranges::find_if(values, [&](const ZMTEnumValue& value) {
        return value.CodeMin() > largest || (value.CodeMax() > largest && !(countsBytes && IsOpen(value)));
    });
    if (beyond != values.end()) {
        Raise<kEnumCodeOutOfRange>(context.At(ElementOfCodes(enumElement, *beyond)));
    } else if (const ZMTEnumValue* overlapping = FindOverlapping(values)) {
        Raise<kEnumCodesOverlap>(context.At(ElementOfCodes(enumElement, *overlapping)));
    }
    isAscending_ = IsAscending(values);
}

const ZMTEnumValue* ZMTParamEnum::FindValue(std::uint32_t code) const {
    if (!isAscending_) {
        if (slotsByCode_.empty()) {
            IndexCodes();
        }
        return code < slotsByCode_.size() ? GetAt(slotsByCode_[code]) : nullptr;
    }
    unsigned begin = 0;
    unsigned end = Size();
    while (end - begin > 1) {
        const unsigned middle = begin + (end - begin) / 2;
        (GetAt(middle)->CodeMin() <= code ? begin : end) = middle;
    }
    const ZMTEnumValue* value = GetAt(begin);
    return value != nullptr && value->CodeMin() <= code && code <= value->CodeMax() ? value : nullptr;
}

/// Gives every code to the first value that has it. Codes that are taken are skipped, so that values which
/// overlap cost no more than others.
void ZMTParamEnum::IndexCodes() const {
    const std::uint32_t codes = GetBytesInMsg() > 1 ? kLargestEnumMax + 1 : kLargestOneByteCode + 1;
    slotsByCode_.assign(codes, kNoSlot);
    std::vector<std::uint32_t> nextFree(codes + 1);  // the first code from here on that may be free
    std::iota(nextFree.begin(), nextFree.end(), 0U);
    const auto findFree = [&](std::uint32_t code) {
        while (nextFree[code] != code) {
            nextFree[code] = nextFree[nextFree[code]];
            code = nextFree[code];
        }
        return code;
    };
    for (unsigned slot = 0; slot < Size(); ++slot) {
        const ZMTEnumValue* value = GetAt(slot);
        const std::uint32_t last = std::min(value->CodeMax(), codes - 1);
        for (std::uint32_t code = findFree(std::min(value->CodeMin(), codes)); code <= last;
             code = findFree(code)) {
            slotsByCode_[code] = slot;
            nextFree[code] = code + 1;
        }
    }
}

bool ZMTParamEnum::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    ResolveOrDelete(context);
    return true;
}

bool ZMTParamEnum::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMENUM: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".EnumMax: %d", enumMax_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
