#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "catalog/child_list.h"
#include "catalog/param.h"
#include "params/collector.h"
#include "params/selector.h"

namespace tarvex {

/// One element parameter, repeated up to NMax times. The element stands in slot 0.
class ZMTParamArray : public ZMTParam,
                      public ZMTChildList<ZMTParam>,
                      public ZMTSelector,
                      public ZMTCollector {
  public:
    static constexpr std::uint32_t kUnlimited = 0xFFFFFFFF;

    int GetType() const override { return kParamArray; }
    /// Raises 41 to 46; false without "TArray", "NMax", "TypeRef" or a usable element, and, without a message
    /// of its own, when arrays, records and streams are nested too deep.
    bool Import(const DOMElement& element, ImportContext& context) override;
    /// Finds the selector; false with 47 for "Data" without "Pos". An element that fails is deleted; the
    /// array stays.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    using ZMTChildList<ZMTParam>::CopyFrom;
    /// The copy has no selector until it is resolved in its own place.
    bool CopyFrom(const ZMTNode* other) override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    std::size_t CopySize() const override { return ZMTParam::CopySize() + CopySizeOfAll(); }
    bool Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }

    /// Tells at run time which elements stand in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_; }
    /// The largest number of elements, at least 1, or kUnlimited.
    std::uint32_t NMax() const { return nMax_; }

  private:
    void ReadNMax(const std::string& text, ImportContext& context);

    const ZMTParam* selector_ = nullptr;
    std::uint32_t nMax_ = kUnlimited;
};

}  // namespace tarvex
