#include "params/catalog_vocabulary.h"

#include "catalog/op_types.h"
#include "params/basis_types.h"

namespace tarvex {
namespace {

using enum ElementText;

void AddBlocksAndFunctions(Vocabulary& words) {
    words.Add("FunctionCatalog");
    for (const std::string_view attribute : kSchemaAttributes) {
        words.Add("FunctionCatalog", Unread, {attribute});
    }
    words.Add("FBlock");
    words.Add("FBlockID", Read);
    words.Add("FBlockName", Read);
    words.Add("Function", Unread, {"FktDefRef", "FktDefId"});
    words.Add("FunctionID", Read);
    words.Add("FunctionName", Read);
    words.Add("FunctionClass", Unread, {"ClassRef"});
    words.Add("Property");
    words.Add("Method");
    for (const FunctionClassRow& row : kFunctionClasses) {
        words.Add(row.element);
        words.Add(row.parameterElement);
    }
    for (const FunctionClassRow& row : kNewerFunctionClasses) {
        words.Add(row.element);
        words.Add(row.parameterElement);
    }
    words.Add("ERParam", Unread, {"ParamDefId", "ParamDefRef"});
}

void AddDefinitions(Vocabulary& words) {
    words.Add("Definition");
    words.Add("TypeDef", Unread, {"TypeID"});
    words.Add("TDefName", Read);
    words.Add("TDefSize", Read);
    words.Add("UnitDef", Unread, {"UnitID"});
    words.Add("UnitDefName", Read);
    words.Add("UnitDefCode", Read);
}

void AddOperations(Vocabulary& words) {
    for (const char* element : kOpTypeElements) {
        words.Add(element);
    }
    for (const char* element : kNewerOpTypeElements) {
        words.Add(element);
    }
    for (const OpTypeRow& row : kOpTypes) {
        for (const char* element : {row.propertyElement, row.methodElement}) {
            if (element != std::string_view(kNotYet)) {
                words.Add(element);
            }
        }
    }
    words.Add("ParamPos", Read);
}

void AddScalarTypes(Vocabulary& words) {
    words.Add("ParamName", Read, {"ParamIdx"});
    words.Add("TNumber");
    words.Add("BasisDataType");
    for (const char* element : kBasisTypes) {
        words.Add(element, Unread, {"TypeRef"});
    }
    words.Add("Exponent", Read);
    words.Add("RangeMin", Read);
    words.Add("RangeMax", Read);
    words.Add("Step", Read);
    words.Add("Unit", Unread, {"UnitRef"});
    words.Add("TEnum", Unread, {"TypeRef", "TEnumMax"});
    words.Add("TEnumValue", Read, {"Code", "SymbolicName"});
    words.Add("TString", Unread, {"TypeRef", "MaxSize"});
    words.Add("TBool", Unread, {"TypeRef"});
    words.Add("TBitField", Unread, {"TypeRef", "Length"});
    words.Add("TBoolField", Unread, {"BitPos"});
    words.Add("BitTrueDesc", Read);
    words.Add("BitFalseDesc", Read);
    words.Add("TVoid", Unread, {"TypeRef"});
}

void AddContainerTypes(Vocabulary& words) {
    words.Add("TArray", Unread, {"TypeRef", "NMax"});
    words.Add("TArrayName", Read);
    words.Add("TRecord", Unread, {"TypeRef", "NElements"});
    words.Add("TRecordField", Unread, {"FieldIdx"});
    words.Add("TRecordFieldName", Read);
    words.Add("TStream", Unread, {"TypeRef", "Length"});
    words.Add("StreamCase");
    words.Add("PosDescription", Unread, {"PosX", "PosY"});
    words.Add("PosX", Unread, {"PosDescription"});
    words.Add("PosY", Unread, {"PosDescription"});
    words.Add("StreamParam");
    words.Add("TShortStream", Unread, {"TypeRef", "MaxLength"});
    words.Add("TCStream", Unread, {"TypeRef", "MaxLength", "MediaType"});
    words.Add("StreamSignal");
    words.Add("SignalName", Read, {"SignalIdx"});
    words.Add("SignalBitLength", Read);
}

Vocabulary MakeVocabulary() {
    Vocabulary words;
    AddBlocksAndFunctions(words);
    AddDefinitions(words);
    AddOperations(words);
    AddScalarTypes(words);
    AddContainerTypes(words);
    return words;
}

}  // namespace

Vocabulary FaultVocabulary() {
    Vocabulary words = CatalogVocabulary();
    words.KeepOthers();
    return words;
}

Vocabulary DescriptionVocabulary() {
    Vocabulary words = FaultVocabulary();
    for (const char* element :
         {"CatalogVersion", "FBlockVersion", "FunctionVersion", "Release", "Date", "FBlockKind",
          "FBlockDescription", "FunctionDescription", "FunctionClassDesc", "ParamDescription", "TRecordName",
          "TRecordDesc", "TRecordFieldDesc", "TArrayDesc", "SignalDescription", "TDefDesc"}) {
        words.Add(element, Read);
    }
    words.Add("FunctionID", Read, {"FunctionSection"});
    return words;
}

const Vocabulary& CatalogVocabulary() {
    static const Vocabulary words = MakeVocabulary();
    return words;
}

}  // namespace tarvex
