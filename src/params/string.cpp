#include "params/string.h"

#include <charconv>

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/xml/element.h"
#include "params/type_element.h"

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
    if (!ImportParamName(element, context) || !ImportParamPos(element, context)) {
        return false;
    }
    const Element* stringElement = FindTypeElement(element, "TString");
    if (stringElement == nullptr) {
        return Raise<kNoTString>(context.log, "TString");
    }
    std::string text;
    if (!GetAttribute(*stringElement, "MaxSize", text)) {
        return Raise<kStringWithoutMaxSize>(context.log, "MaxSize");
    }
    maxSize_ = ReadMaxSize(text);
    if (!GetAttribute(*stringElement, "TypeRef", text)) {
        return Raise<kStringWithoutType>(context.log, "TypeRef");
    }
    ResolveType(text, context);
    return true;
}

bool ZMTParamString::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSTRING: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".MaxSize: %d", maxSize_));
    return true;
}

}  // namespace tarvex
