/// The parameter without data.

#pragma once

#include "params/param_kind.h"

namespace tarvex {

/// A parameter without data, as every Get has.
class ZMTParamVoid : public ZMTParamKind<ZMTParamVoid, ZMTParam, ParamKind::Void> {
  public:
    /// Raises 100 and 101; false without "TVoid" or "TypeRef".
    bool Import(const Element& element, ImportContext& context) override;
    /// A nameless one is called "{Void}"; raises 11 when even the name element is missing. Always true.
    bool ImportParamName(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;
};

}  // namespace tarvex
