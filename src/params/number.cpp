#include "params/number.h"

#include "catalog/definitions.h"
#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"
#include "params/basis_types.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

/// Units that stand for having none, by name or identifier.
constexpr const char* kReservedUnits[] = {"unit_undefined", "unit_none"};

bool IsUnsigned(std::int32_t defCode) {
    return defCode == kUnsignedByte || defCode == kUnsignedWord || defCode == kUnsignedLong;
}

}  // namespace

bool ZMTParamNumber::Import(const Element& element, ImportContext& context) {
    const Element* number = ImportHead<kNoTNumber>(element, "TNumber", context);
    if (number == nullptr) {
        return false;
    }
    ImportScale(*number, context);
    if (!ImportBasisType(*number, context) || !ImportUnit(*number, context)) {
        return false;
    }
    if (NamesEqual(GetName(), kPosName)) {
        if (GetBytesInMsg() != kPosBytes) {
            Raise<kPosSizeNotTwo>(context.AtFirstChild(*FindChildElement(number, "BasisDataType")));
        }
        if (exponent_ != 0) {
            Raise<kPosExponentNotZero>(context.AtChild(*number, "Exponent"));
        }
    }
    return true;
}

void ZMTParamNumber::ImportScale(const Element& number, ImportContext& context) {
    std::string text;
    if (GetChildElementText(number, "Exponent", text)) {
        exponent_ = IntegerOrZero(text);
    } else {
        Raise<kNumberWithoutExponent>(context.AtChild(number, "Exponent"), "Exponent");
    }
    ImportRange(number, context);
    if (GetChildElementText(number, "Step", text)) {
        step_ = ParseFloat(text);
    } else {
        Raise<kNumberWithoutStep>(context.AtChild(number, "Step"), "Step");
    }
}

void ZMTParamNumber::ImportRange(const Element& number, ImportContext& context) {
    std::string min;
    std::string max;
    const bool hasMin = GetChildElementText(number, "RangeMin", min);
    const bool hasMax = GetChildElementText(number, "RangeMax", max);
    rangeMin_ = ParseFloat(min);
    rangeMax_ = ParseFloat(max);
    hasRange_ = IsFloat(min) && IsFloat(max);
    if (!hasMin && !hasMax && context.newer.AreRead()) {
        return;
    }
    if (!hasMin) {
        Raise<kNumberWithoutRangeMin>(context.AtChild(number, "RangeMin"), "RangeMin");
    }
    if (!hasMax) {
        Raise<kNumberWithoutRangeMax>(context.AtChild(number, "RangeMax"), "RangeMax");
    }
}

bool ZMTParamNumber::ImportBasisType(const Element& number, ImportContext& context) {
    const Element* basis = FindChildElement(&number, "BasisDataType");
    if (basis == nullptr) {
        return Raise<kNumberWithoutBasisType>(context.At(number), "BasisDataType");
    }
    std::string typeRef;
    for (const char* name : kBasisTypes) {
        if (GetChildAttribute(*basis, name, "TypeRef", typeRef)) {
            ResolveType(typeRef, context);
            break;
        }
    }
    if (TypeDefinition() == nullptr) {
        return Raise<kBasisTypeNotFound>(context.AtFirstChild(*basis));
    }
    isSigned_ = !IsUnsigned(TypeDefinition()->Code());
    SetBytesInMsg(TypeDefinition()->DefSize());
    return true;
}

bool ZMTParamNumber::ImportUnit(const Element& number, ImportContext& context) {
    std::string unitRef;
    if (!GetChildAttribute(number, "Unit", "UnitRef", unitRef)) {
        return Raise<kNumberWithoutUnit>(context.AtChild(number, "Unit"), "Unit");
    }
    unit_ = context.definitions != nullptr ? context.definitions->Units().FindByDefName(unitRef) : nullptr;
    if (unit_ == nullptr) {
        return Raise<kUnitNotFound>(context.AtChild(number, "Unit"));
    }
    unitName_ = unit_->GetName();
    return true;
}

const std::string& ZMTParamNumber::UnitText() const {
    return unit_ != nullptr ? unit_->Text() : unitName_;
}

bool ZMTParamNumber::HasPhysicalUnit() const {
    return unit_ != nullptr && std::ranges::none_of(kReservedUnits, [&](const char* reserved) {
               return NamesEqual(unitName_, reserved) || NamesEqual(unit_->GetDefName(), reserved);
           });
}

bool ZMTParamNumber::Dump(ZMostTreeLog& treeLog) const {
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

}  // namespace tarvex
