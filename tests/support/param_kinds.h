#pragma once

#include <vector>

#include "catalog/node_types.h"

namespace tarvex::test {

/// Every kind of parameter. Made with a switch, so that the compiler asks for a new one.
inline std::vector<ParamKind> AllParamKinds() {
    constexpr int kEnd = 100;  // parameters have codes below this
    std::vector<ParamKind> kinds;
    for (int code = 0; code < kEnd; ++code) {
        const auto kind = static_cast<ParamKind>(code);
        switch (kind) {
            case ParamKind::Array:
            case ParamKind::Base:
            case ParamKind::BitField:
            case ParamKind::Bool:
            case ParamKind::BoolField:
            case ParamKind::ClassifiedStream:
            case ParamKind::Enum:
            case ParamKind::FktIDBitStream:
            case ParamKind::Number:
            case ParamKind::Record:
            case ParamKind::ShortStream:
            case ParamKind::Stream:
            case ParamKind::StreamCase:
            case ParamKind::StreamSignal:
            case ParamKind::String:
            case ParamKind::Void:
                kinds.push_back(kind);
                break;
        }
    }
    return kinds;
}

}  // namespace tarvex::test
