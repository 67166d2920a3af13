/// Watches the document type of a catalog while the XML parser reads it.

#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/validators/DTD/DocTypeHandler.hpp>

#include "import/xml/name_buckets.h"
#include "import/xml/parser_budget.h"

namespace tarvex {

/// Follows the DTD of a document: which file it comes from, what its content models and attributes cost, and
/// whether its names crowd in the parser's tables. Nothing of it becomes part of the document.
class DtdWatch : public xercesc::DocTypeHandler {
  public:
    explicit DtdWatch(ParserBudget& budget) : budget_(budget) {}

    /// The system identifier in the document type declaration; empty without an external DTD.
    const std::basic_string<XMLCh>& ExternalDtd() const { return externalDtd_; }

    /// What an element costs, in characters.
    struct Cost {
        /// Beside its content: the parser goes through all attributes that are declared for it, and through
        /// the words that one may consist of.
        std::size_t own = 0;
        /// Each child element: a validating parser looks for it in the content model.
        std::size_t child = 0;
    };
    /// To be called for every element. Throws ParserStop.
    Cost CostOf(const xercesc::XMLElementDecl& element);

    /// To be called for the attributes of every element, with the values that a validating parser keeps.
    /// Throws ParserStop.
    void AddAttributes(const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count,
                       bool isValidating);

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
    void notationDecl(const xercesc::XMLNotationDecl& notation, bool isIgnored) override;
    void resetDocType() override {}
    void TextDecl(const XMLCh* /*version*/, const XMLCh* /*encoding*/) override {}

  private:
    /// The buckets that the parser's tables start with.
    static constexpr std::size_t kGrammarBuckets = 109;
    static constexpr std::size_t kAttributeBuckets = 29;
    static constexpr std::size_t kUndeclaredBuckets = 29;
    static constexpr std::size_t kTagBuckets = 7;

    /// What is known of an element.
    struct Known {
        std::size_t attributeCost = 0;
        std::size_t modelParts = 0;
        std::unique_ptr<NameBuckets> attributes;  // once there are any
    };

    Known& KnownOf(const xercesc::XMLElementDecl& element);
    void AddElementName(const XMLCh* name);
    void AddIdentifiers(const XMLCh* value);
    std::size_t AddModel(const xercesc::ContentSpecNode* model);

    ParserBudget& budget_;
    std::basic_string<XMLCh> externalDtd_;
    std::unordered_map<const xercesc::XMLElementDecl*, Known> elements_;
    NameBuckets declaredElements_{kGrammarBuckets};
    NameBuckets otherElements_{kUndeclaredBuckets};
    NameBuckets entities_{kGrammarBuckets};
    NameBuckets parameterEntities_{kGrammarBuckets};
    NameBuckets notations_{kGrammarBuckets};
    NameBuckets identifiers_{kGrammarBuckets};
};

}  // namespace tarvex
