#include "params/string.h"

#include <charconv>

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

/// Plain decimal digits give their value, anything else means that there is no limit.
std::uint32_t ReadMaxSize(const std::string& text) {
    std::uint32_t size = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, size);
    return error == std::errc() && last == end ? size : ZMTParamString::kUnbounded;
}

}  // namespace

bool ZMTParamString::Import(const Element& element, ImportContext& context) {
    const Element* stringElement = ImportHead<kNoTString>(element, "TString", context);
    if (stringElement == nullptr) {
        return false;
    }
    std::string text;
    if (!GetAttribute(*stringElement, "MaxSize", text) && !context.newer.Meet()) {
        return Raise<kStringWithoutMaxSize>(context.At(stringElement), "MaxSize");
    }
    maxSize_ = ReadMaxSize(text);
    return ImportTypeRef<kStringWithoutType>(*stringElement, context);
}

bool ZMTParamString::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSTRING: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".MaxSize: %d", maxSize_));
    return true;
}

}  // namespace tarvex
