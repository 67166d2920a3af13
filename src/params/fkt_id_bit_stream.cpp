#include "params/fkt_id_bit_stream.h"

#include "catalog/definitions.h"
#include "catalog/import_context.h"
#include "import/names.h"
#include "import/parse_value.h"
#include "params/factory.h"

namespace tarvex {
namespace {

constexpr std::string_view kNamePrefix = "FktID";
constexpr std::int32_t kFunctionID = 0x000;

bool IsInFirstFunction(const DOMElement& element) {
    const DOMNode* node = &element;
    while (node != nullptr && !HasTagName(*node, "Function")) {
        node = node->getParentNode();
    }
    if (node == nullptr || node->getNodeType() != DOMNode::ELEMENT_NODE) {
        return false;
    }
    std::string text;
    std::int32_t id = 0;
    return GetChildElementText(static_cast<const DOMElement&>(*node), text, "FunctionID") &&
           ParseInteger(text, id) && id == kFunctionID;
}

}  // namespace

bool IsFktIDBitStream(const DOMElement& element) {
    std::string name;
    return (GetChildElementText(element, name, "ParamName") ||
            GetChildElementText(element, name, "TRecordFieldName") ||
            GetChildElementText(element, name, "TArrayName")) &&
           NamesEqual(SanitizeName(name).substr(0, kNamePrefix.size()), kNamePrefix) &&
           IsInFirstFunction(element);
}

bool ZMTParamFktIDBitStream::Import(const DOMElement& element, ImportContext& context) {
    if (!ImportParamName(element, context) || !ImportParamPos(element, context)) {
        return false;
    }
    const DOMElement* stream = FindTypeElement(element, "TStream");
    if (stream == nullptr) {
        return Raise<kNoFktIDStream>(context.log, "TStream");
    }
    std::string typeRef;
    if (!GetAttribute(*stream, "TypeRef", typeRef)) {
        return Raise<kFktIDStreamWithoutType>(context.log, "TypeRef");
    }
    ResolveType(typeRef, context);
    const DOMElement* streamCase = FindChildElement(stream, "StreamCase");
    if (streamCase == nullptr) {
        return Raise<kFktIDStreamWithoutCase>(context.log, "StreamCase");
    }
    if (FindNextSiblingElement(*streamCase, "StreamCase") != nullptr) {
        return Raise<kFktIDStreamCaseCount>(context.log, GetName());
    }
    return true;
}

bool ZMTParamFktIDBitStream::Dump(ZMostFCatLog& treeLog) const {
    DumpLine(treeLog, "PARAMFKTIDBITSTREAM: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog,
             ".DefType: " + (TypeDefinition() == nullptr ? std::string() : TypeDefinition()->GetName()));
    return true;
}

}  // namespace tarvex
