#pragma once

#include "catalog/param.h"

namespace tarvex::test {

/// A parameter of any kind, also of one that catalogs cannot have. It has nothing but its kind and position.
class StandInParam : public ZMTParam {
  public:
    explicit StandInParam(NodeType kind) : kind_(kind) {}
    NodeType GetType() const override { return kind_; }

  private:
    NodeType kind_;
};

}  // namespace tarvex::test
