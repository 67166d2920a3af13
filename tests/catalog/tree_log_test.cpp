/// The tree log, line by line.

#include "import/log/tree_log.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::tree_log_test {
namespace {

constexpr const char* kSmallDefinitions = R"(<Definition>
  <TypeDef TypeID="type_unsigned_word"><TDefName>Unsigned Word</TDefName><TDefSize>2</TDefSize></TypeDef>
  <TypeDef TypeID="type_any"><TDefName>Any</TDefName><TDefSize>255</TDefSize></TypeDef>
  <UnitDef UnitID="unit_km_h"><UnitDefName>km/h</UnitDefName><UnitDefCode>0x50</UnitDefCode></UnitDef>
</Definition>)";

std::string At(int pos) {
    return "<PReportStatus><ParamPos>" + std::to_string(pos) + "</ParamPos></PReportStatus>";
}

std::string EveryNode() {
    const std::string params =
        Param("Speed", R"(<TNumber><BasisDataType><TUWord TypeRef="type_unsigned_word"/></BasisDataType>
                          <Exponent>-1</Exponent><RangeMin>0</RangeMin><RangeMax>250.5</RangeMax>
                          <Unit UnitRef="unit_km_h"/></TNumber>)",
              At(1)) +
        Param("Mode",
              R"(<TEnum TypeRef="type_any" TEnumMax="0x1FF"><TEnumValue Code="0x01"> Play it </TEnumValue>
                         <TEnumValue Code="0x10..0x1A0">Stop</TEnumValue></TEnum>)",
              At(2)) +
        Param("Text", R"(<TString TypeRef="type_any" MaxSize="12"/>)", At(3)) +
        Param("Endless", R"(<TString TypeRef="type_other" MaxSize=""/>)", At(4)) +
        Param("Flags",
              R"(<TBitField TypeRef="type_any" Length="12"><TBoolField BitPos="11"><ParamName>Mute</ParamName>
                          <BitTrueDesc>is muted</BitTrueDesc><BitFalseDesc>loud</BitFalseDesc></TBoolField>
                          </TBitField>)",
              At(5)) +
        Param("Switch", R"(<TBool TypeRef="type_any"><TBoolField BitPos="0"><BitTrueDesc>on</BitTrueDesc>
                           <BitFalseDesc>off</BitFalseDesc></TBoolField></TBool>)",
              At(6)) +
        Param("Pos", R"(<TEnum TypeRef="type_any" TEnumMax="1"/>)", At(7)) +
        Param("Data",
              R"(<TArray TypeRef="type_any" NMax="20"><TArrayName>Track</TArrayName><TArrayElementType>
                 <TRecord TypeRef="type_other" NElements="2">
                 <TRecordField FieldIdx="1"><TRecordFieldName>Title</TRecordFieldName>
                 <TRecordFieldType><TString TypeRef="type_any" MaxSize="8"/></TRecordFieldType></TRecordField>
                 <TRecordField FieldIdx="2"><TRecordFieldName>Marks</TRecordFieldName>
                 <TArray TypeRef="type_any" NMax="NMax"><TArrayName>Mark</TArrayName>
                 <TVoid TypeRef="type_any"/></TArray></TRecordField></TRecord></TArrayElementType></TArray>)",
              At(8)) +
        Param("Free", R"(<TArray TypeRef="type_any" NMax="1"><TArrayName>Word</TArrayName>
                         <TString TypeRef="type_any" MaxSize="1"/></TArray>)",
              At(9)) +
        Param("Body",
              R"(<TStream TypeRef="type_any" Length="40">
                 <StreamCase><PosDescription PosX="1..4" PosY="2..5"/>
                 <StreamParam><ParamName ParamIdx="2seq2">Third</ParamName>
                 <TString TypeRef="type_any" MaxSize="3"/></StreamParam>
                 <StreamParam><ParamName ParamIdx="2seq1">Second</ParamName>
                 <TVoid TypeRef="type_any"/></StreamParam>
                 <StreamParam><ParamName ParamIdx="1">First</ParamName><TStream TypeRef="type_any" Length="-1">
                 <StreamCase><PosY PosDescription="3"/><StreamParam><ParamName ParamIdx="1">Only</ParamName>
                 <TVoid TypeRef="type_any"/></StreamParam></StreamCase></TStream></StreamParam></StreamCase>
                 <StreamCase><PosDescription PosX="1..4" PosY=">6"/>
                 <StreamParam><ParamName ParamIdx="1">Rest</ParamName>
                 <TVoid TypeRef="type_any"/></StreamParam></StreamCase></TStream>)",
              At(10)) +
        Param("", R"(<TVoid TypeRef="type_any"/>)", "<PCmdGet/>");
    const std::string fktIDs =
        Param("FktIDs", R"(<TStream TypeRef="type_any"><StreamCase/></TStream>)", At(1));
    return CatalogOf(
        "<FBlock><FBlockID>7</FBlockID><FBlockName>Amp</FBlockName>"
        "<Function><FunctionID>0x000</FunctionID><FunctionName>FktIDs</FunctionName>"
        "<FunctionClass><Property><PUnclassified>" +
            fktIDs +
            "</PUnclassified></Property></FunctionClass></Function>"
            "<Function><FunctionID>0x4A</FunctionID><FunctionName>Volume</FunctionName>"
            "<FunctionClass><Property><PUnclassified>" +
            params + "</PUnclassified></Property></FunctionClass></Function></FBlock>",
        kSmallDefinitions);
}

// Lines that end with a blank are written with "@" in its place.
constexpr const char* kEveryNodeTree = R"(CATALOG: Cat
.AbsPath: @DIR@/Cat.xml
.Parent: -
.BytesInMsg: 0
	FBLOCK: Amp
	.FBlockID: 0x07
	.Parent: /Cat
	.BytesInMsg: 0
		FUNCTION: FktIDs
		.FunctionID: 0x000
		.Parent: /Cat/Amp
		.BytesInMsg: 0
			OPERATION: Status
			.OPType: 12
			.Parent: /Cat/Amp/FktIDs
			.BytesInMsg: 0
				PARAMFKTIDBITSTREAM: FktIDs
				.Parent: /Cat/Amp/FktIDs/Status
				.BytesInMsg: 0
				.ParamPos: 0
				.TypeIDName: Any
				.DefType: Any
		FUNCTION: Volume
		.FunctionID: 0x04A
		.Parent: /Cat/Amp
		.BytesInMsg: 0
			OPERATION: Get
			.OPType: 1
			.Parent: /Cat/Amp/Volume
			.BytesInMsg: 0
				PARAMVOID: {Void}
				.Parent: /Cat/Amp/Volume/Get
				.BytesInMsg: 0
				.ParamPos: 0
				.TypeIDName: Any
			OPERATION: Status
			.OPType: 12
			.Parent: /Cat/Amp/Volume
			.BytesInMsg: 0
				PARAMNUMBER: Speed
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 2
				.ParamPos: 0
				.TypeIDName: Unsigned_Word
				.DefType: Unsigned_Word
				.Exponent: -1
				.Range: 0.000000-250.500000
				.Step: 0.000000
				.UnitName: kmh
				PARAMENUM: Mode
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 2
				.ParamPos: 1
				.TypeIDName: Any
				.EnumMax: 511
					ENUMVALUE: Play it  .CodeMin: 0x01 .CodeMax: 0x01
					ENUMVALUE: Stop  .CodeMin: 0x10 .CodeMax: 0x1A0
				PARAMSTRING: Text
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 0
				.ParamPos: 2
				.TypeIDName: Any
				.MaxSize: 12
				PARAMSTRING: Endless
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 0
				.ParamPos: 3
				.TypeIDName:@
				.MaxSize: -1
				PARAMBITFIELD: Flags
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 2
				.ParamPos: 4
				.TypeIDName: Any
				.Length: 12
					PARAMBOOLFIELD: Mute
					.Parent: /Cat/Amp/Volume/Status/Flags
					.BytesInMsg: 0
					.ParamPos: 11
					.TypeIDName:@
					.TrueDesc:  is muted
					.FalseDesc: loud
				PARAMBOOL: Switch
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 1
				.ParamPos: 5
				.TypeIDName: Any
				.Length: 8
					PARAMBOOLFIELD:@
					.Parent: /Cat/Amp/Volume/Status/Switch
					.BytesInMsg: 0
					.ParamPos: 0
					.TypeIDName:@
					.TrueDesc:  on
					.FalseDesc: off
				PARAMENUM: Pos
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 1
				.ParamPos: 6
				.TypeIDName: Any
				.EnumMax: 1
				PARAMARRAY: Data
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 0
				.ParamPos: 7
				.TypeIDName: Any
				.SelectorParam: Pos
				.NMax: 20
					PARAMRECORD: Track
					.Parent: /Cat/Amp/Volume/Status/Data
					.BytesInMsg: 0
					.ParamPos: 0
					.TypeIDName:@
					.SelectorParam: Data
					.NElements: 2
						PARAMSTRING: Title
						.Parent: /Cat/Amp/Volume/Status/Data/Track
						.BytesInMsg: 0
						.ParamPos: 1
						.TypeIDName: Any
						.MaxSize: 8
						PARAMARRAY: Marks
						.Parent: /Cat/Amp/Volume/Status/Data/Track
						.BytesInMsg: 0
						.ParamPos: 2
						.TypeIDName: Any
						.SelectorParam: Track
						.NMax: -1
							PARAMVOID: Mark
							.Parent: /Cat/Amp/Volume/Status/Data/Track/Marks
							.BytesInMsg: 0
							.ParamPos: 0
							.TypeIDName: Any
				PARAMARRAY: Free
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 0
				.ParamPos: 8
				.TypeIDName: Any
				.SelectorParam:@
				.NMax: 1
					PARAMSTRING: Word
					.Parent: /Cat/Amp/Volume/Status/Free
					.BytesInMsg: 0
					.ParamPos: 0
					.TypeIDName: Any
					.MaxSize: 1
				PARAMSTREAM: Body
				.Parent: /Cat/Amp/Volume/Status
				.BytesInMsg: 0
				.ParamPos: 9
				.TypeIDName: Any
				.SelectorParam: Pos
				.Length: 40
					PARAMSTREAMCASE: (Pos=0x02..0x05)
					.Parent: /Cat/Amp/Volume/Status/Body
					.BytesInMsg: 0
					.ParamPos: 0
					.TypeIDName:@
					.PosXString: 1..4
					.PosYMin: 2
					.PosYMax: 5
					.SeqCnt: 2
						PARAMSTREAM: First
						.Parent: /Cat/Amp/Volume/Status/Body/(Pos=0x02..0x05)
						.BytesInMsg: 0
						.ParamPos: 1
						.TypeIDName: Any
						.SelectorParam:@
						.Length: -1
							PARAMSTREAMCASE: {StreamCase}
							.Parent: /Cat/Amp/Volume/Status/Body/(Pos=0x02..0x05)/First
							.BytesInMsg: 0
							.ParamPos: 0
							.TypeIDName:@
							.PosXString: #NULL#
							.PosYMin: 3
							.PosYMax: 3
							.SeqCnt: 0
								PARAMVOID: Only
								.Parent: /Cat/Amp/Volume/Status/Body/(Pos=0x02..0x05)/First/{StreamCase}
								.BytesInMsg: 0
								.ParamPos: 1
								.TypeIDName: Any
						PARAMVOID: Second
						.Parent: /Cat/Amp/Volume/Status/Body/(Pos=0x02..0x05)
						.BytesInMsg: 0
						.ParamPos: 2 seq 1
						.TypeIDName: Any
						PARAMSTRING: Third
						.Parent: /Cat/Amp/Volume/Status/Body/(Pos=0x02..0x05)
						.BytesInMsg: 0
						.ParamPos: 2 seq 2
						.TypeIDName: Any
						.MaxSize: 3
					PARAMSTREAMCASE: (Pos>=0x06)
					.Parent: /Cat/Amp/Volume/Status/Body
					.BytesInMsg: 0
					.ParamPos: 0
					.TypeIDName:@
					.PosXString: 1..4
					.PosYMin: 6
					.PosYMax: 2147483647
					.SeqCnt: 0
						PARAMVOID: Rest
						.Parent: /Cat/Amp/Volume/Status/Body/(Pos>=0x06)
						.BytesInMsg: 0
						.ParamPos: 1
						.TypeIDName: Any
	DEFINITION:@
		DEFLISTTYPE:@
		.Parent: /Cat/
		.BytesInMsg: 0
			DEFTYPE: Unsigned_Word
			.IDName: type_unsigned_word
			.DefCode: 10
			.DefSize: 2 Bytes
			.Parent: /Cat//
			.BytesInMsg: 0
			DEFTYPE: Any
			.IDName: type_any
			.DefCode: 0
			.DefSize: 255 Bytes
			.Parent: /Cat//
			.BytesInMsg: 0
		DEFLISTUNIT:@
		.Parent: /Cat/
		.BytesInMsg: 0
			DEFUNIT: kmh
			.DefCode: 80
			.Parent: /Cat//
			.BytesInMsg: 0
)";

std::string BlanksForMarks(std::string text) {
    for (std::size_t at = text.find(":@\n"); at != std::string::npos; at = text.find(":@\n", at)) {
        text[at + 1] = ' ';
    }
    return text;
}

TEST(TreeLog, ShowsEveryKindOfNode) {
    const auto imported = ImportText(EveryNode());
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Warning #0070 in '/Cat/Amp/Volume/Speed':
  Can not find element <Step>
)");
    EXPECT_EQ(imported->tree, BlanksForMarks(kEveryNodeTree));
}

struct FormatCase {
    const char* name;
    const char* line;
};
constexpr FormatCase kFormats[] = {
    {"100%% of %d", "FBLOCK: 100% of 0"},
    {"%s%n%c", "FBLOCK: "},
    {"%04X", "FBLOCK: 0000"},
    {"%3s|", "FBLOCK:    |"},
    {"%5%", "FBLOCK: %5%"},
    {"%m", "FBLOCK: %m"},
    {"50%", "FBLOCK: 50%"},
    {"%f", "FBLOCK: 0.000000"},
};

TEST(TreeLog, TakesANameAsAFormatWithoutArguments) {
    for (const FormatCase& row : kFormats) {
        SCOPED_TRACE(row.name);
        ZMTFBlock block;
        block.SetName(row.name);
        EXPECT_EQ(DumpOf(block), row.line + std::string("\n.FBlockID: 0x00\n.Parent: -\n.BytesInMsg: 0\n"));
    }
}

TEST(TreeLog, TakesAParentsNameAsAFormatToo) {
    PlainNode parent("%d%%");
    const PlainNode node("Child", &parent);
    EXPECT_EQ(DumpOf(node), "\t.Parent: /0%\n\t.BytesInMsg: 0\n");
}

TEST(TreeLog, CannotBeHarmedByTheNameOfACatalog) {
    ZMTCatalog catalog;
    catalog.SetName("%n%s");
    catalog.SetFile("/%n%s.xml", "/x.xml");
    EXPECT_EQ(DumpOf(catalog), "CATALOG: \n.AbsPath: /.xml\n.Parent: -\n.BytesInMsg: 0\n");
}

TEST(TreeLog, ShowsBytesBelowZero) {
    PlainNode node("N");
    node.SetBytesInMsg(-3);
    EXPECT_EQ(DumpOf(node), ".Parent: -\n.BytesInMsg: -3\n");
}

TEST(TreeLog, IsNotWrittenWhileItIsClosed) {
    const auto imported = ImportText(EveryNode());
    ASSERT_TRUE(imported->ok);
    const TempDir dir;
    const WorkingDir here(dir.Path());
    ZMostTreeLog closed;
    EXPECT_TRUE(imported->catalog->Dump(closed));
    ASSERT_TRUE(closed.OpenTreeLog(dir.File("late.tree")));
    closed.CloseTreeLog();
    EXPECT_EQ(ReadFile(dir.File("late.tree")), "");
}

/// Tells how often its path was made.
class CountedParent : public PlainNode {
  public:
    std::string GetPath() const override {
        ++paths;
        return "/parent";
    }
    mutable int paths = 0;
};

TEST(TreeLog, AFullOneNeedsNoPaths) {
    const TempDir dir;
    const CountedParent parent;
    const PlainNode child("child", const_cast<CountedParent*>(&parent));
    // The line with the path takes 18 bytes with its tab and its line feed, the other one 16.
    for (const auto& [room, paths] : {std::pair(std::size_t{34}, 2), std::pair(std::size_t{33}, 1)}) {
        ZMostTreeLog log{Allowance(room)};
        ASSERT_TRUE(log.OpenTreeLog(dir.File("tree.log")));
        parent.paths = 0;
        child.Dump(log);
        child.Dump(log);
        EXPECT_EQ(parent.paths, paths);
    }
}

}  // namespace
}  // namespace tarvex::test::tree_log_test
