/// Large catalogs take time that grows with their size, not with its square. The bound is far above what an
/// import needs even under sanitizers, and far below what a quadratic one would.

#include <algorithm>
#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "params/composites.h"
#include "params/enumeration.h"
#include "params/record.h"
#include "params/stream.h"
#include "support/catalog_import.h"

namespace tarvex::test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kBound{10};

TEST(Cost, BlockOf4096Functions) {
    std::string functions;
    for (unsigned id = 0; id < 4096; ++id) {
        functions += VoidFunction(std::to_string(id), "FunctionWithALongCommonName" + std::to_string(id));
    }
    const std::string xml = CatalogOf(BlockOf(functions));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(NodeAt<ZMTFBlock>(imported->catalog, "Amp")->Count(), 4096U);
}

TEST(Cost, EnumerationOf5000Values) {
    std::string values;
    for (unsigned code = 1; code <= 5000; ++code) {
        const std::string text = std::to_string(code);
        values += "<TEnumValue Code=\"" + text + "\">Value" + text + "</TEnumValue>";
    }
    const std::string xml = CatalogOfParams(
        Param("Mode", "<TEnum TypeRef=\"type_enum\" TEnumMax=\"65535\">" + values + "</TEnum>"));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* mode = NodeAt<ZMTParamEnum>(imported->catalog, "Amp", "Volume", "Status", "Mode");
    ASSERT_NE(mode, nullptr);
    EXPECT_EQ(mode->Count(), 5000U);
}

TEST(Cost, ManyErrorFunctionsAndReferences) {
    std::string errors;
    std::string references;
    for (unsigned i = 0; i < 200; ++i) {
        const std::string id = std::string("E").append(std::to_string(i));
        errors += "<ERParam ParamDefId=\"" + id + "\"><ParamName>" + id +
                  "</ParamName><ERParamOPType><MReportError><ParamPos>" + std::to_string(i) +
                  "</ParamPos></MReportError></ERParamOPType><TVoid TypeRef=\"type_void\"/></ERParam>";
        references += "<ERParam ParamDefRef=\"" + id + "\"/>";
    }
    std::string functions;
    for (unsigned id = 0; id < 50; ++id) {
        functions += "<Function><FunctionID>" + std::to_string(id) + "</FunctionID><FunctionName>F" +
                     std::to_string(id) + "</FunctionName><FunctionClass><Method><MTrigger>" + references +
                     "</MTrigger></Method></FunctionClass></Function>";
    }
    const std::string xml = CatalogOf(errors + BlockOf(functions));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* operation = NodeAt<ZMTOperation>(imported->catalog, "Amp", "F49", "Error");
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->Count(), 200U);
}

/// Text among very many comments and one child element.
TEST(Cost, NameBehind100000Comments) {
    std::string name = "<FBlockName>";
    for (unsigned i = 0; i < 100'000; ++i) {
        name += " <!---->";
    }
    name += " <x/>Amp</FBlockName>";
    const std::string xml =
        CatalogOf("<FBlock>" + name + "<FBlockID>1</FBlockID>" + VoidFunction("1", "Mute") + "</FBlock>");
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->catalog->GetAt(1)->GetName(), "Amp");
}

std::string EnumerationOf(unsigned values) {
    std::string type = "<TEnum TypeRef=\"type_enum\" TEnumMax=\"65535\">";
    for (unsigned code = 0; code < values; ++code) {
        type.append("<TEnumValue Code=\"").append(std::to_string(code)).append("\">V</TEnumValue>");
    }
    return type + "</TEnum>";
}

/// Copies that have no place in the block are refused before they are made.
TEST(Cost, FunctionOf4000ValuesCopiedInVain4000Times) {
    std::string functions =
        "<Function FktDefId=\"f\"><FunctionID>1</FunctionID><FunctionName>Mode</FunctionName><FunctionClass>"
        "<Property><PUnclassified>" +
        Param("Mode", EnumerationOf(4000)) + "</PUnclassified></Property></FunctionClass></Function>";
    for (unsigned i = 0; i < 4000; ++i) {
        functions += "<Function FktDefRef=\"f\"/>";
    }
    const std::string xml = CatalogOf(BlockOf(functions));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(NodeAt<ZMTFBlock>(imported->catalog, "Amp")->Count(), 1U);
}

/// Parameters that find their position taken are refused before they are cloned.
TEST(Cost, ErrorFunctionOf4000ValuesMergedInVain4000Times) {
    std::string params =
        "<ERParam "
        "ParamDefId=\"e\"><ParamName>Code</ParamName><ERParamOPType><PReportError><ParamPos>1</ParamPos>"
        "</PReportError></ERParamOPType><ERParamType>" +
        EnumerationOf(4000) + "</ERParamType></ERParam>";
    for (unsigned i = 0; i < 4000; ++i) {
        params += "<ERParam ParamDefRef=\"e\"/>";
    }
    const std::string xml = CatalogOfParams(params);
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
}

/// A record of the largest number of fields, all of that type; field n is called as `nameOf` says.
template <class NameOf>
std::string RecordOf4095(const std::string& type, const NameOf& nameOf) {
    std::string fields;
    for (int pos = 1; pos <= 4095; ++pos) {
        fields += Field(pos, nameOf(pos), type);
    }
    return Record(4095, fields);
}

/// Every operation has a copy of its own, in which every field looks for its name.
TEST(Cost, RecordOf4095FieldsInEightOperations) {
    const std::string record =
        RecordOf4095(kText, [](int pos) { return "FieldWithALongCommonName" + std::to_string(pos); });
    const std::string xml = CatalogOfParams(
        Param("Rec", record,
              "<PCmdSet/><PCmdGet/><PCmdSetGet/><PCmdIncrement/><PCmdDecrement/><PCmdGetInterface/>"
              "<PReportStatus/><PReportError/>"));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    for (const char* operation : {"Set", "Status", "Error"}) {
        const auto* rec = NodeAt<ZMTParamRecord>(imported->catalog, "Amp", "Volume", operation, "Rec");
        ASSERT_NE(rec, nullptr) << operation;
        EXPECT_EQ(rec->Count(), 4095U);
        EXPECT_EQ(rec->GetAt(4095)->GetName(), "FieldWithALongCommonName4095");
    }
}

/// Every field but the first has a name that stands before it.
TEST(Cost, RecordOf4095FieldsOfOneName) {
    const std::string xml =
        CatalogOfParams(Param("Rec", RecordOf4095(kText, [](int) { return std::string("Same"); })));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    std::string messages;
    for (unsigned pos = 2; pos <= 4095; ++pos) {
        messages +=
            "Warning #0009 in '/Cat/Amp/Volume/Status/Rec/Same':\n  Multiple use of parameter name 'Same'\n";
    }
    EXPECT_TRUE(imported->messages == messages);
}

/// Every field is deleted in the second pass, so that the next one finds no name before it.
TEST(Cost, RecordOf4095FieldsThatAllFailTheirCheck) {
    const std::string record = RecordOf4095(Array("Item", kText), [](int) { return std::string("Data"); });
    const std::string xml = CatalogOfParams(Param("Rec", record));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    std::string messages;
    for (unsigned pos = 1; pos <= 4095; ++pos) {
        messages +=
            "Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':\n"
            "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n";
    }
    messages += "Warning #0058 in '/Cat/Amp/Volume/Status/Rec':\n  Record contains no valid parameter\n";
    EXPECT_TRUE(imported->messages == messages);
    const auto* rec = NodeAt<ZMTParamRecord>(imported->catalog, "Amp", "Volume", "Status", "Rec");
    ASSERT_NE(rec, nullptr);
    EXPECT_EQ(rec->Count(), 0U);
}

/// The fields look for their names in the records around theirs, too.
TEST(Cost, RecordOf4095RecordsInARecord) {
    const std::string inner = Record(1, Field(1, "Value", kText));
    const std::string xml = CatalogOfParams(
        Param("Rec", RecordOf4095(inner, [](int pos) { return "Entry" + std::to_string(pos); })));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
}

/// The values of one of many stream cases.
struct ManyCases {
    const char* what;
    std::string (*posY)(unsigned number);
    unsigned kept;
    std::string messages;
};

TEST(Cost, StreamOf20000Cases) {
    constexpr unsigned kCases = 20000;
    const std::string overlap = "Warning #0035 in '/Cat/Amp/Volume/Body':\n  Overlapping streamcase(s)\n";
    std::string doubles;
    for (unsigned number = 1; number < kCases; ++number) {
        doubles += "Warning #0033 in '/Cat/Amp/Volume/Body':\n  Double definition of element at position 7\n";
    }
    const ManyCases rows[] = {
        {"all different", [](unsigned number) { return std::to_string(number); }, kCases, ""},
        {"all overlapping", [](unsigned number) { return ">" + std::to_string(number); }, kCases, overlap},
        {"one around the others",
         [](unsigned number) { return number == 0 ? std::string("0..20000") : std::to_string(number); },
         kCases, overlap},
        {"all equal", [](unsigned) { return std::string("7"); }, 1, doubles},
    };
    for (const auto& [what, posY, kept, messages] : rows) {
        SCOPED_TRACE(what);
        std::string cases;
        for (unsigned number = 0; number < kCases; ++number) {
            cases += R"(<StreamCase><PosDescription PosX="S" PosY=")" + posY(number) +
                     R"("/><StreamParam><ParamName ParamIdx="1">F</ParamName><TVoid TypeRef="type_void"/>)" +
                     "</StreamParam></StreamCase>";
        }
        const std::string xml = CatalogOfParams(
            Param("S", kByte, At(1)) +
            Param("Body", R"(<TStream TypeRef="type_stream" Length="8">)" + cases + "</TStream>", At(2)));
        const auto start = Clock::now();
        const auto imported = ImportText(xml);
        EXPECT_LT(Clock::now() - start, kBound);
        ASSERT_TRUE(imported->ok);
        EXPECT_TRUE(imported->messages == messages);  // too long to be shown
        const auto* stream = NodeAt<ZMTParamStream>(imported->catalog, "Amp", "Volume", "Status", "Body");
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(stream->Count(), kept);
    }
}

TEST(Cost, StreamCaseOf4000ParametersInTwoOperations) {
    constexpr unsigned kParams = 4000;
    for (const bool inSteps : {false, true}) {
        SCOPED_TRACE(inSteps ? "one position" : "a position each");
        std::string params;
        for (unsigned number = kParams; number > 0; --number) {
            const std::string text = std::to_string(number);
            params += "<StreamParam><ParamName ParamIdx=\"" + (inSteps ? "1seq" + text : text) +
                      "\">ParameterWithALongCommonName" + text +
                      "</ParamName><TVoid TypeRef=\"type_void\"/></StreamParam>";
        }
        const std::string xml = CatalogOfParams(Param(
            "Body",
            R"(<TStream TypeRef="type_stream" Length="8"><StreamCase>)" + params + "</StreamCase></TStream>",
            "<PCmdSet/><PReportStatus/>"));
        const auto start = Clock::now();
        const auto imported = ImportText(xml);
        EXPECT_LT(Clock::now() - start, kBound);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        for (const char* operation : {"Set", "Status"}) {
            const auto* streamCase = NodeAt<ZMTParamStreamCase>(imported->catalog, "Amp", "Volume", operation,
                                                                "Body", "{StreamCase}");
            ASSERT_NE(streamCase, nullptr);
            EXPECT_EQ(streamCase->Count(), kParams);
            EXPECT_EQ(streamCase->SeqCnt(), inSteps ? kParams : 0);
        }
    }
}

/// The time of an import without a tree log; the better of two, as other programs run beside.
Clock::duration ImportTime(const std::string& xml) {
    auto best = Clock::duration::max();
    for (int run = 0; run < 2; ++run) {
        const auto start = Clock::now();
        const FactoryImport imported(CatalogParamFactory{}, xml);
        best = std::min(best, Clock::now() - start);
        EXPECT_TRUE(imported.ok);
        EXPECT_EQ(imported.messages, "");
    }
    return best;
}

/// Long names. Where they differ makes a difference only to who compares each with each.
using LongName = std::string (*)(unsigned number);

std::string DifferingAtTheStart(unsigned number) {
    return std::to_string(10'000 + number) + std::string(1000, 'N');
}

std::string DifferingAtTheEnd(unsigned number) {
    return std::string(1000, 'N') + std::to_string(10'000 + number);
}

/// A function of 250 parameters, copied into all other blocks.
std::string CopiedParams(LongName nameOf) {
    std::string params;
    for (unsigned pos = 1; pos <= 250; ++pos) {
        params += Param(nameOf(pos), kVoid, At(static_cast<int>(pos)));
    }
    std::string blocks;
    for (unsigned id = 0; id < 255; ++id) {
        blocks +=
            "<FBlock><FBlockID>" + std::to_string(id) + "</FBlockID><FBlockName>" + nameOf(id) +
            "</FBlockName>" +
            (id > 0 ? "<Function FktDefRef=\"f\"/>"
                    : "<Function FktDefId=\"f\"><FunctionID>1</FunctionID><FunctionName>F</FunctionName>"
                      "<FunctionClass><Property><PUnclassified>" +
                          params + "</PUnclassified></Property></FunctionClass></Function>") +
            "</FBlock>";
    }
    return CatalogOf(blocks);
}

TEST(Cost, ParametersWhoseLongNamesDifferAtTheEnd) {
    EXPECT_LT(ImportTime(CopiedParams(DifferingAtTheEnd)), 5 * ImportTime(CopiedParams(DifferingAtTheStart)));
}

/// Streams that stand behind 240 other parameters, of which the last one selects.
std::string StreamsBehindParams(LongName nameOf) {
    constexpr unsigned kOthers = 240;
    std::string params;
    for (unsigned pos = 1; pos <= kOthers; ++pos) {
        params += Param(nameOf(pos), kByte, At(static_cast<int>(pos)));
    }
    std::string cases;
    for (unsigned value = 0; value < 2000; ++value) {
        cases += "<StreamCase><PosDescription PosX=\"" + nameOf(kOthers) + "\" PosY=\"" +
                 std::to_string(value) + R"("/><StreamParam><ParamName ParamIdx="1">F</ParamName>)" + kVoid +
                 "</StreamParam></StreamCase>";
    }
    for (unsigned number = 1; number <= 4; ++number) {
        params += Param("Body" + std::to_string(number),
                        R"(<TStream TypeRef="type_stream" Length="8">)" + cases + "</TStream>",
                        At(static_cast<int>(kOthers + number)));
    }
    return CatalogOfParams(params);
}

TEST(Cost, StreamCasesWhoseSelectorStandsBehindLongNames) {
    EXPECT_LT(ImportTime(StreamsBehindParams(DifferingAtTheEnd)),
              3 * ImportTime(StreamsBehindParams(DifferingAtTheStart)));
}

}  // namespace
}  // namespace tarvex::test
