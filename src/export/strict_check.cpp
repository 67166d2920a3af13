#include "export/strict_check.h"

#include <algorithm>

#include "export/param_kinds.h"
#include "params/record.h"

namespace tarvex {
namespace {

/// The kinds whose length a message alone can tell.
constexpr NodeType kOpenKinds[] = {kParamStream, kParamString, kParamArray, kParamFktIDBitStream};

bool HasOpenKind(const ZMTChildList<ZMTParam>& params) {
    return std::ranges::any_of(kOpenKinds,
                               [&](NodeType kind) { return FirstOfKind(params, kind) != nullptr; });
}

}  // namespace

bool PassesStrictCheck(const ZMTOperation* operation) {
    if (operation == nullptr || HasOpenKind(*operation)) {
        return false;
    }
    const ZMTParam* param = FirstOfKind(*operation, kParamRecord);
    if (param == nullptr) {
        return true;
    }
    const auto& record = static_cast<const ZMTParamRecord&>(*param);
    if (HasOpenKind(record) || FirstOfKind(record, kParamRecord) != nullptr) {
        return false;
    }
    return operation->GetChild(record.GetPosition() + 1) == nullptr;
}

}  // namespace tarvex
