#include "catalog/param.h"

#include <algorithm>

#include "catalog/definitions.h"
#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

/// The longest "ParamIdx" that is looked at; what comes after is cut off.
constexpr std::size_t kMaxParamIdx = 499;

/// ToLower cuts a text at the length of a number, which a "ParamIdx" may exceed.
std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), FoldCase);
    return lower;
}

/// The element that gives a parameter its name; the parameter's own where there is none.
const Element* FindNameElement(const Element& element) {
    for (const char* name : {"ParamName", "TRecordFieldName", "TArrayName"}) {
        if (const Element* found = FindChildElement(&element, name)) {
            return found;
        }
    }
    return &element;
}

}  // namespace

bool ZMTParam::Import(const Element& /*element*/, ImportContext& /*context*/) {
    return false;
}

bool ZMTParam::Resolve(ImportContext& context) {
    if (!ZMTNode::Resolve(context)) {
        return false;
    }
    constexpr std::size_t kLettersPerStep = 16;
    if (!SoughtName(GetName()).IsShort()) {  // which may be compared with another one on every level
        context.run.TakeSteps(GetLevel() * GetName().size() / kLettersPerStep);
    }
    if (!GetName().empty() && HasDuplicateName()) {
        Raise<kParamNameReused>(context.At(NameElement()), GetName());
    }
    return true;
}

const Element* ZMTParam::NameElement() const {
    return element_ != nullptr ? FindNameElement(*element_) : nullptr;
}

bool ZMTParam::Dump(ZMostTreeLog& treeLog) const {
    DumpParamLines(treeLog);
    return true;
}

bool ZMTParam::HasDuplicateName() const {
    const ZMTNode* parent = GetParent();
    if (parent == nullptr) {
        return false;
    }
    const ZMTNode* found = parent->FindVisible(GetName(), GetPosition());
    return found != nullptr && !found->IsType(kOperation) && !found->IsType(kFunction) &&
           !found->IsType(kFBlock) && !found->IsType(kCatalog);
}

bool ZMTParam::ImportParamName(const Element& element, ImportContext& context) {
    if (HasTagName(element, "TArray")) {
        std::string text;
        if (!GetChildElementText(element, "TArrayName", text)) {
            Raise<kArrayWithoutName>(context.AtChild(element, "TArrayName"), "TArrayName");
        }
        SetName(SanitizeName(text));
        return true;
    }
    if (HasTagName(element, "StreamCase")) {
        return true;
    }
    return ReadParamName(element) ||
           Raise<kParamWithoutName>(context.At(FindNameElement(element)), "ParamName");
}

bool ZMTParam::ReadParamName(const Element& element) {
    std::string text;
    if (!GetChildElementText(element, "ParamName", text) &&
        !GetChildElementText(element, "TRecordFieldName", text)) {
        return false;
    }
    SetName(SanitizeName(text));
    return true;
}

bool ZMTParam::ImportParamPos(const Element& element, ImportContext& context) {
    if (HasTagName(element, "TRecordField")) {
        return ImportFieldIdx(element, context);
    }
    if (HasTagName(element, "StreamParam")) {
        return ImportParamIdx(element, context);
    }
    return true;
}

bool ZMTParam::ImportFieldIdx(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetAttribute(element, "FieldIdx", text)) {
        return Raise<kFieldWithoutIdx>(context.At(element), "FieldIdx");
    }
    std::int32_t pos = 0;
    if (!ParseInteger(text, pos)) {
        return Raise<kFieldIdxUnreadable>(context.At(element), text);
    }
    paramPos_ = static_cast<std::uint32_t>(pos);
    if (paramPos_ == 0 || paramPos_ > kMaxParamPos) {
        return Raise<kFieldIdxOutOfRange>(context.At(element), pos);
    }
    return true;
}

bool ZMTParam::ImportParamIdx(const Element& element, ImportContext& context) {
    constexpr std::string_view kSequenceMark = "seq";
    std::string text;
    if (!GetChildAttribute(element, "ParamName", "ParamIdx", text)) {
        return Raise<kStreamParamWithoutIdx>(context.AtChild(element, "ParamName"), "ParamIdx");
    }
    text = LowerCase(text.substr(0, kMaxParamIdx));
    const std::size_t mark = text.find(kSequenceMark);
    if (mark != std::string::npos) {
        sequence_ = static_cast<std::uint32_t>(IntegerOrZero(text.substr(mark + kSequenceMark.size())));
        text.resize(mark);
    }
    const std::int32_t pos = IntegerOrZero(text);
    paramPos_ = static_cast<std::uint32_t>(pos);
    if (paramPos_ == 0 || paramPos_ > kMaxParamPos) {
        return Raise<kStreamParamIdxOutOfRange>(context.AtChild(element, "ParamName"), pos);
    }
    return true;
}

void ZMTParam::ResolveType(const std::string& typeRef, const ImportContext& context) {
    typeDefinition_ =
        context.definitions != nullptr ? context.definitions->Types().FindByDefName(typeRef) : nullptr;
}

void ZMTParam::DumpParamLines(ZMostTreeLog& treeLog) const {
    DumpBaseLines(treeLog);
    if (sequence_ != 0) {
        DumpLine(treeLog, FormatText(".ParamPos: %d seq %d", paramPos_, sequence_));
    } else {
        DumpLine(treeLog, FormatText(".ParamPos: %d", paramPos_));
    }
    DumpLine(treeLog, FormatText(".TypeIDName: %s",
                                 typeDefinition_ == nullptr ? std::string() : typeDefinition_->GetName()));
}

}  // namespace tarvex
