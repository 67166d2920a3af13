#include "disasm/decoding.h"

#include <gtest/gtest.h>

#include "disasm/array_item.h"

namespace tarvex::test {
namespace {

std::string At(std::size_t pos) {
    return "<PReportStatus><ParamPos>" + std::to_string(pos) + "</ParamPos></PReportStatus>";
}

std::string StatusOf(const std::vector<ParamOf>& params) {
    std::string xml;
    for (const ParamOf& param : params) {
        const std::size_t pos = static_cast<std::size_t>(&param - params.data()) + 1;
        xml += Param(param.name, param.type, At(pos));
    }
    return CatalogOfParams(xml);
}

void ShowItems(const ZMostParameterListBaseInfo& items, const ZMostParameter* container, std::string& out) {
    std::size_t index = 0;
    for (const auto& item : items.Items()) {
        if (item != items.Items().front()) {
            out += ' ';
        }
        if (const unsigned number = container == nullptr ? 0 : container->EntryNumber(index++); number != 0) {
            out += "[" + std::to_string(number) + "]";
        }
        out += item->GetLabel() + "@" + std::to_string(item->Offset()) + "+" +
               std::to_string(item->Bytes().size()) + "=" + item->GetText();
        if (item->Members() != nullptr) {
            out += '<';
            ShowItems(*item->Members(), item.get(), out);
            out += '>';
        }
    }
}

}  // namespace

const std::string kUByte = Number("type_unsigned_byte");
const std::string kSByte = Number("type_signed_byte");
const std::string kUWord = Number("type_unsigned_word");
const std::string kULong = Number("type_unsigned_long");
const std::string kVoid = R"(<TVoid TypeRef="type_void"/>)";
const std::string kSwitch =
    R"(<TEnum TypeRef="type_enum" TEnumMax="2"><TEnumValue Code="0">Off</TEnumValue>)"
    R"(<TEnumValue Code="1">On</TEnumValue><TEnumValue Code="2">Auto</TEnumValue></TEnum>)";

std::string Number(std::string_view type, std::string_view exponent, std::string_view unit) {
    std::string xml = "<TNumber><BasisDataType><TULong TypeRef=\"";
    xml.append(type).append("\"/></BasisDataType><Exponent>").append(exponent).append("</Exponent>");
    xml.append("<RangeMin>0</RangeMin><RangeMax>0</RangeMax><Step>1</Step><Unit UnitRef=\"").append(unit);
    return xml + "\"/></TNumber>";
}

std::string Text(std::string_view maxSize) {
    return "<TString TypeRef=\"type_string\" MaxSize=\"" + std::string(maxSize) + "\"/>";
}

std::string Bits(int length, std::string_view bits) {
    std::string xml = "<TBitField TypeRef=\"type_bitfield\" Length=\"" + std::to_string(length) + "\">";
    return xml.append(bits) + "</TBitField>";
}

std::string Array(std::string_view nMax, std::string_view elementName, std::string_view type) {
    std::string xml = "<TArray TypeRef=\"type_array\" NMax=\"";
    xml.append(nMax).append("\"><TArrayName>").append(elementName);
    return xml.append("</TArrayName><TArrayElementType>").append(type) + "</TArrayElementType></TArray>";
}

std::string Record(const std::vector<FieldOf>& fields) {
    std::string xml = "<TRecord TypeRef=\"type_record\" NElements=\"" + std::to_string(fields.size()) + "\">";
    for (const FieldOf& field : fields) {
        const auto pos = &field - fields.data() + 1;
        xml += "<TRecordField FieldIdx=\"" + std::to_string(pos) + "\"><TRecordFieldName>" + field.name +
               "</TRecordFieldName><TRecordFieldType>" + field.type + "</TRecordFieldType></TRecordField>";
    }
    return xml + "</TRecord>";
}

std::string Stream(std::string_view cases) {
    std::string xml = R"(<TStream TypeRef="type_stream" Length="255">)";
    return xml.append(cases) + "</TStream>";
}

std::string Case(std::string_view posX, std::string_view posY, const std::vector<StreamParamOf>& params) {
    std::string xml = "<StreamCase><PosDescription PosX=\"";
    xml.append(posX).append("\" PosY=\"").append(posY).append("\"/>");
    for (const StreamParamOf& param : params) {
        xml += "<StreamParam><ParamName ParamIdx=\"" + param.idx + "\">" + param.name +
               "</ParamName><ParamType>" + param.type + "</ParamType></StreamParam>";
    }
    return xml + "</StreamCase>";
}

std::vector<std::uint8_t> BytesOf(std::string_view hex) {
    std::vector<std::uint8_t> bytes;
    std::string digits;
    for (const char c : hex) {
        if (c != ' ') {
            digits += c;
        }
        if (digits.size() == 2) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits, nullptr, 16)));
            digits.clear();
        }
    }
    EXPECT_EQ(digits, "") << "half a byte in the test's own data: " << hex;
    return bytes;
}

Decoding::Decoding(const std::vector<ParamOf>& params, bool readNewer)
    : Decoding(StatusOf(params), readNewer) {}

Decoding::Decoding(const std::string& catalogXml, bool readNewer)
    : imported_(ImportText(catalogXml, false, readNewer)) {
    EXPECT_TRUE(imported_->ok) << imported_->log;
}

std::unique_ptr<DecodedMessage> Decoding::Decode(std::string_view hex) const {
    return Decode({.fBlockID = 0x22, .instID = 0x01, .fktID = 0x400, .opType = 0xC, .data = BytesOf(hex)});
}

std::unique_ptr<DecodedMessage> Decoding::Decode(const CapturedMessage& message) const {
    auto decoded = std::make_unique<DecodedMessage>();
    if (imported_->ok) {
        DecodeMessage(*imported_->catalog, message, *decoded);
    }
    return decoded;
}

std::string Decoding::Shown(std::string_view hex) const {
    return test::Shown(*Decode(hex));
}

std::string Shown(const DecodedMessage& decoded) {
    std::string out;
    ShowItems(decoded.items, nullptr, out);
    for (const std::string& fault : decoded.faults) {
        out += (out.empty() ? "!" : " !") + fault;
    }
    return out;
}

std::size_t CountItems(const ZMostParameterListBaseInfo& items) {
    std::size_t count = 0;
    for (const auto& item : items.Items()) {
        count += 1 + (item->Members() == nullptr ? 0 : CountItems(*item->Members()));
    }
    return count;
}

}  // namespace tarvex::test
