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
    return kind == ParamKind::Array || kind == ParamKind::Record || kind == ParamKind::ShortStream ||
           kind == ParamKind::Stream;
}

}  // namespace tarvex
