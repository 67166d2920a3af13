#include "import/catalog_dtd.h"

namespace tarvex::test {

const char* const kCatalogDtd = R"(
<!ELEMENT FunctionCatalog (FBlock+, Definition)>
<!ELEMENT FBlock (FBlockID, FBlockName, Function*)>
<!ELEMENT FBlockID (#PCDATA)>
<!ELEMENT FBlockName (#PCDATA)>
<!ELEMENT Function (FunctionID, FunctionName, FunctionClass)>
<!ELEMENT FunctionID (#PCDATA)>
<!ELEMENT FunctionName (#PCDATA)>
<!ELEMENT FunctionClass (Property)>
<!ATTLIST FunctionClass ClassRef CDATA #REQUIRED>
<!ELEMENT Property (PUnclassified)>
<!ELEMENT PUnclassified (PUParam*)>
<!ELEMENT PUParam (ParamName, PUParamOPType, PUParamType)>
<!ELEMENT ParamName (#PCDATA)>
<!ELEMENT PUParamOPType (PUCommand)>
<!ELEMENT PUCommand (PReportStatus)>
<!ELEMENT PReportStatus (ParamPos)>
<!ELEMENT ParamPos (#PCDATA)>
<!ELEMENT PUParamType (TString)>
<!ELEMENT TString EMPTY>
<!ATTLIST TString TypeRef CDATA "type_string" MaxSize CDATA "10">
<!ELEMENT Definition (TypeDef*, UnitDef*)>
<!ELEMENT TypeDef (TDefName, TDefSize)>
<!ATTLIST TypeDef TypeID CDATA #REQUIRED>
<!ELEMENT TDefName (#PCDATA)>
<!ELEMENT TDefSize (#PCDATA)>
<!ELEMENT UnitDef (UnitDefName, UnitDefCode)>
<!ATTLIST UnitDef UnitID CDATA #REQUIRED>
<!ELEMENT UnitDefName (#PCDATA)>
<!ELEMENT UnitDefCode (#PCDATA)>
)";

std::string WithDoctype(std::string catalog, std::string_view declaration, std::string_view xmlDeclaration) {
    const std::size_t root = catalog.find("<FunctionCatalog");
    std::string xml(xmlDeclaration);
    xml.append("\n<!DOCTYPE FunctionCatalog ").append(declaration).append(">\n");
    return xml.append(catalog, root, std::string::npos);
}

}  // namespace tarvex::test
