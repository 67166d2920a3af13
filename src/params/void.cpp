#include "params/void.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/xml/element.h"

namespace tarvex {

bool ZMTParamVoid::Import(const Element& element, ImportContext& context) {
    const Element* voidElement = ImportHead<kNoTVoid>(element, "TVoid", context);
    return voidElement != nullptr && ImportTypeRef<kVoidWithoutType>(*voidElement, context);
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
