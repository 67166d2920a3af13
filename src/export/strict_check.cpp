#include "export/strict_check.h"

#include <algorithm>

#include "export/param_kinds.h"
#include "params/layout.h"
#include "params/record.h"

namespace tarvex {
namespace {

bool HasOpenParam(const ZMTChildList<ZMTParam>& params) {
    return std::ranges::any_of(params.Items(), HasOpenLength);
}

}  // namespace

bool PassesStrictCheck(const ZMTOperation* operation) {
    if (operation == nullptr || HasOpenParam(*operation)) {
        return false;
    }
    const ZMTParam* param = FirstOfKind(*operation, kParamRecord);
    if (param == nullptr) {
        return true;
    }
    const auto& record = static_cast<const ZMTParamRecord&>(*param);
    if (HasOpenParam(record) || FirstOfKind(record, kParamRecord) != nullptr) {
        return false;
    }
    return operation->GetChild(record.GetPosition() + 1) == nullptr;
}

}  // namespace tarvex
