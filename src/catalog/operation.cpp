#include "catalog/operation.h"

#include "catalog/import_context.h"

namespace tarvex {

ZMTOperation::ZMTOperation(ClassKind kind, unsigned opType) : opType_(opType) {
    ZMTNode::SetName(OperationName(kind, opType));
}

bool ZMTOperation::Import(const DOMElement& /*element*/, ImportContext& /*context*/) {
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

bool ZMTOperation::Dump(ZMostFCatLog& treeLog) const {
    DumpLine(treeLog, "OPERATION: " + GetName());
    DumpLine(treeLog, FormatText(".OPType: %d", opType_));
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

bool ZMTOperation::CopyFrom(const ZMTNode* other) {
    if (!ZMTNode::CopyFrom(other)) {
        return false;
    }
    const auto& operation = static_cast<const ZMTOperation&>(*other);
    opType_ = operation.opType_;
    return ZMTChildList<ZMTParam>::CopyFrom(&operation, this);
}

bool ZMTOperation::BelongsToErrorFunction() const {
    return GetParent() != nullptr && GetParent()->GetName().starts_with(kErrorFunctionPrefix);
}

}  // namespace tarvex
