/// Watches the document type of a catalog while the XML parser reads it.

#pragma once

#include <string>
#include <unordered_map>

#include <xercesc/validators/DTD/DocTypeHandler.hpp>

#include "import/xml/parser_budget.h"

namespace tarvex {

/// Follows the DTD of a document: which file it comes from, and what its content models and attributes cost.
/// Nothing of it becomes part of the document.
class DtdWatch : public xercesc::DocTypeHandler {
  public:
    explicit DtdWatch(ParserBudget& budget) : budget_(budget) {}

    /// The system identifier in the document type declaration; empty without an external DTD.
    const std::basic_string<XMLCh>& ExternalDtd() const { return externalDtd_; }

    /// What an element costs beside its content, in characters: the parser goes through all attributes that
    /// are declared for it, and through the words that one may consist of.
    std::size_t CostOf(const xercesc::XMLElementDecl& element) const;

    void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* publicId, const XMLCh* systemId,
                     bool hasInternalSubset, bool hasExternalSubset) override;
    void elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) override;

    void attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& attribute,
                bool isIgnored) override;
    void entityDecl(const xercesc::DTDEntityDecl& entity, bool isParameterEntity, bool isIgnored) override;
    void doctypeComment(const XMLCh* /*comment*/) override {}
    void doctypePI(const XMLCh* /*target*/, const XMLCh* /*data*/) override {}
    void doctypeWhitespace(const XMLCh* /*text*/, XMLSize_t /*length*/) override {}
    void startAttList(const xercesc::DTDElementDecl& /*element*/) override {}
    void endAttList(const xercesc::DTDElementDecl& /*element*/) override {}
    void startIntSubset() override {}
    void endIntSubset() override {}
    void startExtSubset() override {}
    void endExtSubset() override {}
    void notationDecl(const xercesc::XMLNotationDecl& /*notation*/, bool /*isIgnored*/) override {}
    void resetDocType() override {}
    void TextDecl(const XMLCh* /*version*/, const XMLCh* /*encoding*/) override {}

  private:
    ParserBudget& budget_;
    std::basic_string<XMLCh> externalDtd_;
    std::unordered_map<const xercesc::XMLElementDecl*, std::size_t> attributeCosts_;
};

}  // namespace tarvex
