#include "export/strict_check.h"

#include <algorithm>

#include "export/param_kinds.h"
#include "params/record.h"

namespace tarvex {
namespace {

/// The length of such a parameter is told by a message alone.
bool IsOpen(const ZMTParam& param) {
    switch (param.Kind()) {
        case ParamKind::Array:
        case ParamKind::ClassifiedStream:
        case ParamKind::FktIDBitStream:
        case ParamKind::ShortStream:
        case ParamKind::Stream:
        case ParamKind::String:
            return true;
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::BoolField:
        case ParamKind::Enum:
        case ParamKind::Number:
        case ParamKind::Record:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::Void:
            break;
    }
    return false;
}

bool HasOpenParam(const ZMTChildList<ZMTParam>& params) {
    return std::ranges::any_of(params.Items(), IsOpen);
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
