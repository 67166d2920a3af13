#pragma once

#include <vector>

#include "catalog/child_list.h"
#include "catalog/param.h"
#include "params/enum_value.h"
#include "params/selector.h"

namespace tarvex {

/// A code of one or two bytes whose values are listed with their names.
class ZMTParamEnum : public ZMTParam, public ZMTChildList<ZMTEnumValue>, public ZMTSelector {
  public:
    int GetType() const override { return kParamEnum; }
    /// Raises 77 to 83, 85 and those of the values; false only without name, position or "TEnum".
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    using ZMTChildList<ZMTEnumValue>::CopyFrom;
    bool CopyFrom(const ZMTNode* other) override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    std::size_t CopySize() const override { return ZMTParam::CopySize() + CopySizeOfAll(); }
    bool Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }

    /// The first value that the code belongs to; null if there is none.
    const ZMTEnumValue* FindValue(std::uint32_t code) const;
    /// The largest code, 1 to 65535.
    std::uint32_t EnumMax() const { return enumMax_; }

  private:
    void ImportEnumMax(const DOMElement& enumElement, ImportContext& context);
    void ImportValues(const DOMElement& enumElement, ImportContext& context);
    void CheckCodes(ImportContext& context);
    void IndexCodes() const;

    std::uint32_t enumMax_ = 255;
    bool isAscending_ = false;                   // each value begins behind the one before it
    mutable std::vector<unsigned> slotsByCode_;  // of others, made at the first look-up
};

}  // namespace tarvex
