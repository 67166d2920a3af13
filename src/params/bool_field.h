/// The single bit of a bit field or boolean.

#pragma once

#include "params/param_kind.h"

namespace tarvex {

/// Bits are numbered below this, in a boolean as well as in a bit field.
inline constexpr std::int32_t kBitPosEnd = 16;

/// One named bit of a bit field or boolean. Its position is its number in the field, bit 0 the least
/// significant.
class ZMTParamBoolField : public ZMTParamKind<ZMTParamBoolField, ZMTParam, ParamKind::BoolField> {
  public:
    /// Reads a "TBoolField" element; raises 59 to 63, false without a usable "BitPos".
    bool Import(const Element& element, ImportContext& context) override;
    /// A bit may do without a name.
    bool ImportParamName(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;
    std::size_t CopySize() const override {
        return ZMTParam::CopySize() + trueDesc_.size() + falseDesc_.size();
    }

    std::uint32_t BitPos() const { return ParamPos(); }
    /// What the values 1 and 0 mean.
    const std::string& TrueDesc() const { return trueDesc_; }
    const std::string& FalseDesc() const { return falseDesc_; }

  private:
    std::string trueDesc_ = "True";
    std::string falseDesc_ = "False";
};

}  // namespace tarvex
