#pragma once

namespace tarvex {

/// Marks the kinds whose content is governed by a selector parameter: arrays, records and streams.
class ZMTCollector {
  public:
    ZMTCollector() = default;
    ZMTCollector(const ZMTCollector&) = delete;
    ZMTCollector& operator=(const ZMTCollector&) = delete;
    virtual ~ZMTCollector() = default;
};

}  // namespace tarvex
