#include "params/classified_stream.h"

#include "import/log/messages.h"

namespace tarvex {

bool ZMTParamClassifiedStream::Import(const Element& element, ImportContext& context) {
    const Element* stream = ImportHead<kNoTCStream>(element, "TCStream", context);
    if (stream == nullptr || !ImportTypeRef<kClassifiedStreamWithoutType>(*stream, context)) {
        return false;
    }
    maxLength_ = ReadMaxLength(*this, *stream, context);
    GetAttribute(*stream, "MediaType", mediaType_);
    return true;
}

bool ZMTParamClassifiedStream::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMCLASSIFIEDSTREAM: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".MaxLength: %d", maxLength_));
    DumpLine(treeLog, FormatText(".MediaType: %s", mediaType_));
    return true;
}

}  // namespace tarvex
