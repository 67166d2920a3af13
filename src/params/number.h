/// The number parameter.

#pragma once

#include "params/param_kind.h"

namespace tarvex {

class ZMTDefUnit;

/// A scaled integer: the physical value is the raw one times 10 to the Exponent.
class ZMTParamNumber : public ZMTParamKind<ZMTParamNumber, ZMTParam, ParamKind::Number>, public ZMTSelector {
  public:
    /// Raises 66 to 74, 151 and 152; false when type or unit are missing. Newer catalogs may leave out both
    /// bounds.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    bool IsSigned() const { return isSigned_; }
    std::int32_t Exponent() const { return exponent_; }
    /// The catalog gives both bounds, and both are numbers.
    bool HasRange() const { return hasRange_; }
    /// Bounds and resolution of the physical value; 0 where the catalog gives none.
    double RangeMin() const { return rangeMin_; }
    double RangeMax() const { return rangeMax_; }
    double Step() const { return step_; }
    /// The readable name of the unit; may be empty.
    const std::string& UnitName() const { return unitName_; }
    /// The unit as the catalog writes it; may be empty.
    const std::string& UnitText() const;
    /// Owned by the catalog's definitions; null before the import.
    const ZMTDefUnit* Unit() const { return unit_; }
    /// False for the reserved units that stand for having none.
    bool HasPhysicalUnit() const;

  private:
    void ImportScale(const Element& number, ImportContext& context);
    void ImportRange(const Element& number, ImportContext& context);
    bool ImportBasisType(const Element& number, ImportContext& context);
    bool ImportUnit(const Element& number, ImportContext& context);

    bool isSigned_ = false;
    bool hasRange_ = false;
    std::int32_t exponent_ = 0;
    double rangeMin_ = 0;
    double rangeMax_ = 0;
    double step_ = 0;
    std::string unitName_;
    const ZMTDefUnit* unit_ = nullptr;
};

}  // namespace tarvex
