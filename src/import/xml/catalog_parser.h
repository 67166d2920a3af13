/// The XML parser with the rules of catalogs.

#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>

#include "import/xml/dtd_watch.h"
#include "import/xml/element_builder.h"
#include "import/xml/parser_budget.h"

namespace tarvex {

/// Holds the budget of a parser, which has to be there before the parser is and after it is gone.
class ParserBudgetHolder {
  protected:
    ParserBudget budget_;
    DocumentMemory documentMemory_{budget_};
};

/// Makes a document of what the scanner of the library finds; the library's own document stays empty.
/// External entities come from local files only, a document that calls itself standalone may still be
/// indented, and a missing DTD is no error unless it is needed.
class CatalogParser : private ParserBudgetHolder,
                      public xercesc::XercesDOMParser,
                      private xercesc::XMLEntityResolver {
  public:
    /// A parser for one file, which keeps what the vocabulary says. Faults go to the error handler that the
    /// caller sets.
    CatalogParser(const std::string& path, bool validate, Vocabulary vocabulary);

    /// A document that asks for too much is given up with a fatal error.
    void Parse();

    /// The document of the last parse, as long as the parser lives.
    const Element& Document() const { return builder_.Document(); }

    /// Is told while Parse reads: how many bytes are read so far.
    void SetOnProgress(std::function<void(std::size_t bytes)> onProgress) {
        budget_.SetOnInput(std::move(onProgress));
    }

    /// Bytes of memory that the parser and the document take.
    std::size_t Memory() const { return budget_.Memory(); }

    /// The paths of the files that the document names, its own among them.
    std::vector<std::string> Files() const;
    /// Those of them that could be opened.
    const std::set<std::string>& OpenedFiles() const { return openedFiles_; }
    /// The DTD that a validating parser can't open, as the document names it; empty without such.
    const std::string& MissingDtd() const { return missingDtd_; }

    /// Two faults of standalone documents say nothing about the catalog and become warnings: white space
    /// between elements that are declared outside, and attributes that are left to defaults declared outside.
    void error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type,
               const XMLCh* text, const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line,
               XMLFileLoc column) override;

    /// Every external entity comes from here, so that none is fetched.
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;

    // The document is built of what is read of it only. The scanner validates all of it nevertheless.
    void XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
                 const XMLCh* autoEncoding) override;
    void docCharacters(const XMLCh* chars, XMLSize_t length, bool isCData) override;
    void ignorableWhitespace(const XMLCh* chars, XMLSize_t length, bool isCData) override;
    void docComment(const XMLCh* comment) override;
    void docPI(const XMLCh* target, const XMLCh* data) override;
    void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uri, const XMLCh* prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount,
                      bool isEmpty, bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uri, bool isRoot,
                    const XMLCh* prefix) override;
    void startEntityReference(const xercesc::XMLEntityDecl& declaration) override;
    void endEntityReference(const xercesc::XMLEntityDecl& declaration) override;

  private:
    std::string PathOf(const XMLCh* systemId) const;
    void AddText(const XMLCh* chars, XMLSize_t length);
    void Warn(const std::string& text);
    void MarkPlace();

    std::string path_;
    bool isValidating_;
    DtdWatch dtd_;
    std::map<DomText, std::string> paths_;  // of the files read so far, by the system identifier they go by
    std::set<std::string> openedFiles_;
    std::string missingDtd_;
    ElementBuilder builder_;
    std::vector<std::size_t> childCosts_;  // of the open elements
    /// Where the scanner stood after the last event. Every character is part of one, so the next tag begins
    /// here.
    FilePlace place_{1, 1};
    const xercesc::XMLReader* documentReader_ = nullptr;  // of the document itself; others read its entities
};

}  // namespace tarvex
