#include "review/param_words.h"

#include <limits>
#include <memory>

#include <gtest/gtest.h>

#include "params/array.h"
#include "params/bit_field.h"
#include "params/enumeration.h"
#include "params/stream.h"
#include "review/catalog_reading.h"
#include "support/catalog_import.h"
#include "support/temp_dir.h"

namespace tarvex::test::param_words_test {
namespace {

using namespace review;

std::string Number(const std::string& type, const std::string& rest) {
    return "<TNumber><BasisDataType><TUByte TypeRef=\"" + type + "\"/></BasisDataType>" + rest + "</TNumber>";
}

const std::string kSpeed =
    Number("type_signed_word",
           "<Exponent>-1</Exponent><RangeMin>-12</RangeMin><RangeMax>12.5</RangeMax><Step>0.5</Step>"
           "<Unit UnitRef=\"unit_km_h\"/>");
const std::string kPlain =
    Number("type_unsigned_byte", "<Exponent>0</Exponent><Unit UnitRef=\"unit_none\"/>");
const std::string kEnum =
    "<TEnum TypeRef=\"type_enum\" TEnumMax=\"300\"><TEnumValue Code=\"2\">A</TEnumValue>"
    "<TEnumValue Code=\"0x10..0x1F\">B</TEnumValue><TEnumValue Code=\"&gt;0x30\">C</TEnumValue></TEnum>";
const std::string kBits =
    "<TBitField TypeRef=\"type_bitfield\" Length=\"10\"><TBoolField BitPos=\"1\"><BitTrueDesc>on"
    "</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField></TBitField>";

std::string Record(const std::string& second) {
    return "<TRecord TypeRef=\"type_record\" NElements=\"2\">"
           "<TRecordField FieldIdx=\"1\"><TRecordFieldName>A</TRecordFieldName>" +
           kSpeed + "</TRecordField><TRecordField FieldIdx=\"2\"><TRecordFieldName>B</TRecordFieldName>" +
           second + "</TRecordField></TRecord>";
}

std::string Array(const std::string& nMax) {
    return "<TArray TypeRef=\"type_array\" NMax=\"" + nMax + "\"><TArrayName>E</TArrayName>" + kSpeed +
           "</TArray>";
}

std::string String(const std::string& maxSize) {
    return "<TString TypeRef=\"type_string\" MaxSize=\"" + maxSize + "\"/>";
}

std::string Stream(const std::string& length, const std::string& cases = "") {
    return "<TStream TypeRef=\"type_stream\" Length=\"" + length + "\">" + cases + "</TStream>";
}

const std::string kSignals =
    "<StreamCase><PosDescription PosX=\"Slot\" PosY=\"1..3\"/><StreamSignal><SignalName SignalIdx=\"1\">S"
    "</SignalName><SignalBitLength>5</SignalBitLength></StreamSignal></StreamCase>"
    "<StreamCase><PosDescription PosX=\"#NULL#\" PosY=\"&gt;4\"/></StreamCase>"
    "<StreamCase><PosDescription PosX=\"#NULL#\" PosY=\"0\"/></StreamCase>";

/// A catalog with one parameter, and this parameter.
class ParamWords : public testing::Test {
  protected:
    const ZMTParam& Import(const std::string& type) {
        reading_ = std::make_unique<CatalogReading>(dir_.Write("c.xml", CatalogOfParams(Param("P", type))),
                                                    ReadingOptions{});
        return *reading_->Catalog()->GetAt(0x22)->GetAt(0x400)->GetAt(12)->GetAt(0);
    }
    template <class T>
    const T& ImportAs(const std::string& type) {
        return dynamic_cast<const T&>(Import(type));
    }

  private:
    TempDir dir_;
    std::unique_ptr<CatalogReading> reading_;
};

TEST_F(ParamWords, TypeAndLengthOfEachKind) {
    const struct {
        std::string type;
        const char* text;
        const char* length;
        const char* limit;
        std::optional<std::uint64_t> bytes;
    } rows[] = {
        {kSpeed, "signed number", "2 bytes", "", 2},
        {kPlain, "unsigned number", "1 byte", "", 1},
        {kEnum, "enumeration", "2 bytes", "", 2},
        {kBits, "bit field", "2 bytes, 10 bits used", "", 2},
        {"<TBool TypeRef=\"type_bool\"/>", "boolean", "1 byte, 8 bits used", "", 1},
        {"<TVoid TypeRef=\"type_void\"/>", "void", "0 bytes", "", 0},
        {String("64"), "string", "open, at most 64 bytes", "at most 64 bytes", {}},
        {Array("1"), "array", "open, at most 1 element", "at most 1 element", {}},
        {Array("NMax"), "array", "open", "", {}},
        {Record(kEnum), "record", "4 bytes", "", 4},
        {Record(String("5")), "record", "open", "", {}},
        {Stream("7", kSignals), "stream", "open, at most 7 bytes", "at most 7 bytes", {}},
        {Stream("0", kSignals), "stream", "open", "", {}},
        {"<TShortStream TypeRef=\"type_stream\" MaxLength=\"9\"/>",
         "short stream",
         "open, at most 9 bytes",
         "at most 9 bytes",
         {}},
        {"<TCStream TypeRef=\"type_stream\"/>", "classified stream", "open", "", {}},
    };
    for (const auto& row : rows) {
        const ZMTParam& param = Import(row.type);
        EXPECT_EQ(TypeText(param), row.text);
        EXPECT_EQ(LengthText(param), row.length) << row.text;
        EXPECT_EQ(LimitText(param), row.limit) << row.text;
        EXPECT_EQ(FixedBytes(param), row.bytes) << row.text;
    }
}

TEST_F(ParamWords, NumbersHaveRangeStepAndUnit) {
    const auto& speed = ImportAs<ZMTParamNumber>(kSpeed);
    EXPECT_EQ(RangeText(speed), "-12..12.5");
    EXPECT_EQ(StepText(speed), "0.5");
    EXPECT_EQ(UnitText(speed), "km/h");
    const auto& plain = ImportAs<ZMTParamNumber>(kPlain);
    EXPECT_EQ(RangeText(plain), "");
    EXPECT_EQ(StepText(plain), "");
    EXPECT_EQ(UnitText(plain), "");
}

TEST_F(ParamWords, PartsOfParameters) {
    const auto& values = ImportAs<ZMTParamEnum>(kEnum);
    EXPECT_EQ(CodesText(*values.GetAt(0)), "0x02");
    EXPECT_EQ(CodesText(*values.GetAt(1)), "0x10..0x1F");
    EXPECT_EQ(CodesText(*values.GetAt(2)), ">=0x30");
    const auto& bit = *ImportAs<ZMTParamBitField>(kBits).FindBit(1);
    EXPECT_EQ(BitText(bit), "on / off");
    EXPECT_EQ(LengthText(bit), "1 bit");
    EXPECT_EQ(KindText(bit), "bit");
    const auto& stream = ImportAs<ZMTParamStream>(Stream("0", kSignals));
    EXPECT_EQ(CaseText(*stream.GetAt(0)), "PosX=Slot, PosY=0x01..0x03");
    EXPECT_EQ(CaseText(*stream.GetAt(1)), "PosY>=0x04");
    EXPECT_EQ(CaseText(*stream.GetAt(2)), "PosY=0x00");
    EXPECT_EQ(KindText(*stream.GetAt(0)), "case");
    EXPECT_EQ(LengthText(*stream.GetAt(0)->GetAt(0)), "5 bits");
}

TEST_F(ParamWords, CasesOfSignedAndOfNoSelectors) {
    const auto textOf = [&](const std::string& posX, const std::string& posY) {
        const std::string cases =
            "<StreamCase><PosDescription PosX=\"" + posX + "\" PosY=\"" + posY + "\"/></StreamCase>";
        return CaseText(*ImportAs<ZMTParamStream>(Stream("0", cases)).GetAt(0));
    };
    EXPECT_EQ(textOf("Slot", "-8..3"), "PosX=Slot, PosY=-8..3");
    EXPECT_EQ(textOf("Slot", "-8..-1"), "PosX=Slot, PosY=-8..-1");
    EXPECT_EQ(textOf("Slot", "-1"), "PosX=Slot, PosY=-1");
    EXPECT_EQ(textOf("Slot", "&gt;-9"), "PosX=Slot, PosY>=-9");
    EXPECT_EQ(textOf("Slot", "0..3"), "PosX=Slot, PosY=0x00..0x03");
    EXPECT_EQ(textOf("#NULL#", "#NULL#"), "always");
}

TEST(PhysicalText, IsExact) {
    const struct {
        std::int64_t raw;
        std::int32_t exponent;
        const char* text;
    } rows[] = {
        {0, -5, "0"},        {125, 0, "125"},    {125, -1, "12.5"},
        {-125, -1, "-12.5"}, {-5, -3, "-0.005"}, {120, -1, "12"},
        {3, 2, "300"},       {-3, 2, "-300"},    {1, 18, "1000000000000000000"},
        {1, -19, "1e-19"},   {7, 300, "7e300"},  {255, -2, "2.55"},
        {100, -2, "1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PhysicalText(row.raw, row.exponent), row.text) << row.raw << " " << row.exponent;
    }
}

TEST(NumberText, IsTheShortest) {
    EXPECT_EQ(NumberText(0.1), "0.1");
    EXPECT_EQ(NumberText(-12), "-12");
    EXPECT_EQ(NumberText(1e20), "1e+20");
    EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()), "inf");
}

}  // namespace
}  // namespace tarvex::test::param_words_test
