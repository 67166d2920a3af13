/// The bit stream of FunctionIDs: which parameters are one, and what it asks of its element.

#include "params/fkt_id_bit_stream.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/definitions.h"
#include "catalog/element_import.h"
#include "params/streams.h"

namespace tarvex::test::fkt_id_bit_stream_test {
namespace {

constexpr int kStreamCode = 6;
constexpr int kBitStreamCode = 20;

/// A function "Fkts" of that FunctionID, as it is written, with these "PUParam" elements.
std::string FunctionOf(std::string_view id, std::string_view params, std::string_view attributes = "") {
    std::string xml = "<Function ";
    xml.append(attributes).append("><FunctionID>").append(id).append("</FunctionID>");
    xml.append("<FunctionName>Fkts</FunctionName><FunctionClass><Property><PUnclassified>").append(params);
    return xml + "</PUnclassified></Property></FunctionClass></Function>";
}

std::unique_ptr<Imported> ImportFunction(std::string_view id, std::string_view params) {
    return ImportText(CatalogOf(BlockOf(FunctionOf(id, params))));
}

/// The parameter at a path of names below the operation "Status" of "Fkts".
template <class... Names>
const ZMTParam* InFkts(const Imported& imported, const Names&... names) {
    return NodeAt<ZMTParam>(imported.catalog, "Amp", "Fkts", "Status", names...);
}

struct BitStreamImport : CompositeImport<ZMTParamFktIDBitStream> {
    explicit BitStreamImport(std::string_view typeElement)
        : CompositeImport<ZMTParamFktIDBitStream>("FktIDs", typeElement) {}
};

struct FaultCase {
    const char* what;
    const char* typeElement;
    const char* messages;
};
constexpr FaultCase kFaults[] = {
    {"no type element", "<TArray/>", "Error #0036 in '/FktIDs':\n  Can not find element <TStream>\n"},
    {"type element too deep", "<Deep><TStream/></Deep>",
     "Error #0036 in '/FktIDs':\n  Can not find element <TStream>\n"},
    {"no type", "<TStream><StreamCase/></TStream>",
     "Error #0037 in '/FktIDs':\n  Missing required attribute TypeRef\n"},
    {"neither type nor case", "<TStream/>",
     "Error #0037 in '/FktIDs':\n  Missing required attribute TypeRef\n"},
    {"no case", R"(<TStream TypeRef="type_stream"/>)",
     "Error #0038 in '/FktIDs':\n  Can not find element <StreamCase>\n"},
    {"case too deep", R"(<TStream TypeRef="type_stream"><A><StreamCase/></A></TStream>)",
     "Error #0038 in '/FktIDs':\n  Can not find element <StreamCase>\n"},
    {"two cases", R"(<TStream TypeRef="type_stream"><StreamCase/><StreamCase/></TStream>)",
     "Error #0039 in '/FktIDs':\n  Invalid number of elements in 'FktIDs'\n"},
    {"three cases, one of them elsewhere",
     R"(<TStream TypeRef="type_stream"><StreamCase/><Other/><StreamCase/><StreamCase/></TStream>)",
     "Error #0039 in '/FktIDs':\n  Invalid number of elements in 'FktIDs'\n"},
};

TEST(FktIDBitStream, FaultOfItsElementEndsTheImport) {
    for (const FaultCase& row : kFaults) {
        SCOPED_TRACE(row.what);
        const BitStreamImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

TEST(FktIDBitStream, NeedsAName) {
    ElementImport import;
    ZMTParamFktIDBitStream param;
    EXPECT_FALSE(import.Import(param, "<PUParam>" + Stream(Case("1")) + "</PUParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

/// The one case says nothing that would matter: neither its range nor its parameters are read.
constexpr const char* kGoodElements[] = {
    R"(<TStream TypeRef="type_stream"><StreamCase/></TStream>)",
    R"(<TStream TypeRef="type_stream" Length="x"><StreamCase/></TStream>)",
    R"(<TStream TypeRef="type_stream"><Other/><StreamCase><PosY PosDescription="x"/></StreamCase></TStream>)",
    R"(<TStream TypeRef="type_stream"><StreamCase><StreamParam/><StreamParam/></StreamCase></TStream>)",
    R"(<TStream TypeRef="type_stream"><StreamCase><StreamCase/></StreamCase></TStream>)",
};

TEST(FktIDBitStream, NeedsNoLengthAndNothingInItsCase) {
    for (const char* element : kGoodElements) {
        SCOPED_TRACE(element);
        const BitStreamImport read(element);
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, "");
        EXPECT_EQ(read.param.GetType(), kBitStreamCode);
        EXPECT_EQ(read.param.GetName(), "FktIDs");
        EXPECT_EQ(read.param.GetBytesInMsg(), 0);
        EXPECT_EQ(read.param.GetChild(0), nullptr);
        EXPECT_EQ(read.param.FindChild("{StreamCase}"), nullptr);
    }
}

TEST(FktIDBitStream, DumpShowsItsType) {
    BitStreamImport known(Stream(Case("1")));
    known.param.SetParamPos(3);
    EXPECT_EQ(DumpOf(known.param),
              "PARAMFKTIDBITSTREAM: FktIDs\n"
              ".Parent: -\n"
              ".BytesInMsg: 0\n"
              ".ParamPos: 3\n"
              ".TypeIDName: Stream\n"
              ".DefType: Stream\n");
    const BitStreamImport unknown(R"(<TStream TypeRef="type_x"><StreamCase/></TStream>)");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.messages, "");
    EXPECT_EQ(DumpOf(unknown.param),
              "PARAMFKTIDBITSTREAM: FktIDs\n"
              ".Parent: -\n"
              ".BytesInMsg: 0\n"
              ".ParamPos: 0\n"
              ".TypeIDName: \n"
              ".DefType: \n");
}

TEST(FktIDBitStream, Clones) {
    const BitStreamImport read(Stream(Case("1")));
    const std::unique_ptr<ZMTNode> clone = read.param.Clone();
    const auto* copy = dynamic_cast<ZMTParamFktIDBitStream*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetName(), "FktIDs");
    ASSERT_NE(copy->TypeDefinition(), nullptr);
    EXPECT_EQ(copy->TypeDefinition(), read.param.TypeDefinition());
}

struct FunctionCase {
    const char* id;
    int code;
};
constexpr FunctionCase kFunctions[] = {
    {"0x000", kBitStreamCode}, {"0x0", kBitStreamCode}, {"0", kBitStreamCode},
    {" 0 ", kBitStreamCode},   {"0b0", kBitStreamCode}, {"0x001", kStreamCode},
    {"1", kStreamCode},        {"0x100", kStreamCode},  {"0xFFF", kStreamCode},
};

TEST(FktIDBitStream, StandsInFunction0Only) {
    for (const FunctionCase& row : kFunctions) {
        SCOPED_TRACE(row.id);
        const auto imported = ImportFunction(row.id, Param("FktIDs", Stream(Case("1"))));
        EXPECT_EQ(imported->messages, "");
        const ZMTParam* param = InFkts(*imported, "FktIDs");
        ASSERT_NE(param, nullptr);
        EXPECT_EQ(param->GetType(), row.code);
    }
}

struct NameCase {
    const char* name;
    int code;
};
constexpr NameCase kNames[] = {
    {"FktID", kBitStreamCode},  {"FktIDs", kBitStreamCode}, {"FktIDList", kBitStreamCode},
    {"fktids", kBitStreamCode}, {"FKTIDS", kBitStreamCode}, {"fKTid-1", kBitStreamCode},
    {"FktI", kStreamCode},      {"Fkt", kStreamCode},       {"F", kStreamCode},
    {"Fkt_ID", kStreamCode},    {"FktsID", kStreamCode},    {"TheFktIDs", kStreamCode},
    {"List", kStreamCode},
};

TEST(FktIDBitStream, HasANameThatBeginsSo) {
    for (const NameCase& row : kNames) {
        SCOPED_TRACE(row.name);
        const auto imported = ImportFunction("0x000", Param(row.name, Stream(Case("1"))));
        EXPECT_EQ(imported->messages, "");
        const ZMTParam* param = InFkts(*imported, row.name);
        ASSERT_NE(param, nullptr);
        EXPECT_EQ(param->GetType(), row.code);
    }
}

TEST(FktIDBitStream, IsAStreamByItsElement) {
    const auto imported =
        ImportFunction("0x000", Param("FktIDs", Array("FktIDA", kByte), At(1)) +
                                    Param("FktIDText", kText, At(2)) + Param("FktIDByte", kByte, At(3)));
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(InFkts(*imported, "FktIDs")->GetType(), 8);
    EXPECT_EQ(InFkts(*imported, "FktIDText")->GetType(), 16);
    EXPECT_EQ(InFkts(*imported, "FktIDByte")->GetType(), 13);
}

TEST(FktIDBitStream, FailsWithTwoCasesWhereAStreamWouldNot) {
    const std::string params = Param("Others", Stream(Case("1") + Case("2")), At(1)) +
                               Param("FktIDs", Stream(Case("1") + Case("2")), At(2));
    const auto imported = ImportFunction("0x000", params);
    EXPECT_EQ(imported->messages, R"(Error #0039 in '/Cat/Amp/Fkts/FktIDs':
  Invalid number of elements in 'FktIDs'
Error #0129 in '/Cat/Amp/Fkts':
  Failed to import element <PUParam>
)");
    EXPECT_EQ(InFkts(*imported, "FktIDs"), nullptr);
    EXPECT_NE(InFkts(*imported, "Others"), nullptr);
    const auto other = ImportFunction("0x002", params);
    EXPECT_EQ(other->messages, "");
    EXPECT_NE(InFkts(*other, "FktIDs"), nullptr);
}

TEST(FktIDBitStream, MessageHasTheNameAsItIsKept) {
    const auto imported = ImportFunction(
        "0x000", Param("FktIDs of a block", Stream(Case("1") + Case("2")), At(1)) + Param("Good", kByte));
    EXPECT_EQ(imported->messages, R"(Error #0039 in '/Cat/Amp/Fkts/FktIDs_of_a_block':
  Invalid number of elements in 'FktIDs_of_a_block'
Error #0129 in '/Cat/Amp/Fkts':
  Failed to import element <PUParam>
)");
}

TEST(FktIDBitStream, MayBeAFieldOrStandInAStream) {
    const auto imported = ImportFunction(
        "0x000",
        Param("Rec", Record(2, Field(1, "FktIDs", Stream(Case("1"))) + Field(2, "Rest", Stream(Case("1")))),
              At(1)) +
            Param(
                "Body",
                Stream(Case("#NULL#", "1",
                            Member("1", "FktIDs", Stream(Case("1"))) + Member("2", "E", Stream(Case("1"))))),
                At(2)));
    EXPECT_EQ(imported->messages, "");
    ASSERT_NE(InFkts(*imported, "Rec", "FktIDs"), nullptr);
    EXPECT_EQ(InFkts(*imported, "Rec", "FktIDs")->GetType(), kBitStreamCode);
    EXPECT_EQ(InFkts(*imported, "Rec", "FktIDs")->ParamPos(), 1U);
    EXPECT_EQ(InFkts(*imported, "Rec", "Rest")->GetType(), kStreamCode);
    ASSERT_NE(InFkts(*imported, "Body", "{StreamCase}", "FktIDs"), nullptr);
    EXPECT_EQ(InFkts(*imported, "Body", "{StreamCase}", "FktIDs")->GetType(), kBitStreamCode);
    EXPECT_EQ(InFkts(*imported, "Body", "{StreamCase}", "E")->GetType(), kStreamCode);
}

TEST(FktIDBitStream, IsNoLevelOfNesting) {
    std::string type = Stream(Case("1"));
    for (unsigned level = 64; level > 0; --level) {
        type = Record(1, Field(1, level == 64 ? "FktIDs" : "L" + std::to_string(level + 1), type));
    }
    const auto imported = ImportFunction("0x000", Param("L1", type));
    EXPECT_EQ(imported->messages, "");
    EXPECT_NE(imported->tree.find("\tPARAMFKTIDBITSTREAM: FktIDs\n"), std::string::npos);
}

TEST(FktIDBitStream, IsCopiedWithItsFunction) {
    const auto imported = ImportText(
        CatalogOf(BlockOf(FunctionOf("0x000", Param("FktIDs", Stream(Case("1"))), R"(FktDefId="f")")) +
                  "<FBlock><FBlockID>1</FBlockID><FBlockName>Copy</FBlockName>"
                  "<Function FktDefRef=\"f\"/></FBlock>"));
    EXPECT_EQ(imported->messages, "");
    const auto* copy = NodeAt<ZMTParam>(imported->catalog, "Copy", "Fkts", "Status", "FktIDs");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetType(), kBitStreamCode);
    EXPECT_EQ(DumpOf(*copy),
              "\t\t\t\tPARAMFKTIDBITSTREAM: FktIDs\n"
              "\t\t\t\t.Parent: /Cat/Copy/Fkts/Status\n"
              "\t\t\t\t.BytesInMsg: 0\n"
              "\t\t\t\t.ParamPos: 0\n"
              "\t\t\t\t.TypeIDName: Stream\n"
              "\t\t\t\t.DefType: Stream\n");
}

TEST(FktIDBitStream, SelectsNoStreamAndIsSelectedByNone) {
    const auto imported =
        ImportFunction("0x000", Param("Pos", kWord, At(1)) + Param("FktIDs", Stream(Case("1")), At(2)) +
                                    Param("Body", Stream(Case("FktIDs", "3")), At(3)));
    EXPECT_EQ(imported->messages, "");
    const ZMTParam* body = InFkts(*imported, "Body");
    ASSERT_NE(body, nullptr);
    EXPECT_NE(body->FindChild("(Pos=0x03)"), nullptr);
    EXPECT_EQ(DumpOf(*InFkts(*imported, "FktIDs")).find(".SelectorParam"), std::string::npos);
}

TEST(FktIDBitStream, WarnsOfANameUsedTwice) {
    const auto imported = ImportFunction(
        "0x000", Param("FktIDs", Stream(Case("1")), At(1)) + Param("fktIDs", Stream(Case("1")), At(2)));
    EXPECT_EQ(imported->messages,
              "Warning #0009 in '/Cat/Amp/Fkts/Status/fktIDs':\n"
              "  Multiple use of parameter name 'fktIDs'\n");
}

/// Error functions have no FunctionID.
TEST(FktIDBitStream, StandsInNoElementOutsideAFunction) {
    const ParsedElement element("<ERParam><ParamName>FktIDs</ParamName>" + Stream(Case("1")) + "</ERParam>");
    EXPECT_FALSE(IsFktIDBitStream(*element));
}

}  // namespace
}  // namespace tarvex::test::fkt_id_bit_stream_test
