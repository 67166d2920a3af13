#include "params/kind_name.h"

namespace tarvex {

const char* KindName(ParamKind kind) {
    switch (kind) {
        case ParamKind::Array:
            return "array";
        case ParamKind::BitField:
            return "bit_field";
        case ParamKind::Bool:
            return "boolean";
        case ParamKind::BoolField:
            return "bit";
        case ParamKind::Enum:
            return "enumeration";
        case ParamKind::FktIDBitStream:
            return "function_ids";
        case ParamKind::Number:
            return "number";
        case ParamKind::Record:
            return "record";
        case ParamKind::ClassifiedStream:
            return "classified_stream";
        case ParamKind::ShortStream:
            return "short_stream";
        case ParamKind::Stream:
            return "stream";
        case ParamKind::StreamSignal:
            return "signal";
        case ParamKind::String:
            return "string";
        case ParamKind::Void:
            return "void";
        case ParamKind::Base:
        case ParamKind::StreamCase:  // becomes no item of its own
            break;
    }
    return "parameter";
}

}  // namespace tarvex
