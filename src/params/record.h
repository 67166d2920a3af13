/// The record parameter.

#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "catalog/list_node.h"
#include "params/param_kind.h"

namespace tarvex {

/// An ordered set of field parameters, each in the slot of its position; slot 0 is empty.
class ZMTParamRecord
    : public ZMTParamKind<ZMTParamRecord, ZMTListNode<ZMTParam, ZMTParam>, ParamKind::Record>,
      public ZMTSelector,
      public ZMTCollector {
  public:
    /// Raises 48 to 56; false without "TRecord", "NElements", "TypeRef" or fields, with a bad field or a gap
    /// between the positions, and, without a message of its own, when arrays, records and streams are nested
    /// too deep.
    bool Import(const Element& element, ImportContext& context) override;
    /// Finds the selector; false with 57 for "Data" without "Pos". A field that fails is deleted; the record
    /// stays, with 58 when no field is left.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// Tells at run time which fields stand in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_.Get(); }
    /// Number of fields in the catalog.
    std::uint32_t NElements() const { return nElements_; }
    /// The catalog says that there is another number of fields than it has, so that nobody knows where the
    /// record ends.
    bool HasOtherCount() const { return nElements_ != declaredCount_; }
    /// That number, or that of the fields where the catalog says none.
    std::uint32_t DeclaredCount() const { return declaredCount_; }

  private:
    bool ImportFields(const Element& record, ImportContext& context);

    FoundSelector selector_;
    std::uint32_t nElements_ = 0;
    std::uint32_t declaredCount_ = 0;
};

}  // namespace tarvex
