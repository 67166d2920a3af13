#include "catalog/operation.h"

#include <algorithm>

#include "catalog/function.h"
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
    const bool hasGap = FindGap(pos, GetAt(0) == nullptr ? 1 : 0);
    if (hasGap && !BelongsToErrorFunction()) {
        Raise<kGapInOperation>(context.At(GetAt(pos)->GetElement()), GetAt(pos)->GetName());
    }
    FindHole(hasGap ? std::optional(pos) : std::nullopt);
    Compact();
    for (unsigned slot = 0; slot < Size(); ++slot) {
        GetAt(slot)->SetParamPos(slot);
    }
    if (Size() == 0) {
        Raise<kOperationEmpty>(context.At(FunctionElement()));
    }
    return true;
}

/// `behindGap`: the slot of the parameter behind the first gap.
void ZMTOperation::FindHole(std::optional<unsigned> behindGap) {
    const Hole* lost = IsInFunction()
                           ? static_cast<const ZMTFunction*>(GetParent())->LostParams().FirstOf(opType_)
                           : nullptr;
    hole_.reset();
    soundCount_ = 0;
    if (behindGap) {
        unsigned gap = *behindGap - 1;
        while (gap > 0 && GetAt(gap - 1) == nullptr) {
            --gap;
        }
        hole_ = Hole{HoleCause::Gap, std::max(gap, 1U), kGapInOperation.number};
    }
    if (lost != nullptr && (!hole_ || lost->position.value_or(0) <= *hole_->position)) {
        hole_ = *lost;
    }
    if (!hole_) {
        return;
    }
    const unsigned end = std::min(hole_->position.value_or(0), Size());
    for (unsigned slot = 0; slot < end; ++slot) {
        soundCount_ += GetAt(slot) != nullptr ? 1 : 0;
    }
}

bool ZMTOperation::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "OPERATION: " + GetName());
    DumpLine(treeLog, FormatText(".OPType: %d", opType_));
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

const Element* ZMTOperation::FunctionElement() const {
    return IsInFunction() ? static_cast<const ZMTFunction*>(GetParent())->GetElement() : nullptr;
}

bool ZMTOperation::IsInFunction() const {
    return GetParent() != nullptr && GetParent()->IsType(kFunction);
}

bool ZMTOperation::BelongsToErrorFunction() const {
    return GetParent() != nullptr && GetParent()->GetName().starts_with(kErrorFunctionPrefix);
}

}  // namespace tarvex
