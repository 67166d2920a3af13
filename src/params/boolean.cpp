#include "params/boolean.h"

#include "import/log/messages.h"
#include "import/xml/element.h"
#include "params/type_element.h"

namespace tarvex {
namespace {

/// A boolean declares no length of its own.
constexpr std::uint32_t kBoolLength = 8;

}  // namespace

bool ZMTParamBool::Import(const Element& element, ImportContext& context) {
    if (!ImportParamName(element, context) || !ImportParamPos(element, context)) {
        return false;
    }
    const Element* field = FindTypeElement(element, "TBool");
    if (field == nullptr) {
        return Raise<kNoTBool>(context.log, "TBool");
    }
    std::string typeRef;
    if (!GetAttribute(*field, "TypeRef", typeRef)) {
        return Raise<kBoolWithoutType>(context.log, "TypeRef");
    }
    ResolveType(typeRef, context);
    if (!ImportBits<kBoolBitTwice, kBoolBitFailed>(*field, context)) {
        return false;
    }
    FitLength(kBoolLength, context);
    SetBytesInMsg(1);
    return true;
}

bool ZMTParamBool::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMBOOL: " + GetName());
    DumpFieldLines(treeLog);
    return true;
}

}  // namespace tarvex
