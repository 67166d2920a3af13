/// Small catalogs that tests compare.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "review/catalog_reading.h"
#include "review/diff.h"
#include "review/diff_report.h"
#include "support/catalog_import.h"

namespace tarvex::test::diff {

inline std::string Number(const std::string& type, const std::string& range,
                          const std::string& unit = "unit_none") {
    return "<TNumber><BasisDataType><TUByte TypeRef=\"" + type +
           "\"/></BasisDataType><Exponent>0</Exponent>" + range + "<Step>1</Step><Unit UnitRef=\"" + unit +
           "\"/></TNumber>";
}

inline std::string Member(const std::string& name, int position, const std::string& type) {
    return "<StreamParam><ParamName ParamIdx=\"" + std::to_string(position) + "\">" + name + "</ParamName>" +
           type + "</StreamParam>";
}

inline std::string Field(const std::string& name, int position, const std::string& type) {
    return "<TRecordField FieldIdx=\"" + std::to_string(position) + "\"><TRecordFieldName>" + name +
           "</TRecordFieldName><TRecordFieldDesc>About " + name + ".</TRecordFieldDesc>" + type +
           "</TRecordField>\n";
}

inline std::string At(const std::string& operation, int position) {
    return "<" + operation + "><ParamPos>" + std::to_string(position) + "</ParamPos></" + operation + ">";
}

inline std::string Function(const std::string& id, const std::string& name, const std::string& params) {
    return "<Function><FunctionID>" + id + "</FunctionID><FunctionName>" + name +
           "</FunctionName><FunctionDescription>About " + name + ".</FunctionDescription>" +
           "<FunctionClass ClassRef=\"c\"><Property><PUnclassified>\n" + params +
           "</PUnclassified></Property></FunctionClass></Function>\n";
}

inline const std::string kVolume =
    Param("Level", Number("type_unsigned_byte", "<RangeMin>0</RangeMin><RangeMax>30</RangeMax>"),
          At("PCmdSet", 1) + At("PReportStatus", 1)) +
    Param("Source",
          "<TEnum TypeRef=\"type_enum\" TEnumMax=\"9\"><TEnumValue Code=\"1\">Radio</TEnumValue>"
          "<TEnumValue Code=\"2\">Disc</TEnumValue></TEnum>",
          At("PCmdSet", 2) + At("PReportStatus", 2)) +
    Param("", "<TVoid TypeRef=\"type_void\"/>", "<PCmdGet/>") +
    Param("Steps", Number("type_signed_byte", ""), At("PCmdIncrement", 1));
inline const std::string kBalance =
    Param("Side", Number("type_signed_word", "<RangeMin>-5</RangeMin><RangeMax>5</RangeMax>", "unit_km_h"),
          At("PReportStatus", 1)) +
    Param("Flags",
          "<TBitField TypeRef=\"type_bitfield\" Length=\"6\">"
          "<TBoolField BitPos=\"0\"><ParamName>Mute</ParamName><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off"
          "</BitFalseDesc></TBoolField><TBoolField "
          "BitPos=\"3\"><BitTrueDesc>hot</BitTrueDesc><BitFalseDesc>cold"
          "</BitFalseDesc></TBoolField></TBitField>",
          At("PReportStatus", 2));
inline const std::string kTitles =
    Param("Setup",
          "<TRecord TypeRef=\"type_record\" NElements=\"3\">" +
              Field("Delay", 1, Number("type_unsigned_byte", "")) +
              Field("Gain", 2, Number("type_unsigned_word", "")) +
              Field("Title", 3, "<TString TypeRef=\"type_string\" MaxSize=\"20\"/>") + "</TRecord>",
          At("PReportStatus", 1)) +
    Param("List",
          "<TArray TypeRef=\"type_array\" NMax=\"10\"><TArrayName>Entry</TArrayName>"
          "<TString TypeRef=\"type_string\" MaxSize=\"64\"/></TArray>",
          At("PReportStatus", 2));
inline const std::string kStreams =
    Param("Kind", Number("type_unsigned_byte", ""), At("PReportStatus", 1)) +
    Param("Data",
          "<TStream TypeRef=\"type_stream\" Length=\"7\"><StreamCase><PosDescription PosX=\"Kind\" "
          "PosY=\"1\"/>" +
              Member("Band", 1, Number("type_unsigned_byte", "")) +
              "</StreamCase><StreamCase><PosDescription PosX=\"Kind\" PosY=\"2..4\"/>"
              "<StreamSignal><SignalName "
              "SignalIdx=\"1\">Power</SignalName><SignalBitLength>12</SignalBitLength>"
              "</StreamSignal></StreamCase></TStream>",
          At("PReportStatus", 2)) +
    Param("Picture", "<TCStream TypeRef=\"type_stream\" MaxLength=\"99\" MediaType=\"image/png\"/>",
          At("PReportStatus", 3));

inline std::string Block(const std::string& id, const std::string& name, const std::string& functions) {
    return "<FBlock><FBlockID>" + id + "</FBlockID><FBlockName>" + name +
           "</FBlockName><FBlockDescription>About " + name + ".</FBlockDescription>\n" + functions +
           "</FBlock>\n";
}

inline const std::string kTuner =
    Block("0x40", "Tuner",
          Function("0x200", "Station", Param("Name", "<TString TypeRef=\"type_string\" MaxSize=\"8\"/>")));
inline const std::string kAmp =
    Block("0x22", "Amp",
          Function("0x400", "Volume", kVolume) + Function("0x401", "Balance", kBalance) +
              Function("0x402", "Titles", kTitles) + Function("0x403", "Streams", kStreams));

/// The catalog before, of blocks in any order.
inline std::string BaseCatalog() {
    return CatalogOf(kAmp + kTuner);
}

inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    EXPECT_EQ(text.find(from, at + 1), std::string::npos) << from << " stands twice";
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

/// Catalogs in files of their own, read as `diff` reads them.
class DiffTest : public testing::Test {
  protected:
    std::unique_ptr<review::CatalogReading> Read(const std::string& catalog) {
        review::ReadingOptions options;
        options.areDescriptionsRead = options_.areDescriptionsCompared;
        return std::make_unique<review::CatalogReading>(dir_.Write("c.xml", catalog), options);
    }
    /// The lines about changes, without their ends and the summary.
    std::vector<std::string> Lines(const review::CatalogReading& before,
                                   const review::CatalogReading& after) {
        std::vector<std::string> lines;
        review::PrintDiffText(
            {"", "", review::CompareCatalogs(*before.Catalog(), *after.Catalog(), options_)},
            vorn::Style(false),
            [&](const std::string& line) { lines.push_back(line.substr(0, line.size() - 1)); });
        lines.pop_back();
        return lines;
    }
    std::vector<std::string> LinesOf(const std::string& before, const std::string& after) {
        const auto readBefore = Read(before);
        return Lines(*readBefore, *Read(after));
    }

    TempDir dir_;
    review::DiffOptions options_;
};

}  // namespace tarvex::test::diff
