#include "catalog/element_import.h"

#include <gtest/gtest.h>

#include "catalog/op_types.h"
#include "import/log/tree_log.h"
#include "import/xml/dom_error_handler.h"
#include "params/catalog_vocabulary.h"
#include "support/catalog_import.h"

namespace tarvex::test {

namespace {

/// What catalogs are read for, and what a PlannedFactory looks at.
Vocabulary PlannedVocabulary() {
    Vocabulary words = CatalogVocabulary();
    for (const FunctionClassRow& row : kFunctionClasses) {
        words.Add(row.parameterElement, ElementText::Unread, {"Fails"});
    }
    words.Add("ERParam", ElementText::Unread, {"Fails"});
    return words;
}

}  // namespace

ParsedElement::ParsedElement(std::string_view xml) : reader_(MakeXercesReader(PlannedVocabulary())) {
    ZDOMErrorHandler handler;
    reader_->StartPlatform();
    const auto* document = reader_->Read(dir_.Write("element.xml", xml), false, handler);
    EXPECT_EQ(handler.Messages(), "") << xml;
    root_ = FirstChildElement(document);
    EXPECT_NE(root_, nullptr) << xml;
}

ParsedElement::~ParsedElement() {
    reader_->Release();
}

ElementImport::ElementImport() : ElementImport(catalogFactory_) {}

ElementImport::ElementImport(const ParamFactory& factory)
    : context_(std::make_unique<ImportContext>(ImportContext{log_, factory, run_})) {
    EXPECT_TRUE(log_.OpenLog(dir_.File("element.log")));
    const ParsedElement definition(kDefinitions);
    EXPECT_TRUE(definitions_.Import(*definition, *context_));
    context_->definitions = &definitions_;
}

std::string ElementImport::TakeMessages() {
    const std::string path = dir_.File("element.log");
    log_.CloseLog();
    std::string messages = ReadFile(path);
    EXPECT_TRUE(log_.OpenLog(path));
    return messages;
}

bool ElementImport::Import(ZMTNode& node, std::string_view xml) {
    const ParsedElement element(xml);
    return node.Import(*element, *context_);
}

std::string VoidFunction(std::string_view id, std::string_view name, std::string_view attributes) {
    std::string xml = "<Function ";
    xml.append(attributes).append("><FunctionID>").append(id).append("</FunctionID><FunctionName>");
    xml.append(name).append("</FunctionName>");
    return xml + R"(<FunctionClass ClassRef="class_unclassified_property"><Property><PUnclassified><PUParam>
        <ParamName ParamIdx="#NULL#"/>
        <PUParamOPType><PUCommand><PCmdGet OPTypeRef="PCmdGet"/></PUCommand></PUParamOPType>
        <PUParamType><TVoid TypeRef="type_void"/></PUParamType>
        </PUParam></PUnclassified></Property></FunctionClass></Function>)";
}

FactoryImport::FactoryImport(const ParamFactory& factory, std::string_view catalogXml) : import(factory) {
    catalog.SetName("Cat");
    ok = import.Import(catalog, catalogXml);
    messages = import.TakeMessages();
}

std::string DumpOf(const ZMTNode& node) {
    const TempDir dir;
    const std::string path = dir.File("node.tree");
    ZMostTreeLog log;
    EXPECT_TRUE(log.OpenTreeLog(path));
    EXPECT_TRUE(node.Dump(log));
    log.CloseTreeLog();
    return ReadFile(path);
}

}  // namespace tarvex::test
