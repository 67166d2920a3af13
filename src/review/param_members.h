/// What parameters are made of.

#pragma once

#include "params/array.h"
#include "params/bit_field.h"
#include "params/case_stream.h"
#include "params/record.h"
#include "params/stream_case.h"

namespace tarvex::review {

/// Calls `visit` with each parameter that stands directly in this one: elements, fields, cases, what a case
/// has, bits.
template <class Visit>
void VisitMembers(const ZMTParam& param, Visit&& visit) {
    const auto visitAll = [&](const auto& list) {
        for (const ZMTParam& member : list.Items()) {
            visit(member);
        }
    };
    switch (param.Kind()) {
        case ParamKind::Array:
            visitAll(static_cast<const ZMTParamArray&>(param));
            break;
        case ParamKind::BitField:
        case ParamKind::Bool:
            visitAll(static_cast<const ZMTParamBitField&>(param));
            break;
        case ParamKind::Record:
            visitAll(static_cast<const ZMTParamRecord&>(param));
            break;
        case ParamKind::ShortStream:
        case ParamKind::Stream:
            visitAll(static_cast<const ZMTParamCaseStream&>(param));
            break;
        case ParamKind::StreamCase:
            visitAll(static_cast<const ZMTParamStreamCase&>(param));
            break;
        case ParamKind::Base:
        case ParamKind::BoolField:
        case ParamKind::ClassifiedStream:
        case ParamKind::Enum:
        case ParamKind::FktIDBitStream:
        case ParamKind::Number:
        case ParamKind::StreamSignal:
        case ParamKind::String:
        case ParamKind::Void:
            break;
    }
}

/// The parameter that chooses what stands in this one; null for none, and where it is the one around it.
inline const ZMTParam* SelectorOf(const ZMTParam& param) {
    const ZMTParam* selector = nullptr;
    if (param.IsType(kParamArray)) {
        selector = static_cast<const ZMTParamArray&>(param).Selector();
    } else if (param.IsType(kParamRecord)) {
        selector = static_cast<const ZMTParamRecord&>(param).Selector();
    } else if (param.IsType(kParamStream) || param.IsType(kParamShortStream)) {
        selector = static_cast<const ZMTParamCaseStream&>(param).Selector();
    }
    return selector == param.GetParent() ? nullptr : selector;
}

}  // namespace tarvex::review
