/// Parameters that are made of others.

#pragma once

#include "catalog/node_types.h"

namespace tarvex {

/// Marks the kinds whose content is governed by a selector parameter: arrays, records and streams.
class ZMTCollector {
  public:
    ZMTCollector() = default;
    ZMTCollector(const ZMTCollector&) = delete;
    virtual ~ZMTCollector() = default;

  protected:
    ZMTCollector& operator=(const ZMTCollector&) = default;
};

/// The marked kinds.
constexpr bool IsCollector(ParamKind kind) {
    switch (kind) {
        case ParamKind::Array:
        case ParamKind::Record:
        case ParamKind::Stream:
            return true;
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::BoolField:
        case ParamKind::Enum:
        case ParamKind::FktIDBitStream:
        case ParamKind::Number:
        case ParamKind::StreamCase:
        case ParamKind::String:
        case ParamKind::Void:
            break;
    }
    return false;
}

}  // namespace tarvex
