/// Parameters that select what others hold.

#pragma once

#include "catalog/node_types.h"

namespace tarvex {

class ZMTParam;

/// Marks the kinds that can be the selector of another parameter: the one that tells at run time where or how
/// often the other's content stands in the message.
class ZMTSelector {
  public:
    ZMTSelector() = default;
    ZMTSelector(const ZMTSelector&) = delete;
    virtual ~ZMTSelector() = default;

  protected:
    ZMTSelector& operator=(const ZMTSelector&) = default;
};

/// The marked kinds.
constexpr bool CanSelect(ParamKind kind) {
    return kind == ParamKind::Array || kind == ParamKind::Enum || kind == ParamKind::Number ||
           kind == ParamKind::Record;
}

/// The selector that a parameter has found in its place; null for none. It is not owned. A copy of the
/// parameter has none until it is resolved in a place of its own.
class FoundSelector {
  public:
    FoundSelector() = default;
    FoundSelector(const FoundSelector& /*other*/) {}
    FoundSelector& operator=(const FoundSelector& other) {
        if (this != &other) {
            param_ = nullptr;
        }
        return *this;
    }
    ~FoundSelector() = default;

    void Set(const ZMTParam* param) { param_ = param; }
    const ZMTParam* Get() const { return param_; }

  private:
    const ZMTParam* param_ = nullptr;
};

}  // namespace tarvex
