/// Looks for kinds among the parameters of an operation.

#pragma once

#include "catalog/child_list.h"
#include "catalog/param.h"

namespace tarvex {

/// The first parameter of exactly that kind; null if there is none.
inline const ZMTParam* FirstOfKind(const ZMTChildList<ZMTParam>& params, NodeType kind) {
    for (const ZMTParam& param : params.Items()) {
        if (param.IsType(kind)) {
            return &param;
        }
    }
    return nullptr;
}

}  // namespace tarvex
