/// The enumeration parameter.

#pragma once

#include <vector>

#include "catalog/list_node.h"
#include "params/enum_value.h"
#include "params/param_kind.h"

namespace tarvex {

/// A code of one or two bytes whose values are listed with their names.
class ZMTParamEnum : public ZMTParamKind<ZMTParamEnum, ZMTListNode<ZMTParam, ZMTEnumValue>, ParamKind::Enum>,
                     public ZMTSelector {
  public:
    /// Raises 77 to 83, 85 and those of the values; false only without name, position or "TEnum".
    bool Import(const Element& element, ImportContext& context) override;
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// The first value that the code belongs to; null if there is none.
    const ZMTEnumValue* FindValue(std::uint32_t code) const;
    /// The largest code, 1 to 65535.
    std::uint32_t EnumMax() const { return enumMax_; }
    /// Number of the message about a code that could not be read, and that alone would tell how many bytes
    /// the enumeration takes; 0 where these are sure.
    unsigned SizeUnsureBy() const { return unsureBy_; }

  private:
    bool ImportEnumMax(const Element& enumElement, ImportContext& context);
    void TakeMaxFromCodes(const Element& enumElement, bool hasType);
    void ImportValues(const Element& enumElement, ImportContext& context);
    void CheckCodes(const Element& enumElement, ImportContext& context);
    void IndexCodes() const;

    std::uint32_t enumMax_ = 255;
    unsigned unsureBy_ = 0;
    bool isAscending_ = false;                   // each value begins behind the one before it
    mutable std::vector<unsigned> slotsByCode_;  // of others, made at the first look-up
};

}  // namespace tarvex
