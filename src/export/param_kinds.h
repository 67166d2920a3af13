#pragma once

#include "catalog/child_list.h"
#include "catalog/param.h"

namespace tarvex {

/// The first parameter of exactly that kind; null if there is none.
inline const ZMTParam* FirstOfKind(const ZMTChildList<ZMTParam>& params, NodeType kind) {
    unsigned pos = 0;
    for (bool found = params.GetFirst(pos); found; found = params.GetNext(pos, pos)) {
        if (params.GetAt(pos)->GetType() == kind) {
            return params.GetAt(pos);
        }
    }
    return nullptr;
}

}  // namespace tarvex
