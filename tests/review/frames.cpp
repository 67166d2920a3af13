#include "review/frames.h"

#include "support/catalog_import.h"

namespace tarvex::test {
namespace {

using review::Frame;

constexpr std::string_view kMute = R"(<Function FktDefId="fkt_mute">
  <FunctionID>0x400</FunctionID><FunctionName>Mute</FunctionName>
  <FunctionClass ClassRef="class_unclassified_property"><Property><PUnclassified><PUParam>
    <ParamName/><PUParamOPType><PCmdGet/></PUParamOPType><PUParamType><TVoid TypeRef="type_void"/></PUParamType>
  </PUParam></PUnclassified></Property></FunctionClass>
</Function>)";

/// A parameter with that position in "Status".
std::string StatusParam(std::string_view name, std::string_view pos, std::string_view type) {
    std::string operation = "<PReportStatus><ParamPos>";
    operation.append(pos).append("</ParamPos></PReportStatus>");
    return Param(name, type, operation);
}

/// A property "Volume" whose "Status" begins with the parameters "Kind" and "Mode".
std::string Volume(std::string_view params) {
    constexpr std::string_view kEnum = R"(<TEnum TypeRef="type_enum" TEnumMax="10"/>)";
    std::string xml = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName>
        <FunctionClass ClassRef="class_unclassified_property"><Property><PUnclassified>)";
    xml += Param("", R"(<TVoid TypeRef="type_void"/>)", "<PCmdGet/>");
    xml += StatusParam("Kind", "1", kEnum) + StatusParam("Mode", "2", kEnum);
    return xml.append(params).append("</PUnclassified></Property></FunctionClass></Function>");
}

std::string Block(std::string_view functions) {
    return BlockOf(std::string(kMute).append(functions));
}

std::string BlockWithParam(std::string_view type) {
    return Block(Volume(StatusParam("Level", "3", type)));
}

/// So many that the last has a number beyond those of functions. Only that one can be referred to.
std::string ErrorFunctions() {
    constexpr int kFunctionIDs = 4096;
    std::string xml;
    for (int i = 0; i < kFunctionIDs; ++i) {
        xml += "<ERParam/>";
    }
    return xml + R"(<ERParam ParamDefId="Last"><ParamName>ErrorCode</ParamName>
        <ERParamOPType><PReportError/></ERParamOPType>
        <ERParamType><TEnum TypeRef="type_enum" TEnumMax="255"/></ERParamType></ERParam>)";
}

std::string DefinitionsWith(std::string_view more) {
    std::string definitions = kDefinitions;
    return definitions.insert(definitions.rfind("</Definition>"), more);
}

}  // namespace

std::string InFrame(Frame frame, std::string_view excerpt) {
    switch (frame) {
        case Frame::Document:
            return std::string(excerpt);
        case Frame::Definition:
            return CatalogOf(Block(""), DefinitionsWith(excerpt));
        case Frame::Block:
            return CatalogOf(Block("").append(excerpt));
        case Frame::Function:
            return CatalogOf(Block(excerpt));
        case Frame::ManyErrors:
            return CatalogOf(ErrorFunctions() + Block(excerpt));
        case Frame::Parameter:
            return CatalogOf(Block(Volume(excerpt)));
        case Frame::Type:
            return CatalogOf(BlockWithParam(excerpt));
        case Frame::StreamCase:
            return CatalogOf(BlockWithParam(R"(<TStream TypeRef="type_stream" Length="8">)" +
                                            std::string(excerpt) + "</TStream>"));
    }
    return {};
}

}  // namespace tarvex::test
