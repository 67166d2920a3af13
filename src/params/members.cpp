#include "params/members.h"

#include "params/collector.h"

namespace tarvex {

bool IsNestedTooDeep(const ZMTParam& param) {
    unsigned depth = 0;
    for (const ZMTNode* node = &param; node != nullptr; node = node->GetParent()) {
        depth += IsCollector(static_cast<ParamKind>(node->GetType())) ? 1 : 0;
    }
    return depth > kMaxNesting;
}

}  // namespace tarvex
