#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "catalog/catalog.h"
#include "catalog/import_context.h"
#include "import/xml/document_reader.h"
#include "params/factory.h"
#include "support/temp_dir.h"

namespace tarvex::test {

/// The root element of a document text. The element lives as long as this object.
class ParsedElement {
  public:
    explicit ParsedElement(std::string_view xml);
    ParsedElement(const ParsedElement&) = delete;
    ParsedElement& operator=(const ParsedElement&) = delete;
    ~ParsedElement();

    const Element& operator*() const { return *root_; }

  private:
    TempDir dir_;
    std::unique_ptr<DocumentReader> reader_;
    const Element* root_ = nullptr;
};

/// Imports single elements: what a whole import hands from node to node, with an open import log and the
/// usual definitions. Nodes imported here refer to those definitions and must go before this object.
class ElementImport {
  public:
    ElementImport();
    explicit ElementImport(const ParamFactory& factory);

    ImportContext& Context() { return *context_; }
    ZMostFCatLog& Log() { return log_; }
    /// The log entries raised since the last call.
    std::string TakeMessages();

    /// Imports a node from an element text; the node needs the text no longer when this returns.
    bool Import(ZMTNode& node, std::string_view xml);

  private:
    TempDir dir_;
    ZMostFCatLog log_;
    CatalogParamFactory catalogFactory_;
    ZMTDefinition definitions_;
    RunAllowance run_;
    std::unique_ptr<ImportContext> context_;
};

/// A "Function" element that raises no message: a property with one void parameter in its "Get".
std::string VoidFunction(std::string_view id, std::string_view name, std::string_view attributes = "");

/// A catalog "Cat" imported with a parameter factory of the test's own.
struct FactoryImport {
    FactoryImport(const ParamFactory& factory, std::string_view catalogXml);

    ElementImport import;
    ZMTCatalog catalog;
    bool ok = false;
    std::string messages;
};

/// The node at a path of names below the catalog, such as {"Amp", "Volume", "Status"}; null if there is none.
template <class T, class... Names>
T* NodeAt(ZMTNode* from, const Names&... names) {
    ZMTNode* node = from;
    ((node = node == nullptr ? nullptr : node->FindChild(names)), ...);
    return dynamic_cast<T*>(node);
}

/// The tree log lines of a node and what is below it.
std::string DumpOf(const ZMTNode& node);

}  // namespace tarvex::test
