/// The array parameter.

#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "catalog/list_node.h"
#include "params/param_kind.h"

namespace tarvex {

/// One element parameter, repeated up to NMax times. The element stands in slot 0.
class ZMTParamArray : public ZMTParamKind<ZMTParamArray, ZMTListNode<ZMTParam, ZMTParam>, ParamKind::Array>,
                      public ZMTSelector,
                      public ZMTCollector {
  public:
    static constexpr std::uint32_t kUnlimited = 0xFFFFFFFF;

    /// Raises 41 to 46; false without "TArray", "NMax", "TypeRef" or a usable element, and, without a message
    /// of its own, when arrays, records and streams are nested too deep.
    bool Import(const Element& element, ImportContext& context) override;
    /// Finds the selector; false with 47 for "Data" without "Pos". An element that fails is deleted; the
    /// array stays.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// Tells at run time which elements stand in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_.Get(); }
    /// The largest number of elements, at least 1, or kUnlimited.
    std::uint32_t NMax() const { return nMax_; }

  private:
    void ReadNMax(const Element& array, const std::string& text, ImportContext& context);

    FoundSelector selector_;
    std::uint32_t nMax_ = kUnlimited;
};

}  // namespace tarvex
