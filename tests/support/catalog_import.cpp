#include "support/catalog_import.h"

namespace tarvex::test {
namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// The importer's own messages out of a whole import log.
std::string MessagesIn(const std::string& log) {
    constexpr std::string_view kStart = "Importer messages (Version 1.0.11):\n";
    const std::size_t start = log.find(kStart);
    const std::size_t end = log.rfind("\nfatal errors: ");
    if (start == std::string::npos || end == std::string::npos) {
        return "(no importer messages)";
    }
    return log.substr(start + kStart.size(), end - start - kStart.size());
}

}  // namespace

const char* const kDefinitions = R"(<Definition>
  <TypeDef TypeID="type_unsigned_byte"><TDefName>Unsigned Byte</TDefName><TDefSize>1</TDefSize></TypeDef>
  <TypeDef TypeID="type_signed_byte"><TDefName>Signed Byte</TDefName><TDefSize>1</TDefSize></TypeDef>
  <TypeDef TypeID="type_unsigned_word"><TDefName>Unsigned Word</TDefName><TDefSize>2</TDefSize></TypeDef>
  <TypeDef TypeID="type_signed_word"><TDefName>Signed Word</TDefName><TDefSize>2</TDefSize></TypeDef>
  <TypeDef TypeID="type_unsigned_long"><TDefName>Unsigned Long</TDefName><TDefSize>4</TDefSize></TypeDef>
  <TypeDef TypeID="type_signed_long"><TDefName>Signed Long</TDefName><TDefSize>4</TDefSize></TypeDef>
  <TypeDef TypeID="type_enum"><TDefName>Enum</TDefName><TDefSize>1</TDefSize></TypeDef>
  <TypeDef TypeID="type_string"><TDefName>String</TDefName><TDefSize>255</TDefSize></TypeDef>
  <TypeDef TypeID="type_bool"><TDefName>Boolean</TDefName><TDefSize>1</TDefSize></TypeDef>
  <TypeDef TypeID="type_bitfield"><TDefName>BitField</TDefName><TDefSize>1</TDefSize></TypeDef>
  <TypeDef TypeID="type_void"><TDefName>Void</TDefName><TDefSize>0</TDefSize></TypeDef>
  <TypeDef TypeID="type_record"><TDefName>Record</TDefName><TDefSize>255</TDefSize></TypeDef>
  <TypeDef TypeID="type_array"><TDefName>Array</TDefName><TDefSize>255</TDefSize></TypeDef>
  <TypeDef TypeID="type_stream"><TDefName>Stream</TDefName><TDefSize>255</TDefSize></TypeDef>
  <UnitDef UnitID="unit_none"><UnitDefName>none</UnitDefName><UnitDefCode>0x00</UnitDefCode></UnitDef>
  <UnitDef UnitID="unit_km_h"><UnitDefName>km/h</UnitDefName><UnitDefCode>0x50</UnitDefCode></UnitDef>
</Definition>)";

std::string CatalogOf(std::string_view blocks, std::string_view definitions) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<FunctionCatalog>";
    xml.append(blocks).append(definitions).append("</FunctionCatalog>");
    return xml;
}

std::string BlockOf(std::string_view functions) {
    std::string xml = "<FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>";
    xml.append(functions).append("</FBlock>");
    return xml;
}

std::string CatalogOfParams(std::string_view params) {
    std::string xml =
        "<Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName>"
        "<FunctionClass ClassRef=\"class_unclassified_property\"><Property><PUnclassified>";
    xml.append(params).append("</PUnclassified></Property></FunctionClass></Function>");
    return CatalogOf(BlockOf(xml));
}

std::string Param(std::string_view name, std::string_view type, std::string_view operations) {
    std::string xml = "<PUParam><ParamName>";
    xml.append(name).append("</ParamName><PUParamOPType><PUCommand>").append(operations);
    xml.append("</PUCommand></PUParamOPType><PUParamType>").append(type).append("</PUParamType></PUParam>");
    return xml;
}

std::unique_ptr<Imported> ImportText(std::string_view xml, bool validate, bool readNewer) {
    auto result = std::make_unique<Imported>();
    const std::string path = result->dir.Write("Cat.xml", xml);
    const std::string logPath = result->dir.File("Cat.log");
    const std::string treePath = result->dir.File("Cat.tree");
    result->manager = std::make_unique<ZMostFCatManager>();
    result->manager->Validate = validate;
    result->manager->ReadNewer = readNewer;
    result->manager->MessageSink = [&console = result->console](const std::string& text,
                                                                ImportEvent /*event*/) {
        console.push_back(text);
    };
    std::string name;
    result->ok = result->manager->Import(name, path, 1, logPath);
    result->catalog = result->manager->FindCatalog(name);
    result->log = ReadFile(logPath);
    result->messages = MessagesIn(result->log);
    if (result->ok) {
        result->manager->WriteTreeLog(treePath);
        result->tree = ReadFile(treePath);
        ReplaceAll(result->tree, result->dir.Path(), "@DIR@");
    }
    return result;
}

}  // namespace tarvex::test
