/// What the parser leaves out changes nothing: catalogs are imported twice, with the words of the vocabulary
/// and from a DOM of the whole document, and both imports must log the same, byte for byte.

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "catalog/op_types.h"
#include "catalog_text.h"
#include "import/dom_elements.h"
#include "import/import_manager.h"
#include "import/xml/dom_error_handler.h"
#include "import/xml/transcode.h"
#include "params/catalog_vocabulary.h"
#include "support/catalog_import.h"
#include "support/temp_dir.h"

namespace tarvex::test::whole_document_test {
namespace {

using xercesc::DOMNode;

/// The XML library's own parser and DOM, which leave nothing out.
class WholeDocumentReader : public DocumentReader {
  public:
    WholeDocumentReader() { xercesc::XMLPlatformUtils::Initialize(); }
    ~WholeDocumentReader() override {
        Release();
        xercesc::XMLPlatformUtils::Terminate();
    }
    WholeDocumentReader(const WholeDocumentReader&) = delete;
    WholeDocumentReader& operator=(const WholeDocumentReader&) = delete;

    void StartPlatform() override {}
    void StopPlatform() override { Release(); }
    const Element* Read(const std::string& path, bool /*validate*/, ZDOMErrorHandler& handler) override {
        elements_.reset();
        parser_ = std::make_unique<xercesc::XercesDOMParser>();
        parser_->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
        parser_->setDoNamespaces(false);
        parser_->setCreateEntityReferenceNodes(false);
        parser_->setErrorHandler(&handler);
        parser_->parse(path.c_str());
        elements_ = std::make_unique<DomElements>(*parser_->getDocument());
        return &elements_->Document();
    }
    void Release() override {
        elements_.reset();
        parser_.reset();
    }
    /// The document of the last Read.
    const DOMNode& Dom() const { return *parser_->getDocument(); }

  private:
    std::unique_ptr<xercesc::XercesDOMParser> parser_;
    std::unique_ptr<DomElements> elements_;
};

/// What an import leaves behind.
struct Logs {
    std::string import;
    std::string tree;
};

Logs ImportWith(std::unique_ptr<DocumentReader> reader, const std::string& path, const TempDir& dir) {
    const std::string importLog = dir.File("import.log");
    const std::string treeLog = dir.File("tree.log");
    ZMostFCatManager manager(std::move(reader));
    manager.Validate = false;
    std::string name = "Cat";
    Logs logs;
    if (manager.Import(name, path, 1, importLog)) {
        manager.WriteTreeLog(treeLog);
        logs.tree = ReadFile(treeLog);
    }
    logs.import = ReadFile(importLog);
    return logs;
}

/// Compares both imports of a file. Gives what the import of the whole document logged.
Logs CheckImports(const std::string& path) {
    const TempDir dir;
    const Logs whole = ImportWith(std::make_unique<WholeDocumentReader>(), path, dir);
    const Logs words = ImportWith(MakeXercesReader(CatalogVocabulary()), path, dir);
    EXPECT_EQ(words.import, whole.import);
    EXPECT_EQ(words.tree, whole.tree);
    return whole;
}

TEST(WholeDocument, SaysOfTheExampleWhatItsWordsSay) {
    const Logs logs = CheckImports(TARVEX_EXAMPLES "/roadster.xml");
    EXPECT_NE(logs.tree, "");
}

TEST(WholeDocument, SaysOfGeneratedCatalogsWhatTheirWordsSay) {
    const TempDir dir;
    const std::string path = dir.File("Cat.xml");
    for (const std::uint64_t seed : {1U, 2U, 3U}) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        bench::CatalogPlan plan;
        plan.bytes = 300'000;
        plan.blocks = 10;
        plan.seed = seed;
        std::FILE* file = std::fopen(path.c_str(), "wb");
        ASSERT_NE(file, nullptr);
        bench::CatalogText(plan, file).Write();
        ASSERT_EQ(std::fclose(file), 0);
        EXPECT_NE(CheckImports(path).tree, "");
    }
}

/// A piece of a document that mutations can take apart.
struct Piece {
    enum class Kind { Element, Text, Markup };
    Kind kind = Kind::Element;
    std::string text;  // the element's name, the text unescaped, or the markup
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<Piece> content;

    bool Is(std::string_view element) const { return kind == Kind::Element && text == element; }
};

Piece PieceOf(const DOMNode& node) {
    if (node.getNodeType() == DOMNode::TEXT_NODE) {
        return {Piece::Kind::Text, Transcode(node.getNodeValue()), {}, {}};
    }
    if (node.getNodeType() == DOMNode::COMMENT_NODE) {
        return {Piece::Kind::Markup, "<!--" + Transcode(node.getNodeValue()) + "-->", {}, {}};
    }
    EXPECT_EQ(node.getNodeType(), DOMNode::ELEMENT_NODE);
    Piece piece = {Piece::Kind::Element, Transcode(node.getNodeName()), {}, {}};
    for (XMLSize_t i = 0; i < node.getAttributes()->getLength(); ++i) {
        const DOMNode& attribute = *node.getAttributes()->item(i);
        piece.attributes.emplace_back(Transcode(attribute.getNodeName()),
                                      Transcode(attribute.getNodeValue()));
    }
    for (const DOMNode* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        piece.content.push_back(PieceOf(*child));
    }
    return piece;
}

std::string Escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

void Print(const Piece& piece, std::string& xml) {
    if (piece.kind != Piece::Kind::Element) {
        xml += piece.kind == Piece::Kind::Text ? Escaped(piece.text) : piece.text;
        return;
    }
    xml += "<" + piece.text;
    for (const auto& [name, value] : piece.attributes) {
        xml += " " + name + "=\"" + Escaped(value) + "\"";
    }
    xml += ">";
    for (const Piece& child : piece.content) {
        Print(child, xml);
    }
    xml += "</" + piece.text + ">";
}

constexpr const char* kDocumentType = R"(<!DOCTYPE FunctionCatalog [
    <!ENTITY text "1"><!ENTITY none ""><!ENTITY blank " "><!ENTITY parted "1<!-- -->2">
    <!ENTITY type "<TUByte TypeRef='type_unsigned_byte'/>"><!ENTITY odd "<Odd> </Odd>">]>)";

/// What a mutation puts anywhere.
constexpr const char* kInserts[] = {"<!-- -->", "<?pi?>",   "<![CDATA[1]]>", "<![CDATA[ ]]>", "<![CDATA[]]>",
                                    " ",        "\n\t ",    "&text;",        "&none;",        "&blank;",
                                    "&#32;",    "&parted;", "&type;",        "&odd;",         "<Odd/>",
                                    "&amp;",    "1"};
/// What a mutation names an element, if not like another one.
constexpr const char* kNames[] = {"Odd", "FunctionDescription", "Function", "ERParam", "ParamPos"};

/// Makes random changes to a document that leave it well-formed.
class Mutator {
  public:
    Mutator(Piece& root, std::mt19937_64& random) : root_(root), random_(random) {}

    /// Makes a change and says which.
    std::string Mutate() {
        constexpr std::string (Mutator::*kMutations[])(const Place& place) = {
            &Mutator::Rename,         &Mutator::Wrap,
            &Mutator::Unwrap,         &Mutator::Move,
            &Mutator::Delete,         &Mutator::Double,
            &Mutator::Insert,         &Mutator::Insert,
            &Mutator::Blank,          &Mutator::RenameAttribute,
            &Mutator::RemoveAttribute};
        const std::vector<Place> places = Places();
        if (places.empty()) {
            return "nothing left to change";
        }
        other_ = places[Below(places.size())].Element().text;
        const Place& place = places[Below(places.size())];
        const std::string name = place.Element().text;
        return name + (this->*kMutations[Below(std::size(kMutations))])(place);
    }

  private:
    /// An element below the root.
    struct Place {
        Piece* parent;
        std::size_t index;
        Piece& Element() const { return parent->content[index]; }
        auto Position() const { return parent->content.begin() + static_cast<std::ptrdiff_t>(index); }
    };

    std::size_t Below(std::size_t end) { return random_() % end; }

    std::vector<Place> Places() {
        std::vector<Place> places;
        Collect(root_, places);
        return places;
    }
    static void Collect(Piece& parent, std::vector<Place>& places) {
        for (std::size_t i = 0; i < parent.content.size(); ++i) {
            if (parent.content[i].kind == Piece::Kind::Element) {
                places.push_back({&parent, i});
                Collect(parent.content[i], places);
            }
        }
    }

    std::string AnyName() { return Below(2) == 0 ? other_ : kNames[Below(std::size(kNames))]; }

    std::string Rename(const Place& place) {
        place.Element().text = AnyName();
        return " renamed to " + place.Element().text;
    }

    std::string Wrap(const Place& place) {
        Piece wrapper = {Piece::Kind::Element, AnyName(), {}, {}};
        wrapper.content.push_back(std::move(place.Element()));
        place.Element() = std::move(wrapper);
        return " wrapped into " + place.Element().text;
    }

    std::string Unwrap(const Place& place) {
        const std::vector<Piece> content = std::move(place.Element().content);
        const auto after = place.parent->content.erase(place.Position());
        place.parent->content.insert(after, content.begin(), content.end());
        return " replaced by its content";
    }

    std::string Move(const Place& place) {
        Piece moved = std::move(place.Element());
        place.parent->content.erase(place.Position());
        std::vector<Place> targets = Places();
        if (Below(2) == 0) {
            std::erase_if(
                targets, [](const Place& target) { return !target.Element().text.ends_with("Description"); });
        }
        Piece& target = targets.empty() ? root_ : targets[Below(targets.size())].Element();
        Put(target, Below(target.content.size() + 1), std::move(moved));
        return " moved into " + target.text;
    }

    std::string Delete(const Place& place) {
        place.parent->content.erase(place.Position());
        return " deleted";
    }

    std::string Double(const Place& place) {
        Put(*place.parent, place.index, place.Element());
        return " doubled";
    }

    std::string Insert(const Place& place) {
        const char* markup = kInserts[Below(std::size(kInserts))];
        Piece& element = place.Element();
        std::size_t index = Below(element.content.size() + 1);
        if (index < element.content.size() && element.content[index].kind == Piece::Kind::Text) {
            Split(element, index++);
        }
        Put(element, index, {Piece::Kind::Markup, markup, {}, {}});
        return std::string(" given '") + markup + "'";
    }

    /// Makes a text of an element two, between any two of its characters.
    void Split(Piece& element, std::size_t index) {
        const std::string text = element.content[index].text;
        std::size_t at = Below(text.size() + 1);
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80) {
            ++at;
        }
        element.content[index].text.resize(at);
        Put(element, index + 1, {Piece::Kind::Text, text.substr(at), {}, {}});
    }

    static void Put(Piece& element, std::size_t index, Piece piece) {
        element.content.insert(element.content.begin() + static_cast<std::ptrdiff_t>(index),
                               std::move(piece));
    }

    std::string Blank(const Place& place) {
        const std::string blanks(Below(3), ' ');
        place.Element().content = {{Piece::Kind::Text, blanks, {}, {}}};
        return " left with " + std::to_string(blanks.size()) + " blanks";
    }

    std::string RenameAttribute(const Place& place) {
        constexpr const char* kAttributes[] = {"Odd", "TypeRef", "ParamDefId", "Code", "PosX"};
        auto& attributes = place.Element().attributes;
        const std::string name = kAttributes[Below(std::size(kAttributes))];
        if (attributes.empty() ||
            std::ranges::any_of(attributes, [&](const auto& attribute) { return attribute.first == name; })) {
            return " left as it is";
        }
        std::string& renamed = attributes[Below(attributes.size())].first;
        return "'s " + std::exchange(renamed, name) + " renamed to " + name;
    }

    std::string RemoveAttribute(const Place& place) {
        auto& attributes = place.Element().attributes;
        if (attributes.empty()) {
            return " left as it is";
        }
        const auto at = attributes.begin() + static_cast<std::ptrdiff_t>(Below(attributes.size()));
        const std::string name = at->first;
        attributes.erase(at);
        return "'s " + name + " removed";
    }

    Piece& root_;
    std::mt19937_64& random_;
    std::string other_;  // the name of some element
};

/// The first function of a catalog, some of the others, and what is no function.
Piece ExcerptOf(const Piece& catalog, std::mt19937_64& random) {
    Piece excerpt = {Piece::Kind::Element, catalog.text, {}, {}};
    bool isFirst = true;
    for (const Piece& child : catalog.content) {
        if (!child.Is("FBlock")) {
            excerpt.content.push_back(child);
            continue;
        }
        Piece block = {Piece::Kind::Element, child.text, {}, {}};
        bool hasFunctions = false;
        for (const Piece& piece : child.content) {
            const bool isFunction = piece.Is("Function");
            if (!isFunction || std::exchange(isFirst, false) || random() % 40 == 0) {
                block.content.push_back(piece);
                hasFunctions |= isFunction;
            }
        }
        if (hasFunctions) {
            excerpt.content.push_back(std::move(block));
        }
    }
    return excerpt;
}

/// The example as a tree.
Piece Example() {
    ZDOMErrorHandler handler;
    WholeDocumentReader reader;
    reader.Read(TARVEX_EXAMPLES "/roadster.xml", false, handler);
    const DOMNode* root = reader.Dom().getFirstChild();
    while (root->getNodeType() != DOMNode::ELEMENT_NODE) {
        root = root->getNextSibling();
    }
    return PieceOf(*root);
}

std::string XmlOf(const Piece& catalog) {
    std::string xml = kDocumentType;
    Print(catalog, xml);
    return xml;
}

TEST(WholeDocument, SaysOfMutatedCatalogsWhatTheirWordsSay) {
    const Piece example = Example();
    const TempDir dir;
    std::mt19937_64 random(20240603);
    int imported = 0;
    constexpr int kCatalogs = 220;
    for (int number = 0; number < kCatalogs && !testing::Test::HasFailure(); ++number) {
        Piece catalog = ExcerptOf(example, random);
        std::string changes = "catalog " + std::to_string(number);
        for (auto count = 1 + random() % 4; count > 0; --count) {
            changes += "; " + Mutator(catalog, random).Mutate();
        }
        SCOPED_TRACE(changes);
        const Logs logs = CheckImports(dir.Write("Cat.xml", XmlOf(catalog)));
        EXPECT_EQ(logs.import.find("Fatal error at file"), std::string::npos) << "not well-formed";
        imported += logs.tree.empty() ? 0 : 1;
    }
    if (!testing::Test::HasFailure()) {
        EXPECT_GT(imported, kCatalogs / 2) << "too many fail to say much";
    }
}

void CollectNames(const Piece& piece, std::set<std::string>& names) {
    if (piece.kind == Piece::Kind::Element) {
        names.insert(piece.text);
    }
    for (const Piece& child : piece.content) {
        CollectNames(child, names);
    }
}

void EmptyAll(Piece& piece, const std::string& name) {
    if (piece.Is(name)) {
        piece.attributes.clear();
        piece.content.clear();
    }
    for (Piece& child : piece.content) {
        EmptyAll(child, name);
    }
}

bool Has(const Piece& piece, const std::string& name) {
    return piece.Is(name) ||
           std::ranges::any_of(piece.content, [&](const Piece& child) { return Has(child, name); });
}

/// The catalog with one function only, the first with an element of that name.
Piece CatalogAround(const std::string& name, const Piece& example) {
    Piece catalog = {Piece::Kind::Element, example.text, {}, {}};
    bool isFound = false;
    for (const Piece& child : example.content) {
        Piece copy = {child.kind, child.text, {}, {}};
        for (const Piece& piece : child.content) {
            const bool isFunction = piece.Is("Function");
            if (!isFunction || (!isFound && Has(piece, name))) {
                copy.content.push_back(piece);
                isFound |= isFunction;
            }
        }
        catalog.content.push_back(std::move(copy));
    }
    return catalog;
}

// A word below an element makes it a node whether or not it is a word itself; an empty one has to be one.
TEST(WholeDocument, SaysOfEmptyElementsWhatTheirWordsSay) {
    const Piece example = Example();
    const TempDir dir;
    std::set<std::string> names;
    CollectNames(example, names);
    EXPECT_GT(names.size(), 100U);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        Piece catalog = CatalogAround(name, example);
        EmptyAll(catalog, name);
        CheckImports(dir.Write("Cat.xml", XmlOf(catalog)));
    }
}

/// A function of a class whose parameters have empty operation elements, each a different one.
std::string FunctionOf(std::string_view kind, std::string_view letters, const char* OpTypeRow::*element) {
    const std::string start = "<" + std::string(letters);
    const std::string end = "</" + std::string(letters);
    std::string params;
    for (const OpTypeRow& row : kOpTypes) {
        params += start + "Param><ParamName>" + row.*element + "</ParamName>" + start + "ParamOPType><" +
                  row.*element + "/>" + end + "ParamOPType><TVoid TypeRef=\"type_void\"/>" + end + "Param>";
    }
    return "<Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName><FunctionClass><" +
           std::string(kind) + ">" + start + "nclassified>" + params + end + "nclassified></" +
           std::string(kind) + "></FunctionClass></Function>";
}

TEST(WholeDocument, SaysOfOperationsWithoutPositionsWhatTheirWordsSay) {
    const TempDir dir;
    for (const std::string& function : {FunctionOf("Property", "PU", &OpTypeRow::propertyElement),
                                        FunctionOf("Method", "MU", &OpTypeRow::methodElement)}) {
        EXPECT_NE(CheckImports(dir.Write("Cat.xml", CatalogOf(BlockOf(function)))).tree, "");
    }
}

}  // namespace
}  // namespace tarvex::test::whole_document_test
