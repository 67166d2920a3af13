#include "params/number.h"

#include "catalog/definitions.h"
#include "catalog/import_context.h"
#include "catalog/op_types.h"
#include "import/parse_value.h"
#include "params/factory.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

/// Units that stand for having none, by name or identifier.
constexpr const char* kReservedUnits[] = {"unit_undefined", "unit_none"};

bool IsUnsigned(std::int32_t defCode) {
    return defCode == kUnsignedByte || defCode == kUnsignedWord || defCode == kUnsignedLong;
}

}  // namespace

bool ZMTParamNumber::Import(const DOMElement& element, ImportContext& context) {
    if (!ImportParamName(element, context) || !ImportParamPos(element, context)) {
        return false;
    }
    const DOMElement* number = FindTypeElement(element, "TNumber");
    if (number == nullptr) {
        return Raise<kNoTNumber>(context.log, "TNumber");
    }
    ImportScale(*number, context);
    if (!ImportBasisType(*number, context) || !ImportUnit(*number, context)) {
        return false;
    }
    if (NamesEqual(GetName(), kPosName)) {
        if (GetBytesInMsg() != kPosBytes) {
            Raise<kPosSizeNotTwo>(context.log);
        }
        if (exponent_ != 0) {
            Raise<kPosExponentNotZero>(context.log);
        }
    }
    return true;
}

void ZMTParamNumber::ImportScale(const DOMElement& number, ImportContext& context) {
    std::string text;
    if (GetChildElementText(number, text, "Exponent")) {
        exponent_ = IntegerOrZero(text);
    } else {
        Raise<kNumberWithoutExponent>(context.log, "Exponent");
    }
    if (GetChildElementText(number, text, "RangeMin")) {
        rangeMin_ = ParseFloat(text);
    } else {
        Raise<kNumberWithoutRangeMin>(context.log, "RangeMin");
    }
    if (GetChildElementText(number, text, "RangeMax")) {
        rangeMax_ = ParseFloat(text);
    } else {
        Raise<kNumberWithoutRangeMax>(context.log, "RangeMax");
    }
    if (GetChildElementText(number, text, "Step")) {
        step_ = ParseFloat(text);
    } else {
        Raise<kNumberWithoutStep>(context.log, "Step");
    }
}

bool ZMTParamNumber::ImportBasisType(const DOMElement& number, ImportContext& context) {
    const DOMElement* basis = FindChildElement(&number, "BasisDataType");
    if (basis == nullptr) {
        return Raise<kNumberWithoutBasisType>(context.log, "BasisDataType");
    }
    std::string typeRef;
    for (const char* name : kBasisTypes) {
        if (GetChildAttribute(*basis, typeRef, name, "TypeRef")) {
            ResolveType(typeRef, context);
            break;
        }
    }
    if (TypeDefinition() == nullptr) {
        return Raise<kBasisTypeNotFound>(context.log);
    }
    isSigned_ = !IsUnsigned(TypeDefinition()->Code());
    SetBytesInMsg(TypeDefinition()->DefSize());
    return true;
}

bool ZMTParamNumber::ImportUnit(const DOMElement& number, ImportContext& context) {
    std::string unitRef;
    if (!GetChildAttribute(number, unitRef, "Unit", "UnitRef")) {
        return Raise<kNumberWithoutUnit>(context.log, "Unit");
    }
    unit_ = context.definitions != nullptr ? context.definitions->Units().FindByDefName(unitRef) : nullptr;
    if (unit_ == nullptr) {
        return Raise<kUnitNotFound>(context.log);
    }
    unitName_ = unit_->GetName();
    return true;
}

bool ZMTParamNumber::HasPhysicalUnit() const {
    return unit_ != nullptr && std::ranges::none_of(kReservedUnits, [&](const char* reserved) {
               return NamesEqual(unitName_, reserved) || NamesEqual(unit_->GetDefName(), reserved);
           });
}

bool ZMTParamNumber::Dump(ZMostFCatLog& treeLog) const {
    DumpLine(treeLog, "PARAMNUMBER: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog,
             ".DefType: " + (TypeDefinition() == nullptr ? std::string() : TypeDefinition()->GetName()));
    DumpLine(treeLog, FormatText(".Exponent: %d", exponent_));
    DumpLine(treeLog, FormatText(".Range: %f-%f", rangeMin_, rangeMax_));
    DumpLine(treeLog, FormatText(".Step: %f", step_));
    DumpLine(treeLog, ".UnitName: " + unitName_);
    return true;
}

bool ZMTParamNumber::CopyFrom(const ZMTNode* other) {
    if (!ZMTParam::CopyFrom(other)) {
        return false;
    }
    const auto& number = static_cast<const ZMTParamNumber&>(*other);
    isSigned_ = number.isSigned_;
    exponent_ = number.exponent_;
    rangeMin_ = number.rangeMin_;
    rangeMax_ = number.rangeMax_;
    step_ = number.step_;
    unitName_ = number.unitName_;
    unit_ = number.unit_;
    return true;
}

}  // namespace tarvex
