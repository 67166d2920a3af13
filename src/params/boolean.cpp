#include "params/boolean.h"

#include "import/log/messages.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

/// A boolean declares no length of its own.
constexpr std::uint32_t kBoolLength = 8;

}  // namespace

bool ZMTParamBool::Import(const Element& element, ImportContext& context) {
    const Element* field = ImportHead<kNoTBool>(element, "TBool", context);
    if (field == nullptr) {
        return false;
    }
    if (!ImportTypeRef<kBoolWithoutType>(*field, context) ||
        !ImportBits<kBoolBitTwice, kBoolBitFailed>(*field, context)) {
        return false;
    }
    FitLength(kBoolLength, context.At(field));
    SetBytesInMsg(1);
    return true;
}

bool ZMTParamBool::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMBOOL: " + GetName());
    DumpFieldLines(treeLog);
    return true;
}

}  // namespace tarvex
