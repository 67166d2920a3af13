#pragma once

#include <string>
#include <string_view>

#include "catalog/element_import.h"
#include "support/catalog_import.h"

namespace tarvex::test {

/// Type elements that import without a message.
inline constexpr const char* kByte =
    R"(<TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType><Exponent>0</Exponent>
       <RangeMin>0</RangeMin><RangeMax>255</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/></TNumber>)";
inline constexpr const char* kWord =
    R"(<TNumber><BasisDataType><TUWord TypeRef="type_unsigned_word"/></BasisDataType><Exponent>0</Exponent>
       <RangeMin>0</RangeMin><RangeMax>65535</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/></TNumber>)";
inline constexpr const char* kText = R"(<TString TypeRef="type_string" MaxSize="8"/>)";
inline constexpr const char* kEnum =
    R"(<TEnum TypeRef="type_enum" TEnumMax="1"><TEnumValue Code="0">Off</TEnumValue></TEnum>)";
inline constexpr const char* kBits = R"(<TBitField TypeRef="type_bitfield" Length="8"/>)";
inline constexpr const char* kBool = R"(<TBool TypeRef="type_bool"/>)";
inline constexpr const char* kVoid = R"(<TVoid TypeRef="type_void"/>)";

/// A "TArray" of at most three elements of that name and type.
inline std::string Array(std::string_view elementName, std::string_view type) {
    std::string xml = R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>)";
    xml.append(elementName).append("</TArrayName><TArrayElementType>").append(type);
    return xml + "</TArrayElementType></TArray>";
}

/// A "TRecordField" of that position, name and type.
inline std::string Field(int pos, std::string_view name, std::string_view type) {
    std::string xml = "<TRecordField FieldIdx=\"" + std::to_string(pos) + "\"><TRecordFieldName>";
    xml.append(name).append("</TRecordFieldName><TRecordFieldType>").append(type);
    return xml + "</TRecordFieldType></TRecordField>";
}

/// A "TRecord" that declares so many fields.
inline std::string Record(unsigned count, std::string_view fields) {
    std::string xml = "<TRecord TypeRef=\"type_record\" NElements=\"" + std::to_string(count) + "\">";
    return xml.append(fields) + "</TRecord>";
}

/// The operation element that places a parameter at a position of "Status".
inline std::string At(int pos) {
    return "<PReportStatus><ParamPos>" + std::to_string(pos) + "</ParamPos></PReportStatus>";
}

/// Imports a parameter of this kind and name from a type element, alone and without a second pass.
template <class T>
struct CompositeImport {
    CompositeImport(std::string_view name, std::string_view typeElement) {
        std::string xml = "<PUParam><ParamName>";
        xml.append(name).append("</ParamName><PUParamType>").append(typeElement);
        ok = import.Import(param, xml + "</PUParamType></PUParam>");
        messages = import.TakeMessages();
    }

    ElementImport import;
    T param;
    bool ok = false;
    std::string messages;
};

/// The parameter at a path of names below the operation "Status" of the imported property.
template <class T, class... Names>
T* InStatus(const Imported& imported, const Names&... names) {
    return NodeAt<T>(imported.catalog, "Amp", "Volume", "Status", names...);
}

}  // namespace tarvex::test
