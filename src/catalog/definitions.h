/// The types and units that a catalog defines for its parameters.

#pragma once

#include "catalog/list_node.h"
#include "catalog/node_kind.h"

namespace tarvex {

/// A definition that parameters refer to: the name is the readable one, the definition name its identifier.
class ZMTDef : public ZMTNodeKind<ZMTDef, ZMTNode, kDef> {
  public:
    /// Always false: a bare definition has no element of its own.
    bool Import(const Element& element, ImportContext& context) override;

    virtual void SetDefName(const std::string& defName) { defName_ = defName; }
    virtual const std::string& GetDefName() const { return defName_; }

  private:
    std::string defName_;
};

/// The codes that the six basic types have; every other type has 0.
enum DefCode : std::int32_t {
    kUnsignedByte = 8,
    kSignedByte = 9,
    kUnsignedWord = 10,
    kSignedWord = 11,
    kUnsignedLong = 12,
    kSignedLong = 13,
};

/// A "TypeDef" element.
class ZMTDefType : public ZMTNodeKind<ZMTDefType, ZMTDef, kDefType> {
  public:
    /// Raises 1 to 3; false without "TypeID".
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// Size in bytes; 0 when the catalog gives none.
    std::int32_t DefSize() const { return defSize_; }
    /// The catalog gives one, be it 0 or no number.
    bool HasSize() const { return hasSize_; }
    std::int32_t Code() const { return defCode_; }

  private:
    bool hasSize_ = false;
    std::int32_t defSize_ = 0;
    std::int32_t defCode_ = 0;
};

/// A "UnitDef" element.
class ZMTDefUnit : public ZMTNodeKind<ZMTDefUnit, ZMTDef, kDefUnit> {
  public:
    /// Raises 4 to 6; false without "UnitID".
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    std::int32_t Code() const { return defCode_; }
    /// The readable name as the catalog writes it, for people: without white space at its ends, with "." for
    /// what a terminal might obey. Empty where the name is.
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
    std::int32_t defCode_ = 0;
};

/// All type definitions of a catalog, in document order.
class ZMTDefListType : public ZMTListNode<ZMTNode, ZMTDefType, ZMTDefList<ZMTDefType>> {
  public:
    NodeType GetType() const override { return kDefListType; }
    /// Takes all "TypeDef" elements below the element; one that fails raises 7 and is left out.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;
};

/// All unit definitions of a catalog, in document order.
class ZMTDefListUnit : public ZMTListNode<ZMTNode, ZMTDefUnit, ZMTDefList<ZMTDefUnit>> {
  public:
    NodeType GetType() const override { return kDefListUnit; }
    /// Takes all "UnitDef" elements below the element; one that fails raises 8 and is left out.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;
};

/// The "Definition" element: the types and units that parameters refer to.
class ZMTDefinition : public ZMTNode {
  public:
    ZMTDefinition();
    NodeType GetType() const override { return kDefinition; }
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    ZMTDefListType& Types() { return types_; }
    const ZMTDefListType& Types() const { return types_; }
    ZMTDefListUnit& Units() { return units_; }
    const ZMTDefListUnit& Units() const { return units_; }

  private:
    ZMTDefListType types_;
    ZMTDefListUnit units_;
};

}  // namespace tarvex
