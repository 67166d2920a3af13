#include "params/bit_field.h"

#include <algorithm>

#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

/// What newer catalogs declare: bits, or bytes where the bits in use are not so few.
std::uint32_t DeclaredBits(std::uint32_t length, std::uint32_t needed, std::uint32_t most) {
    const bool countsBytes = needed > length && needed <= std::min(length, most) * kBitsPerByte;
    return countsBytes ? std::min(length * kBitsPerByte, most) : length;
}

}  // namespace

void ZMTParamBitField::FitLength(std::uint32_t declared, const FaultSite& site) {
    const std::uint32_t needed = std::max(Size(), 1U);  // the highest bit has the last slot
    SetLength(declared);
    if (needed > declared) {
        SetLength(std::min(needed, MaxLength()));
        Raise<kBitLengthAmbiguous>(site, declared, needed, Length());
    }
}

bool ZMTParamBitField::Import(const Element& element, ImportContext& context) {
    const Element* field = ImportHead<kNoTBitField>(element, "TBitField", context);
    if (field == nullptr) {
        return false;
    }
    std::string length;
    if (!GetAttribute(*field, "Length", length)) {
        return Raise<kBitFieldWithoutLength>(context.At(field), "Length");
    }
    if (!ImportTypeRef<kBitFieldWithoutType>(*field, context) ||
        !ImportBits<kBitFieldBitTwice, kBitFieldBitFailed>(*field, context)) {
        return false;
    }
    const auto declared = static_cast<std::uint32_t>(IntegerOrZero(length));
    FitLength(context.newer.AreRead() ? DeclaredBits(declared, Size(), MaxLength()) : declared,
              context.At(field));
    if (Length() == 0 || Length() > MaxLength()) {
        Raise<kBitLengthInvalid>(context.At(field), Length());
        SetLength(MaxLength());
    }
    SetBytesInMsg(Length() > kBitsPerByte ? 2 : 1);
    return true;
}

bool ZMTParamBitField::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    ResolveOrDelete(context);
    return true;
}

bool ZMTParamBitField::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMBITFIELD: " + GetName());
    DumpFieldLines(treeLog);
    return true;
}

void ZMTParamBitField::DumpFieldLines(ZMostTreeLog& treeLog) const {
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".Length: %d", Length()));
    DumpAll(treeLog);
}

}  // namespace tarvex
