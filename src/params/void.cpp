#include "params/void.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/xml/element.h"
#include "params/type_element.h"

namespace tarvex {

bool ZMTParamVoid::Import(const Element& element, ImportContext& context) {
    if (!ImportParamName(element, context) || !ImportParamPos(element, context)) {
        return false;
    }
    const Element* voidElement = FindTypeElement(element, "TVoid");
    if (voidElement == nullptr) {
        return Raise<kNoTVoid>(context.log, "TVoid");
    }
    std::string typeRef;
    if (!GetAttribute(*voidElement, "TypeRef", typeRef)) {
        return Raise<kVoidWithoutType>(context.log, "TypeRef");
    }
    ResolveType(typeRef, context);
    return true;
}

bool ZMTParamVoid::ImportParamName(const Element& element, ImportContext& context) {
    const bool isNamed = FindChildElement(&element, "ParamName") != nullptr ||
                         FindChildElement(&element, "TRecordFieldName") != nullptr;
    if (isNamed) {
        ReadParamName(element);
    } else {
        ZMTParam::ImportParamName(element, context);
    }
    if (GetName().empty()) {
        SetName("{Void}");
    }
    return true;
}

bool ZMTParamVoid::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMVOID: " + GetName());
    DumpParamLines(treeLog);
    return true;
}

}  // namespace tarvex
