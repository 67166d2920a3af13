#include "export/signal_layout.h"

#include <gtest/gtest.h>

#include "import/text/names.h"

namespace tarvex::test {
namespace {

/// "type_unsigned_byte" for "TUByte".
std::string TypeRefOf(std::string_view basis) {
    std::string ref = basis.at(1) == 'U' ? "type_unsigned_" : "type_signed_";
    ref += FoldCase(basis.at(2));
    return ref.append(basis.substr(3));
}

std::string Element(const std::string& tag, const std::string& content) {
    return content.empty() ? "" : "<" + tag + ">" + content + "</" + tag + ">";
}

std::string Bits(const std::vector<BitOf>& bits) {
    std::string xml;
    for (const BitOf& bit : bits) {
        xml += "<TBoolField BitPos=\"" + std::to_string(bit.pos) + "\">" + Element("ParamName", bit.name) +
               Element("BitTrueDesc", bit.trueDesc) + Element("BitFalseDesc", bit.falseDesc) +
               "</TBoolField>";
    }
    return xml;
}

}  // namespace

std::string Number(std::string_view basis) {
    std::string xml = "<TNumber><BasisDataType><";
    xml.append(basis).append(" TypeRef=\"").append(TypeRefOf(basis));
    return xml + "\"/></BasisDataType><Exponent>0</Exponent><Unit UnitRef=\"unit_none\"/></TNumber>";
}

std::string String() {
    return "<TString TypeRef=\"type_string\" MaxSize=\"32\"/>";
}

std::string Array() {
    return "<TArray TypeRef=\"type_array\" NMax=\"4\"><TArrayName>Item</TArrayName><TArrayElementType>" +
           UByte() + "</TArrayElementType></TArray>";
}

std::string Void() {
    return "<TVoid TypeRef=\"type_void\"/>";
}

std::string Enumeration(unsigned max, const std::vector<CodeName>& values) {
    std::string xml = "<TEnum TypeRef=\"type_enum\" TEnumMax=\"" + std::to_string(max) + "\">";
    for (const CodeName& value : values) {
        xml += "<TEnumValue Code=\"" + value.code + "\">" + value.name + "</TEnumValue>";
    }
    return xml + "</TEnum>";
}

std::string BitField(unsigned length, const std::vector<BitOf>& bits) {
    return "<TBitField TypeRef=\"type_bitfield\" Length=\"" + std::to_string(length) + "\">" + Bits(bits) +
           "</TBitField>";
}

std::string Boolean(const std::vector<BitOf>& bits) {
    return "<TBool TypeRef=\"type_bool\">" + Bits(bits) + "</TBool>";
}

std::string Record(const NamedTypes& fields) {
    std::string xml = "<TRecord TypeRef=\"type_record\" NElements=\"" + std::to_string(fields.size()) + "\">";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        xml += "<TRecordField FieldIdx=\"" + std::to_string(i + 1) + "\">" +
               Element("TRecordFieldName", fields[i].name) + fields[i].type + "</TRecordField>";
    }
    return xml + "</TRecord>";
}

std::string PropertyOf(std::string_view fktID, std::string_view name, const NamedTypes& params,
                       std::string_view operation) {
    std::string xml = "<Function><FunctionID>";
    xml.append(fktID).append("</FunctionID><FunctionName>").append(name);
    xml += "</FunctionName><FunctionClass><Property><PUnclassified>";
    for (std::size_t i = 0; i < params.size(); ++i) {
        const std::string position = Element("ParamPos", std::to_string(i + 1));
        xml += Param(params[i].name, params[i].type, Element(std::string(operation), position));
    }
    return xml + "</PUnclassified></Property></FunctionClass></Function>";
}

nlohmann::json SignalsOf(const std::vector<SignalRow>& rows) {
    nlohmann::json signals = nlohmann::json::array();
    for (const SignalRow& row : rows) {
        const bool isSwitch = row.coding == Switch || row.coding == SignedSwitch;
        nlohmann::json signal{{"name", row.name},
                              {"start_bit", row.startBit},
                              {"length", row.length},
                              {"byte_order", isSwitch ? "little_endian" : "big_endian"},
                              {"signed", row.coding == Signed || row.coding == SignedSwitch}};
        for (const auto& [value, text] : row.values) {
            signal["values"].push_back(nlohmann::json::array({value, text}));
        }
        if (isSwitch) {
            signal["multiplexor"] = true;
        }
        if (row.multiplexer != kAlways) {
            signal["multiplexer_value"] = row.multiplexer;
        }
        signals.push_back(std::move(signal));
    }
    return signals;
}

void ExpectLayout(const LayoutCase& row, const std::string& aliasNames) {
    SCOPED_TRACE(row.what);
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", row.params)));
    conversion.flags.writeSignals = true;
    conversion.aliasNames = aliasNames;
    const nlohmann::json message = MessageNamed(conversion.Database(), "Amp_Volume_Status");
    EXPECT_EQ(message["length"], row.length);
    EXPECT_EQ(message["signals"], SignalsOf(row.signals));
}

std::vector<std::vector<std::string>> SignalNamesOf(std::string_view blocks, bool unique) {
    Conversion conversion(blocks);
    conversion.flags.writeSignals = true;
    conversion.flags.uniqueSignalNames = unique;
    std::vector<std::vector<std::string>> names;
    const nlohmann::json database = conversion.Database();
    for (const nlohmann::json& message : database["messages"]) {
        names.push_back(NamesIn(message["signals"]));
    }
    return names;
}

}  // namespace tarvex::test
