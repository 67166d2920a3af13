#include "catalog/operation.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"

namespace tarvex {

ZMTOperation::ZMTOperation(ClassKind kind, unsigned opType)
    : ZMTNodeKind(OperationName(kind, opType)), opType_(opType) {}

bool ZMTOperation::Import(const Element& /*element*/, ImportContext& /*context*/) {
    return false;
}

bool ZMTOperation::Resolve(ImportContext& context) {
    if (!ZMTNode::Resolve(context) || !ResolveAll(context)) {
        return false;
    }
    // A missing first position alone is no gap: positions may count from 0 or from 1.
    unsigned pos = 0;
    if (FindGap(pos, GetAt(0) == nullptr ? 1 : 0) && !BelongsToErrorFunction()) {
        Raise<kGapInOperation>(context.log, GetAt(pos)->GetName());
    }
    Compact();
    for (unsigned slot = 0; slot < Size(); ++slot) {
        GetAt(slot)->SetParamPos(slot);
    }
    if (Size() == 0) {
        Raise<kOperationEmpty>(context.log);
    }
    return true;
}

bool ZMTOperation::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "OPERATION: " + GetName());
    DumpLine(treeLog, FormatText(".OPType: %d", opType_));
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

bool ZMTOperation::BelongsToErrorFunction() const {
    return GetParent() != nullptr && GetParent()->GetName().starts_with(kErrorFunctionPrefix);
}

}  // namespace tarvex
