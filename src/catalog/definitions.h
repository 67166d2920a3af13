#pragma once

#include "catalog/child_list.h"
#include "catalog/node.h"

namespace tarvex {

/// A definition that parameters refer to: the name is the readable one, the definition name its identifier.
class ZMTDef : public ZMTNode {
  public:
    int GetType() const override { return kDef; }
    /// Always false: a bare definition has no element of its own.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool CopyFrom(const ZMTNode* other) override;

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
class ZMTDefType : public ZMTDef {
  public:
    int GetType() const override { return kDefType; }
    /// Raises 1 to 3; false without "TypeID".
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    bool CopyFrom(const ZMTNode* other) override;

    /// Size in bytes; 0 when the catalog gives none.
    std::int32_t DefSize() const { return defSize_; }
    std::int32_t Code() const { return defCode_; }

  private:
    std::int32_t defSize_ = 0;
    std::int32_t defCode_ = 0;
};

/// A "UnitDef" element.
class ZMTDefUnit : public ZMTDef {
  public:
    int GetType() const override { return kDefUnit; }
    /// Raises 4 to 6; false without "UnitID".
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    bool CopyFrom(const ZMTNode* other) override;

    std::int32_t Code() const { return defCode_; }

  private:
    std::int32_t defCode_ = 0;
};

/// All type definitions of a catalog, in document order.
class ZMTDefListType : public ZMTNode, public ZMTDefList<ZMTDefType> {
  public:
    int GetType() const override { return kDefListType; }
    /// Takes all "TypeDef" elements below the element; one that fails raises 7 and is left out.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }
};

/// All unit definitions of a catalog, in document order.
class ZMTDefListUnit : public ZMTNode, public ZMTDefList<ZMTDefUnit> {
  public:
    int GetType() const override { return kDefListUnit; }
    /// Takes all "UnitDef" elements below the element; one that fails raises 8 and is left out.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }
};

/// The "Definition" element: the types and units that parameters refer to.
class ZMTDefinition : public ZMTNode {
  public:
    ZMTDefinition();
    int GetType() const override { return kDefinition; }
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;

    ZMTDefListType& Types() { return types_; }
    const ZMTDefListType& Types() const { return types_; }
    ZMTDefListUnit& Units() { return units_; }
    const ZMTDefListUnit& Units() const { return units_; }

  private:
    ZMTDefListType types_;
    ZMTDefListUnit units_;
};

}  // namespace tarvex
