/// Which parameter selects the case of a stream at run time, and what the cases are called after it.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/array.h"
#include "params/record.h"
#include "params/streams.h"

namespace tarvex::test::stream_selector_test {
namespace {

const std::string kList = Array("Item", kByte);
const std::string kRec = Record(1, Field(1, "Cell", kByte));

/// The operation "Status" with these parameters in front of a stream "Body" with these cases.
std::unique_ptr<Imported> ImportBehind(const std::vector<std::string>& params, std::string_view cases) {
    std::string all;
    int pos = 1;
    for (const std::string& param : params) {
        all += param;
        ++pos;
    }
    return ImportText(CatalogOfParams(all + Param("Body", Stream(cases), At(pos))));
}

/// The same with one parameter of that name and type.
std::unique_ptr<Imported> ImportBehind(const char* name, const std::string& type, std::string_view cases) {
    return ImportBehind({Param(name, type, At(1))}, cases);
}

struct NameCase {
    const char* posY;
    const char* name;
};
constexpr NameCase kNames[] = {
    {"3", "(S=0x03)"},
    {"2..5", "(S=0x02..0x05)"},
    {">8", "(S>=0x08)"},
    {"0", "(S=0x00)"},
    {"#NULL#", "(S=0x00)"},
    {"255", "(S=0xFF)"},
    {"0x1A0", "(S=0x1A0)"},
    {"0x0A..0x1AB", "(S=0x0A..0x1AB)"},
    {"7..7", "(S=0x07)"},
    {"9..1", "(S=0x09..0x01)"},
    {"-1", "(S=0xFFFFFFFF)"},
    {"-2..1", "(S=0xFFFFFFFE..0x01)"},
    {"4..2147483647", "(S>=0x04)"},
    {"4..2147483646", "(S=0x04..0x7FFFFFFE)"},
    {">0", "(S>=0x00)"},
    {"2147483647", "(S=0x7FFFFFFF)"},
};

TEST(StreamSelector, NamesTheCaseWithItsValues) {
    for (const NameCase& row : kNames) {
        SCOPED_TRACE(row.posY);
        const auto imported = ImportBehind("S", kByte, Case("S", row.posY));
        EXPECT_EQ(imported->messages, "");
        const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "S"));
        ASSERT_EQ(stream->Count(), 1U);
        EXPECT_EQ(stream->GetAt(0)->GetName(), row.name);
        EXPECT_EQ(stream->GetAt(0)->GetAt(0)->GetPath(),
                  std::string("/Cat/Amp/Volume/Status/Body/") + row.name + "/F");
        EXPECT_EQ(stream->FindChild(row.name), stream->GetAt(0));
    }
}

struct SelectorCase {
    const char* what;
    const char* selectorName;
    const char* posX;
    const char* caseName;
};
constexpr SelectorCase kSelectors[] = {
    {"named by x", "S", "S", "(S=0x01)"},
    {"named by x in small letters", "Mode", "mode", "(Mode=0x01)"},
    {"named by x in capitals", "Mode", "MODE", "(Mode=0x01)"},
    {"Pos without an x", "Pos", "#NULL#", "(Pos=0x01)"},
    {"Pos with a number as x", "Pos", "3", "(Pos=0x01)"},
    {"Pos with a range as x", "Pos", "1..4", "(Pos=0x01)"},
    {"Pos with an empty x", "Pos", "", "(Pos=0x01)"},
    {"Pos with another name as x", "Pos", "Mode", "(Pos=0x01)"},
    {"Pos with the stream as x", "Pos", "Body", "(Pos=0x01)"},
    {"Pos by its name", "Pos", "pos", "(Pos=0x01)"},
    {"Pos in small letters", "pos", "#NULL#", "(pos=0x01)"},
    {"Pos in capitals", "POS", "x", "(POS=0x01)"},
    {"a name that nobody mentions", "S", "#NULL#", nullptr},
    {"another name", "S", "T", nullptr},
    {"name that only begins so", "PosX", "#NULL#", nullptr},
    {"beginning of the name", "Mode", "Mo", nullptr},
    {"a function", "S", "Volume", nullptr},
    {"the stream itself", "S", "Body", nullptr},
    {"the parameter of the case", "S", "F", nullptr},
};

TEST(StreamSelector, IsTheSiblingThatXNamesOrElsePos) {
    for (const SelectorCase& row : kSelectors) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportBehind(row.selectorName, kWord, Case(row.posX, "1"));
        EXPECT_EQ(imported->messages, "");
        const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
        ASSERT_NE(stream, nullptr);
        ASSERT_EQ(stream->Count(), 1U);
        EXPECT_EQ(stream->Selector(),
                  row.caseName == nullptr ? nullptr : InStatus<ZMTParam>(*imported, row.selectorName));
        EXPECT_EQ(stream->GetAt(0)->GetName(), row.caseName == nullptr ? "{StreamCase}" : row.caseName);
        EXPECT_EQ(stream->GetAt(0)->PosXString(), row.posX);
    }
}

struct KindCase {
    const char* what;
    std::string type;
    bool selects;
};

TEST(StreamSelector, IsANumberEnumerationArrayOrRecord) {
    const KindCase kinds[] = {
        {"number", kWord, true},   {"enumeration", kEnum, true}, {"array", kList, true},
        {"record", kRec, true},    {"string", kText, false},     {"bit field", kBits, false},
        {"boolean", kBool, false}, {"void", kVoid, false},       {"stream", Stream(Case("1")), false},
    };
    for (const KindCase& row : kinds) {
        SCOPED_TRACE(row.what);
        const auto byName = ImportBehind("S", row.type, Case("S", "1"));
        const auto byPos = ImportBehind("Pos", row.type, Case("#NULL#", "1"));
        for (const Imported* imported : {byName.get(), byPos.get()}) {
            EXPECT_EQ(imported->messages, "");
            const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
            ASSERT_NE(stream, nullptr);
            EXPECT_EQ(stream->Selector() != nullptr, row.selects);
            EXPECT_EQ(stream->GetAt(0)->GetName() != "{StreamCase}", row.selects);
        }
    }
}

TEST(StreamSelector, IsPosWhenXNamesAParameterThatCannotSelect) {
    for (const char* type : {kText, kBits, kBool, kVoid}) {
        const auto imported =
            ImportBehind({Param("Pos", kWord, At(1)), Param("S", type, At(2))}, Case("S", "1"));
        EXPECT_EQ(imported->messages, "") << type;
        const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
        ASSERT_NE(stream, nullptr) << type;
        EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "Pos")) << type;
        EXPECT_EQ(stream->GetAt(0)->GetName(), "(Pos=0x01)") << type;
    }
}

TEST(StreamSelector, IsTheOneThatXNamesEvenBesidePos) {
    const auto imported =
        ImportBehind({Param("Pos", kWord, At(1)), Param("S", kByte, At(2))}, Case("S", "1"));
    EXPECT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "S"));
    EXPECT_EQ(stream->GetAt(0)->GetName(), "(S=0x01)");
}

TEST(StreamSelector, MayStandBehindTheStream) {
    const auto imported =
        ImportText(CatalogOfParams(Param("Body", Stream(Case("S", "1")), At(1)) + Param("S", kByte, At(2))));
    EXPECT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "S"));
    EXPECT_EQ(stream->GetAt(0)->GetName(), "(S=0x01)");
}

TEST(StreamSelector, StandsInTheSameOperation) {
    const std::string inSet = "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>";
    const auto elsewhere =
        ImportText(CatalogOfParams(Param("S", kByte, inSet) + Param("Body", Stream(Case("S", "1")), At(1))));
    EXPECT_EQ(elsewhere->messages, "");
    const auto* alone = InStatus<ZMTParamStream>(*elsewhere, "Body");
    ASSERT_NE(alone, nullptr);
    EXPECT_EQ(alone->Selector(), nullptr);
    EXPECT_EQ(alone->GetAt(0)->GetName(), "{StreamCase}");

    const auto both = ImportText(CatalogOfParams(
        Param("S", kByte, inSet + At(1)) +
        Param("Body", Stream(Case("S", "1")), "<PCmdSet><ParamPos>2</ParamPos></PCmdSet>" + At(2))));
    EXPECT_EQ(both->messages, "");
    for (const char* operation : {"Set", "Status"}) {
        SCOPED_TRACE(operation);
        const auto* s = NodeAt<ZMTParam>(both->catalog, "Amp", "Volume", operation, "S");
        const auto* stream = NodeAt<ZMTParamStream>(both->catalog, "Amp", "Volume", operation, "Body");
        ASSERT_NE(s, nullptr);
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(stream->Selector(), s);
    }
}

TEST(StreamSelector, AllCasesOfAStreamShareOne) {
    const auto imported =
        ImportBehind("Pos", kWord, Case("pos", "1") + Case("#NULL#", "2..5") + Case("x", ">7"));
    EXPECT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    ASSERT_EQ(stream->Count(), 3U);
    EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "Pos"));
    EXPECT_EQ(stream->GetAt(0)->GetName(), "(Pos=0x01)");
    EXPECT_EQ(stream->GetAt(1)->GetName(), "(Pos=0x02..0x05)");
    EXPECT_EQ(stream->GetAt(2)->GetName(), "(Pos>=0x07)");
}

TEST(StreamSelector, SecondOneTakesTheCaseWithIt) {
    const auto imported =
        ImportBehind({Param("A", kByte, At(1)), Param("B", kByte, At(2))},
                     Case("A", "1") + Case("B", "2", Member("1", "A")) + Case("a", "3") + Case("B", "4"));
    EXPECT_EQ(imported->messages, R"(Error #0027 in '/Cat/Amp/Volume/Status/Body/{StreamCase}':
  Only one selector parameter per stream supported yet
Error #0027 in '/Cat/Amp/Volume/Status/Body/{StreamCase}':
  Only one selector parameter per stream supported yet
)");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "A"));
    EXPECT_EQ(stream->Count(), 2U);
    EXPECT_NE(stream->FindChild("(A=0x01)"), nullptr);
    EXPECT_NE(stream->FindChild("(A=0x03)"), nullptr);
    EXPECT_EQ(stream->FindChild("{StreamCase}"), nullptr);
}

TEST(StreamSelector, PosIsASecondOneToo) {
    const auto imported =
        ImportBehind({Param("Pos", kWord, At(1)), Param("A", kByte, At(2))}, Case("A", "1") + Case("2"));
    EXPECT_EQ(imported->messages, R"(Error #0027 in '/Cat/Amp/Volume/Status/Body/{StreamCase}':
  Only one selector parameter per stream supported yet
)");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Count(), 1U);
    EXPECT_EQ(stream->FindChild("(A=0x01)"), stream->GetAt(0));
}

TEST(StreamSelector, CaseWithoutOneIsNoSecondOne) {
    const auto imported = ImportBehind("A", kByte, Case("?", "1") + Case("A", "2") + Case("?", "3"));
    EXPECT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    ASSERT_EQ(stream->Count(), 3U);
    EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "A"));
    EXPECT_EQ(stream->GetAt(0)->GetName(), "{StreamCase}");
    EXPECT_EQ(stream->GetAt(1)->GetName(), "(A=0x02)");
    EXPECT_EQ(stream->GetAt(2)->GetName(), "{StreamCase}");
}

TEST(StreamSelector, EveryStreamHasItsOwn) {
    const auto imported =
        ImportText(CatalogOfParams(Param("A", kByte, At(1)) + Param("B", kByte, At(2)) +
                                   Param("First", Stream(Case("A", "1", Member("1", "One"))), At(3)) +
                                   Param("Second", Stream(Case("B", "1", Member("1", "Two"))), At(4))));
    EXPECT_EQ(imported->messages, "");
    const auto* first = InStatus<ZMTParamStream>(*imported, "First");
    const auto* second = InStatus<ZMTParamStream>(*imported, "Second");
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->Selector(), InStatus<ZMTParam>(*imported, "A"));
    EXPECT_EQ(second->Selector(), InStatus<ZMTParam>(*imported, "B"));
}

struct DataCase {
    const char* what;
    unsigned count;
    std::string fields;
    const char* messages;
    const char* caseName;
};

/// "Data" without a "Pos" is deleted from its record; whether that comes before or after the stream is
/// checked makes no difference.
TEST(StreamSelector, IsNoDataThatWillBeDeleted) {
    const std::string body = Stream(Case("Data", "1"));
    const DataCase rows[] = {
        {"array before the stream", 2, Field(1, "Data", kList) + Field(2, "Body", body),
         "Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n",
         "{StreamCase}"},
        {"record before the stream", 2, Field(1, "Data", kRec) + Field(2, "Body", body),
         "Error #0057 in '/Cat/Amp/Volume/Status/Rec/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n",
         "{StreamCase}"},
        {"array behind the stream", 2, Field(1, "Body", body) + Field(2, "Data", kList),
         "Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n",
         "{StreamCase}"},
        {"record behind the stream", 2, Field(1, "Body", body) + Field(2, "dATA", kRec),
         "Error #0057 in '/Cat/Amp/Volume/Status/Rec/dATA':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n",
         "{StreamCase}"},
        {"number", 2, Field(1, "Data", kByte) + Field(2, "Body", body), "", "(Data=0x01)"},
        {"array with a Pos that is a string", 3,
         Field(1, "Data", kList) + Field(2, "Body", body) + Field(3, "Pos", kText), "", "(Data=0x01)"},
        {"array with a Pos", 3, Field(1, "Pos", kWord) + Field(2, "Data", kList) + Field(3, "Body", body), "",
         "(Data=0x01)"},
    };
    for (const DataCase& row : rows) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(Param("Rec", Record(row.count, row.fields))));
        EXPECT_EQ(imported->messages, row.messages);
        const auto* stream = InStatus<ZMTParamStream>(*imported, "Rec", "Body");
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "Rec", "Data"));
        EXPECT_EQ(stream->GetAt(0)->GetName(), row.caseName);
    }
}

TEST(StreamSelector, OfAStreamInARecordIsAFieldOfIt) {
    const auto imported = ImportText(CatalogOfParams(
        Param("S", kByte, At(1)) +
        Param("Rec", Record(2, Field(1, "Pos", kWord) + Field(2, "Body", Stream(Case("S", "1")))), At(2))));
    EXPECT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Rec", "Body");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Selector(), InStatus<ZMTParam>(*imported, "Rec", "Pos"));
    EXPECT_EQ(stream->GetAt(0)->GetName(), "(Pos=0x01)");
}

TEST(StreamSelector, OfAStreamInAStreamStandsInTheSameCase) {
    const auto imported =
        ImportBehind("S", kByte,
                     Case("S", "1", Member("1", "T", kByte) + Member("2", "Inner", Stream(Case("T", "2")))) +
                         Case("S", "2", Member("1", "Inner", Stream(Case("T", "3") + Case("S", "4")))));
    EXPECT_EQ(imported->messages, "");
    const auto* first = InStatus<ZMTParamStream>(*imported, "Body", "(S=0x01)", "Inner");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->Selector(), InStatus<ZMTParam>(*imported, "Body", "(S=0x01)", "T"));
    EXPECT_EQ(first->GetAt(0)->GetAt(0)->GetPath(), "/Cat/Amp/Volume/Status/Body/(S=0x01)/Inner/(T=0x02)/F");
    const auto* second = InStatus<ZMTParamStream>(*imported, "Body", "(S=0x02)", "Inner");
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->Selector(), nullptr);
    EXPECT_EQ(second->GetAt(0)->GetName(), "{StreamCase}");
}

TEST(StreamSelector, OfAStreamInAnArrayIsNone) {
    const auto imported = ImportText(
        CatalogOfParams(Param("Pos", kWord, At(1)) + Param("S", kByte, At(2)) +
                        Param("List", Array("Body", Stream(Case("S", "1") + Case("List", "2"))), At(3))));
    EXPECT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "List", "Body");
    ASSERT_NE(stream, nullptr);
    ASSERT_EQ(stream->Count(), 2U);
    EXPECT_EQ(stream->Selector(), nullptr);
    EXPECT_EQ(stream->GetAt(0)->GetName(), "{StreamCase}");
}

/// Messages about what a case holds have its new name.
TEST(StreamSelector, NamesTheCaseBeforeItsParametersAreChecked) {
    const auto imported = ImportBehind("S", kByte,
                                       Case("S", "3", Member("1", "Data", kList) + Member("2", "S")) +
                                           Case("S", ">4", Member("1", "Body") + Member("2", "body")));
    EXPECT_EQ(imported->messages, R"(Error #0047 in '/Cat/Amp/Volume/Status/Body/(S=0x03)/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Warning #0009 in '/Cat/Amp/Volume/Status/Body/(S=0x03)/S':
  Multiple use of parameter name 'S'
Warning #0009 in '/Cat/Amp/Volume/Status/Body/(S>=0x04)/body':
  Multiple use of parameter name 'body'
)");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    ASSERT_EQ(stream->Count(), 2U);
    EXPECT_EQ(stream->GetAt(0)->FindChild("Data"), nullptr);
    EXPECT_EQ(stream->GetAt(0)->Count(), 1U);
    EXPECT_EQ(stream->GetAt(1)->Count(), 2U);
}

TEST(StreamSelector, NamesOfStepsOfOnePositionAndOfOtherCasesMayRepeat) {
    const auto imported = ImportBehind("S", kByte,
                                       Case("S", "1", Member("1seq1", "F") + Member("1seq2", "F")) +
                                           Case("S", "2") + Case("S", "2..2", "") + Case("S", "3"));
    EXPECT_EQ(imported->messages, R"(Warning #0018 in '/Cat/Amp/Volume/Body/{StreamCase}':
  Can not find element <StreamParam>
Warning #0019 in '/Cat/Amp/Volume/Body/{StreamCase}':
  <StreamCase> without <StreamParam> not supported yet
Warning #0033 in '/Cat/Amp/Volume/Body':
  Double definition of element at position 2
)");
}

TEST(StreamSelector, IsFoundInTheSecondPassOnlyAndNotTakenOverByCopies) {
    const auto imported = ImportBehind("S", kByte, Case("S", "1"));
    auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    ASSERT_NE(stream->Selector(), nullptr);
    const std::unique_ptr<ZMTNode> clone = stream->Clone();
    auto& copy = dynamic_cast<ZMTParamStream&>(*clone);
    EXPECT_EQ(copy.Selector(), nullptr);
    ElementImport import;
    EXPECT_TRUE(copy.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(copy.Selector(), stream->Selector());
    EXPECT_TRUE(copy.Resolve(import.Context()));
    EXPECT_EQ(copy.Count(), 1U);
}

TEST(StreamSelector, OfACopiedFunctionIsTheCopiedParameter) {
    const std::string function =
        "<Function FktDefId=\"f\"><FunctionID>1</FunctionID><FunctionName>Volume</FunctionName>"
        "<FunctionClass><Property><PUnclassified>" +
        Param("S", kByte, At(1)) + Param("Body", Stream(Case("S", "1")), At(2)) +
        "</PUnclassified></Property></FunctionClass></Function>";
    const auto imported =
        ImportText(CatalogOf(BlockOf(function) + "<FBlock><FBlockID>1</FBlockID><FBlockName>Copy</FBlockName>"
                                                 "<Function FktDefRef=\"f\"/></FBlock>"));
    EXPECT_EQ(imported->messages, "");
    for (const char* block : {"Amp", "Copy"}) {
        SCOPED_TRACE(block);
        const auto* s = NodeAt<ZMTParam>(imported->catalog, block, "Volume", "Status", "S");
        const auto* stream = NodeAt<ZMTParamStream>(imported->catalog, block, "Volume", "Status", "Body");
        ASSERT_NE(s, nullptr);
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(stream->Selector(), s);
        EXPECT_EQ(stream->GetAt(0)->GetAt(0)->GetPath(),
                  std::string("/Cat/") + block + "/Volume/Status/Body/(S=0x01)/F");
    }
}

TEST(StreamSelector, StandsInTheTreeLogByItsName) {
    const auto imported = ImportBehind("POS", kWord, Case("pos", "1", Member("1", "T")));
    ASSERT_EQ(imported->messages, "");
    const auto* stream = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(DumpOf(*stream),
              "\t\t\t\tPARAMSTREAM: Body\n"
              "\t\t\t\t.Parent: /Cat/Amp/Volume/Status\n"
              "\t\t\t\t.BytesInMsg: 0\n"
              "\t\t\t\t.ParamPos: 1\n"
              "\t\t\t\t.TypeIDName: Stream\n"
              "\t\t\t\t.SelectorParam: POS\n"
              "\t\t\t\t.Length: 8\n"
              "\t\t\t\t\tPARAMSTREAMCASE: (POS=0x01)\n"
              "\t\t\t\t\t.Parent: /Cat/Amp/Volume/Status/Body\n"
              "\t\t\t\t\t.BytesInMsg: 0\n"
              "\t\t\t\t\t.ParamPos: 0\n"
              "\t\t\t\t\t.TypeIDName: \n"
              "\t\t\t\t\t.PosXString: pos\n"
              "\t\t\t\t\t.PosYMin: 1\n"
              "\t\t\t\t\t.PosYMax: 1\n"
              "\t\t\t\t\t.SeqCnt: 0\n"
              "\t\t\t\t\t\tPARAMSTRING: T\n"
              "\t\t\t\t\t\t.Parent: /Cat/Amp/Volume/Status/Body/(POS=0x01)\n"
              "\t\t\t\t\t\t.BytesInMsg: 0\n"
              "\t\t\t\t\t\t.ParamPos: 1\n"
              "\t\t\t\t\t\t.TypeIDName: String\n"
              "\t\t\t\t\t\t.MaxSize: 8\n");
}

}  // namespace
}  // namespace tarvex::test::stream_selector_test
