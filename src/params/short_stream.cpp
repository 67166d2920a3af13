#include "params/short_stream.h"

#include "import/log/messages.h"
#include "params/members.h"

namespace tarvex {

bool ZMTParamShortStream::Import(const Element& element, ImportContext& context) {
    const Element* stream =
        IsNestedTooDeep(*this) ? nullptr : ImportHead<kNoTShortStream>(element, "TShortStream", context);
    if (stream == nullptr || !ImportTypeRef<kShortStreamWithoutType>(*stream, context)) {
        return false;
    }
    maxLength_ = ReadMaxLength(*this, *stream, context);
    ImportCases(*stream, context);
    return true;
}

bool ZMTParamShortStream::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSHORTSTREAM: " + GetName());
    DumpParamLines(treeLog);
    DumpSelector(treeLog);
    DumpLine(treeLog, FormatText(".MaxLength: %d", maxLength_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
