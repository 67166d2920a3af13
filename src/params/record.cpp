#include "params/record.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"
#include "params/members.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

constexpr unsigned kFirstFieldPos = 1;

unsigned CountChildElements(const Element& parent, std::string_view name) {
    unsigned count = 0;
    for (const Element* child = FindChildElement(&parent, name); child != nullptr;
         child = FindNextSiblingElement(*child, name)) {
        ++count;
    }
    return count;
}

}  // namespace

bool ZMTParamRecord::Import(const Element& element, ImportContext& context) {
    const Element* record =
        IsNestedTooDeep(*this) ? nullptr : ImportHead<kNoTRecord>(element, "TRecord", context);
    if (record == nullptr) {
        return false;
    }
    std::string text;
    const bool hasNElements = GetAttribute(*record, "NElements", text);
    if (!hasNElements && !context.newer.Meet()) {
        return Raise<kRecordWithoutNElements>(context.At(record), "NElements");
    }
    if (!ImportTypeRef<kRecordWithoutType>(*record, context)) {
        return false;
    }
    const unsigned count = CountChildElements(*record, "TRecordField");
    if (count == 0) {
        return Raise<kRecordWithoutFields>(context.At(record), "TRecordField");
    }
    nElements_ = count;
    declaredCount_ = hasNElements ? static_cast<std::uint32_t>(IntegerOrZero(text)) : count;
    if (HasOtherCount()) {
        Raise<kRecordFieldCountDiffers>(context.At(record), count, declaredCount_);
    }
    return ImportFields(*record, context);
}

/// Tells every bad field before it fails. Only good fields can have a gap between them.
bool ZMTParamRecord::ImportFields(const Element& record, ImportContext& context) {
    bool areAllGood = true;
    for (const Element* child = FindChildElement(&record, "TRecordField"); child != nullptr;
         child = FindNextSiblingElement(*child, "TRecordField")) {
        auto field = ImportMember<kRecordFieldUnknown, kRecordFieldFailed>(*this, *child, context);
        if (!field) {
            areAllGood = false;
        } else if (const unsigned pos = field->ParamPos(); GetAt(pos) != nullptr) {
            Raise<kRecordPosOccupied>(context.At(child), pos, field->GetName());
            areAllGood = false;
        } else {
            SetAt(std::move(field), pos);
        }
    }
    if (unsigned pos = 0; areAllGood && FindGap(pos, kFirstFieldPos)) {
        return Raise<kGapInRecord>(context.At(GetAt(pos)->GetElement()), GetAt(pos)->GetName());
    }
    return areAllGood;
}

bool ZMTParamRecord::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    const auto selector = FindSelector(*this);
    if (!selector) {
        return Raise<kRecordDataWithoutPos>(context.At(TypeElement("TRecord")), kPosName, kDataName);
    }
    selector_.Set(*selector);
    ResolveOrDelete(context);
    if (Count() == 0) {
        Raise<kRecordEmpty>(context.At(TypeElement("TRecord")));
    }
    return true;
}

bool ZMTParamRecord::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMRECORD: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".SelectorParam: %s", SelectorName(Selector())));
    DumpLine(treeLog, FormatText(".NElements: %d", nElements_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
