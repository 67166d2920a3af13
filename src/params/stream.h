#pragma once

#include "catalog/child_list.h"
#include "catalog/param.h"
#include "params/collector.h"
#include "params/stream_case.h"

namespace tarvex {

/// Content whose layout is chosen, case by case, by the value of a selector parameter beside the stream.
class ZMTParamStream : public ZMTParam, public ZMTChildList<ZMTParamStreamCase>, public ZMTCollector {
  public:
    int GetType() const override { return kParamStream; }
    /// Raises 28 to 33 and 35; false without "TStream", "Length" or "TypeRef", and, without a message of its
    /// own, when arrays, records and streams are nested too deep. A case that fails is left out.
    bool Import(const DOMElement& element, ImportContext& context) override;
    /// The cases find their selector. One that fails is deleted; the stream stays.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    using ZMTChildList<ZMTParamStreamCase>::CopyFrom;
    /// The copy has no selector until it is resolved in its own place.
    bool CopyFrom(const ZMTNode* other) override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    std::size_t CopySize() const override { return ZMTParam::CopySize() + CopySizeOfAll(); }
    bool Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }

    /// The parameter whose value tells which case stands in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_; }
    /// Takes the selector that a case has found. False when another case has found a different one.
    bool BindSelector(const ZMTParam& selector);
    /// Declared length in bytes.
    std::uint32_t Length() const { return length_; }

  private:
    void ImportCases(const DOMElement& stream, ImportContext& context);
    bool HasOverlappingCases() const;

    const ZMTParam* selector_ = nullptr;
    std::uint32_t length_ = 0;
};

}  // namespace tarvex
