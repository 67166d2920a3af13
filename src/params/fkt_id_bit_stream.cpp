#include "params/fkt_id_bit_stream.h"

#include "catalog/definitions.h"
#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

constexpr std::string_view kNamePrefix = "FktID";
constexpr std::int32_t kFunctionID = 0x000;

bool IsInFirstFunction(const Element& element) {
    const Element* function = &element;
    while (function != nullptr && !HasTagName(*function, "Function")) {
        function = function->parent;
    }
    std::string text;
    std::int32_t id = 0;
    return function != nullptr && GetChildElementText(*function, "FunctionID", text) &&
           ParseInteger(text, id) && id == kFunctionID;
}

}  // namespace

bool IsFktIDBitStream(const Element& element) {
    std::string name;
    return (GetChildElementText(element, "ParamName", name) ||
            GetChildElementText(element, "TRecordFieldName", name) ||
            GetChildElementText(element, "TArrayName", name)) &&
           NamesEqual(SanitizeName(name).substr(0, kNamePrefix.size()), kNamePrefix) &&
           IsInFirstFunction(element);
}

bool ZMTParamFktIDBitStream::Import(const Element& element, ImportContext& context) {
    const Element* stream = ImportHead<kNoFktIDStream>(element, "TStream", context);
    if (stream == nullptr) {
        return false;
    }
    if (!ImportTypeRef<kFktIDStreamWithoutType>(*stream, context)) {
        return false;
    }
    const Element* streamCase = FindChildElement(stream, "StreamCase");
    if (streamCase == nullptr) {
        return Raise<kFktIDStreamWithoutCase>(context.At(stream), "StreamCase");
    }
    if (const Element* second = FindNextSiblingElement(*streamCase, "StreamCase")) {
        return Raise<kFktIDStreamCaseCount>(context.At(second), GetName());
    }
    return true;
}

bool ZMTParamFktIDBitStream::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMFKTIDBITSTREAM: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog,
             ".DefType: " + (TypeDefinition() == nullptr ? std::string() : TypeDefinition()->GetName()));
    return true;
}

}  // namespace tarvex
