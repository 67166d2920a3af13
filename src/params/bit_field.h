/// The bit field parameter.

#pragma once

#include "catalog/import_context.h"
#include "catalog/list_node.h"
#include "import/xml/element.h"
#include "params/bool_field.h"
#include "params/param_kind.h"

namespace tarvex {

/// Up to 16 bits, each named bit in the slot of its position.
class ZMTParamBitField
    : public ZMTParamKind<ZMTParamBitField, ZMTListNode<ZMTParam, ZMTParamBoolField>, ParamKind::BitField> {
  public:
    /// Raises 88 to 94 and those of the bits; false without "TBitField", "Length" or "TypeRef" or when a bit
    /// fails.
    bool Import(const Element& element, ImportContext& context) override;
    /// A bit that fails is deleted; the field stays.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// Length in bits.
    virtual void SetLength(std::uint32_t bits) { length_ = bits; }
    virtual std::uint32_t Length() const { return length_; }
    virtual std::uint32_t MaxLength() const { return 16; }
    /// The bit at a position, 0 the least significant; null if it has no name.
    virtual ZMTParamBoolField* FindBit(std::uint32_t bitPos) const { return GetAt(bitPos); }

  protected:
    /// Widens the declared length (93) so that every bit has room, as far as the kind allows.
    void FitLength(std::uint32_t declared, const FaultSite& site);
    void DumpFieldLines(ZMostTreeLog& treeLog) const;

    /// Reads the "TBoolField" children. A bit at a taken position raises kTwice and is left out; one that
    /// fails raises kFailed and makes the result false.
    template <const Message& kTwice, const Message& kFailed>
    bool ImportBits(const Element& field, ImportContext& context);

  private:
    std::uint32_t length_ = 0;
};

template <const Message& kTwice, const Message& kFailed>
bool ZMTParamBitField::ImportBits(const Element& field, ImportContext& context) {
    for (const Element* child = FindChildElement(&field, "TBoolField"); child != nullptr;
         child = FindNextSiblingElement(*child, "TBoolField")) {
        auto bit = std::make_unique<ZMTParamBoolField>();
        bit->SetParent(this);
        if (!bit->Import(*child, context)) {
            return Raise<kFailed>(context.At(child), "TBoolField");
        }
        const std::uint32_t pos = bit->BitPos();
        if (FindBit(pos) != nullptr) {
            Raise<kTwice>(context.At(child), pos);
        } else {
            SetAt(std::move(bit), pos);
        }
    }
    return true;
}

}  // namespace tarvex
