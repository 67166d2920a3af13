/// The base of all parameters.

#pragma once

#include "catalog/node_kind.h"

namespace tarvex {

class ZMTDefType;

inline constexpr std::uint32_t kBitsPerByte = 8;

/// Positions that a catalog may give to a parameter of a record or stream lie in 1 to this.
inline constexpr std::uint32_t kMaxParamPos = 4095;

/// Base of every parameter: what is laid out in the bytes of an operation's message. A parameter has a
/// position in its message, record or stream case, and refers to the type that it was declared with. The
/// kinds stand in params/; this base is part of the tree because operations own parameters of every kind.
class ZMTParam : public ZMTNodeKind<ZMTParam, ZMTNode, kParam> {
  public:
    ZMTParam() = default;

    unsigned GetPosition() const override { return paramPos_; }
    /// The bare base has nothing to import; always false.
    bool Import(const Element& element, ImportContext& context) override;
    /// Raises 9 for a name that is visible already, which is no failure.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// A parameter of this name stands before this one, in its own list or further up.
    virtual bool HasDuplicateName() const;
    /// Reads the name; raises 10 or 11, false when the name is missing and needed.
    virtual bool ImportParamName(const Element& element, ImportContext& context);
    /// Reads the position of a record field or stream parameter; raises 12 to 16, false when it is not
    /// usable. Every other element leaves the position to the owner.
    virtual bool ImportParamPos(const Element& element, ImportContext& context);

    ParamKind Kind() const { return static_cast<ParamKind>(GetType()); }
    /// Ordinal in the message, record or stream case, not a byte offset.
    std::uint32_t ParamPos() const { return paramPos_; }
    void SetParamPos(std::uint32_t pos) { paramPos_ = pos; }
    /// Orders stream parameters that share a position; 0 when none was given.
    std::uint32_t Sequence() const { return sequence_; }
    /// The type definition that the parameter refers to, owned by the catalog's definitions; null if none.
    const ZMTDefType* TypeDefinition() const { return typeDefinition_; }

    /// The element that the parameter was made of; null for one that was made by hand. Copies have that of
    /// their original. It belongs to the document, which need not outlive the import.
    const Element* GetElement() const { return element_; }

  protected:
    using ZMTNodeKind::ZMTNodeKind;

    void SetElement(const Element& element) { element_ = &element; }

    /// Takes the name from the element's name element; false when that is missing or empty.
    bool ReadParamName(const Element& element);
    /// Takes the type definition of that identifier, none if there is no such definition.
    void ResolveType(const std::string& typeRef, const ImportContext& context);
    /// Writes the lines that all parameters share, after the header of the kind.
    void DumpParamLines(ZMostTreeLog& treeLog) const;

  private:
    const Element* NameElement() const;
    bool ImportFieldIdx(const Element& element, ImportContext& context);
    bool ImportParamIdx(const Element& element, ImportContext& context);

    std::uint32_t paramPos_ = 0;
    std::uint32_t sequence_ = 0;
    const ZMTDefType* typeDefinition_ = nullptr;
    const Element* element_ = nullptr;
};

}  // namespace tarvex
