#pragma once

namespace tarvex {

/// Marks the kinds that can be the selector of another parameter: the one that tells at run time where or how
/// often the other's content stands in the message.
class ZMTSelector {
  public:
    ZMTSelector() = default;
    ZMTSelector(const ZMTSelector&) = delete;
    ZMTSelector& operator=(const ZMTSelector&) = delete;
    virtual ~ZMTSelector() = default;
};

}  // namespace tarvex
