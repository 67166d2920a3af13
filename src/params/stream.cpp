#include "params/stream.h"

#include <string>

#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"
#include "params/members.h"

namespace tarvex {

bool ZMTParamStream::Import(const Element& element, ImportContext& context) {
    const Element* stream =
        IsNestedTooDeep(*this) ? nullptr : ImportHead<kNoTStream>(element, "TStream", context);
    if (stream == nullptr) {
        return false;
    }
    std::string text;
    const bool hasLength = GetAttribute(*stream, "Length", text);
    if (!hasLength && !context.newer.Meet()) {
        return Raise<kStreamWithoutLength>(context.At(stream), "Length");
    }
    length_ = hasLength ? static_cast<std::uint32_t>(IntegerOrZero(text)) : kOpen;
    if (!ImportTypeRef<kStreamWithoutType>(*stream, context)) {
        return false;
    }
    if (FindChildElement(stream, "StreamCase") == nullptr) {
        Raise<kStreamWithoutCase>(context.At(stream), "StreamCase");
    }
    ImportCases(*stream, context);
    return true;
}

bool ZMTParamStream::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSTREAM: " + GetName());
    DumpParamLines(treeLog);
    DumpSelector(treeLog);
    DumpLine(treeLog, FormatText(".Length: %d", length_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
