#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "catalog/child_list.h"
#include "catalog/param.h"
#include "params/collector.h"
#include "params/selector.h"

namespace tarvex {

/// An ordered set of field parameters, each in the slot of its position; slot 0 is empty.
class ZMTParamRecord : public ZMTParam,
                       public ZMTChildList<ZMTParam>,
                       public ZMTSelector,
                       public ZMTCollector {
  public:
    int GetType() const override { return kParamRecord; }
    /// Raises 48 to 56; false without "TRecord", "NElements", "TypeRef" or fields, with a bad field or a gap
    /// between the positions, and, without a message of its own, when arrays, records and streams are nested
    /// too deep.
    bool Import(const DOMElement& element, ImportContext& context) override;
    /// Finds the selector; false with 57 for "Data" without "Pos". A field that fails is deleted; the record
    /// stays, with 58 when no field is left.
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

    /// Tells at run time which fields stand in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_; }
    /// Number of fields in the catalog.
    std::uint32_t NElements() const { return nElements_; }

  private:
    bool ImportFields(const DOMElement& record, ImportContext& context);
    void CheckFieldCount(unsigned count, ImportContext& context);

    const ZMTParam* selector_ = nullptr;
    std::uint32_t nElements_ = 0;
};

}  // namespace tarvex
