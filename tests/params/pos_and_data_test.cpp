/// Which parameter governs an array or record at run time: "Pos" for "Data", the container for one inside
/// another, none for all others.

#include "params/pos_and_data.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/array.h"
#include "params/composites.h"
#include "params/record.h"
#include "support/catalog_import.h"

namespace tarvex::test::pos_and_data_test {
namespace {

const std::string kList = Array("Item", kByte);
const std::string kRec = Record(1, Field(1, "F", kByte));

struct PosCase {
    const char* what;
    const char* posName;
    std::string posType;
    const char* dataName;
    bool selects;
};

const PosCase kPositions[] = {
    {"number", "Pos", kWord, "Data", true},
    {"enumeration", "Pos", kEnum, "Data", true},
    {"array", "Pos", kList, "Data", true},
    {"record", "Pos", kRec, "Data", true},
    {"string", "Pos", kText, "Data", false},
    {"bit field", "Pos", kBits, "Data", false},
    {"boolean", "Pos", kBool, "Data", false},
    {"void", "Pos", kVoid, "Data", false},
    {"small letters", "pos", kWord, "data", true},
    {"capitals", "POS", kWord, "DATA", true},
    {"string in capitals", "POS", kText, "dATA", false},
};

TEST(PosAndData, PosSelectsInAnOperationIfItIsOfAKindThatCan) {
    for (const PosCase& row : kPositions) {
        SCOPED_TRACE(row.what);
        for (const std::string& type : {kList, kRec}) {
            const auto imported = ImportText(
                CatalogOfParams(Param(row.posName, row.posType, At(1)) + Param(row.dataName, type, At(2))));
            EXPECT_TRUE(imported->ok);
            EXPECT_EQ(imported->messages, "");
            const ZMTParam* pos = InStatus<ZMTParam>(*imported, "Pos");
            ASSERT_NE(pos, nullptr);
            const ZMTParam* expected = row.selects ? pos : nullptr;
            if (type == kList) {
                const auto* data = InStatus<ZMTParamArray>(*imported, "Data");
                ASSERT_NE(data, nullptr);
                EXPECT_EQ(data->Selector(), expected);
            } else {
                const auto* data = InStatus<ZMTParamRecord>(*imported, "Data");
                ASSERT_NE(data, nullptr);
                EXPECT_EQ(data->Selector(), expected);
            }
        }
    }
}

TEST(PosAndData, PosSelectsInARecordIfItIsOfAKindThatCan) {
    for (const PosCase& row : kPositions) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(
            Param("Rec", Record(2, Field(1, row.posName, row.posType) + Field(2, row.dataName, kList)))));
        EXPECT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        const ZMTParam* pos = InStatus<ZMTParam>(*imported, "Rec", "Pos");
        const auto* data = InStatus<ZMTParamArray>(*imported, "Rec", "Data");
        ASSERT_NE(pos, nullptr);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(data->Selector(), row.selects ? pos : nullptr);
    }
}

TEST(PosAndData, PosMayStandBehindData) {
    const auto imported =
        ImportText(CatalogOfParams(Param("Data", kList, At(1)) + Param("Pos", kWord, At(2))));
    EXPECT_EQ(imported->messages, "");
    const auto* data = InStatus<ZMTParamArray>(*imported, "Data");
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->Selector(), InStatus<ZMTParam>(*imported, "Pos"));
    EXPECT_NE(data->Selector(), nullptr);
}

TEST(PosAndData, EveryOperationHasItsOwnPos) {
    const auto imported =
        ImportText(CatalogOfParams(Param("Pos", kWord, "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>" + At(1)) +
                                   Param("Data", kRec, "<PCmdSet><ParamPos>2</ParamPos></PCmdSet>" + At(2))));
    EXPECT_EQ(imported->messages, "");
    for (const char* operation : {"Set", "Status"}) {
        SCOPED_TRACE(operation);
        const auto* pos = NodeAt<ZMTParam>(imported->catalog, "Amp", "Volume", operation, "Pos");
        const auto* data = NodeAt<ZMTParamRecord>(imported->catalog, "Amp", "Volume", operation, "Data");
        ASSERT_NE(pos, nullptr);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(data->Selector(), pos);
    }
}

struct LostCase {
    const char* what;
    std::string params;
    const char* messages;
};

/// Whatever stands in "Status" but is no sibling does not help.
TEST(PosAndData, DataWithoutPosTakesItsOperationWithIt) {
    const LostCase cases[] = {
        {"array", Param("Data", kList),
         R"(Error #0047 in '/Cat/Amp/Volume/Status/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
        {"record", Param("Data", kRec),
         R"(Error #0057 in '/Cat/Amp/Volume/Status/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
        {"other case of letters", Param("dAtA", kList),
         R"(Error #0047 in '/Cat/Amp/Volume/Status/dAtA':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
        {"Pos in another operation",
         Param("Pos", kWord, "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>") + Param("Data", kRec),
         R"(Error #0057 in '/Cat/Amp/Volume/Status/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
)"},
        {"Pos in a record beside it",
         Param("Rec", Record(1, Field(1, "Pos", kWord)), At(1)) + Param("Data", kList, At(2)),
         R"(Error #0047 in '/Cat/Amp/Volume/Status/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
        {"name that only begins so", Param("PosX", kWord, At(1)) + Param("Data", kList, At(2)),
         R"(Error #0047 in '/Cat/Amp/Volume/Status/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
    };
    for (const LostCase& row : cases) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(row.params));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
        EXPECT_NE(NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume"), nullptr);
        EXPECT_EQ(NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "Status"), nullptr);
    }
}

TEST(PosAndData, DataWithoutPosTakesOnlyTheOperationsItStandsIn) {
    const auto imported =
        ImportText(CatalogOfParams(Param("Pos", kWord, "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>") +
                                   Param("Data", kList, "<PCmdSet><ParamPos>2</ParamPos></PCmdSet>" + At(1)) +
                                   Param("Level", kByte, "<PCmdSetGet><ParamPos>1</ParamPos></PCmdSetGet>")));
    EXPECT_EQ(imported->messages, R"(Error #0047 in '/Cat/Amp/Volume/Status/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0122 in '/Cat/Amp/Volume':
  Failed to import operation 'Status'
)");
    EXPECT_EQ(NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "Set")->Count(), 2U);
    EXPECT_EQ(NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "SetGet")->Count(), 1U);
    EXPECT_EQ(NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "Status"), nullptr);
}

/// The operation knows a "Pos", but that is no sibling of what stands inside a container.
TEST(PosAndData, DataWithoutPosInAContainerIsDeletedAndTheContainerStays) {
    const std::string pos = Param("Pos", kWord, At(1));
    const LostCase cases[] = {
        {"array in a record",
         pos + Param("Box", Record(2, Field(1, "F", kByte) + Field(2, "Data", kList)), At(2)),
         "Error #0047 in '/Cat/Amp/Volume/Status/Box/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n"},
        {"record in a record",
         pos + Param("Box", Record(2, Field(1, "F", kByte) + Field(2, "Data", kRec)), At(2)),
         "Error #0057 in '/Cat/Amp/Volume/Status/Box/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n"},
        {"the only field of a record", pos + Param("Box", Record(1, Field(1, "Data", kRec)), At(2)),
         "Error #0057 in '/Cat/Amp/Volume/Status/Box/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n"
         "Warning #0058 in '/Cat/Amp/Volume/Status/Box':\n"
         "  Record contains no valid parameter\n"},
        {"array as the element of an array", pos + Param("Box", Array("Data", kList), At(2)),
         "Error #0047 in '/Cat/Amp/Volume/Status/Box/Data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n"},
        {"record as the element of an array", pos + Param("Box", Array("data", kRec), At(2)),
         "Error #0057 in '/Cat/Amp/Volume/Status/Box/data':\n"
         "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n"},
    };
    for (const LostCase& row : cases) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(row.params));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
        const auto* box = InStatus<ZMTParam>(*imported, "Box");
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->FindChild("Data"), nullptr);
        EXPECT_NE(InStatus<ZMTParam>(*imported, "Pos"), nullptr);
    }
}

TEST(PosAndData, DataOfAnotherKindNeedsNoPos) {
    for (const char* type : {kByte, kText, kEnum, kBits, kBool, kVoid}) {
        const auto imported = ImportText(CatalogOfParams(Param("Data", type)));
        EXPECT_EQ(imported->messages, "") << type;
        EXPECT_NE(InStatus<ZMTParam>(*imported, "Data"), nullptr) << type;
    }
}

TEST(PosAndData, DataWithoutAParentHasNoPos) {
    ElementImport import;
    ZMTParamArray array;
    array.SetName("Data");
    EXPECT_FALSE(array.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(),
              "Error #0047 in '/Data':\n"
              "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n");
    ZMTParamRecord record;
    record.SetName("Data");
    EXPECT_FALSE(record.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(),
              "Error #0057 in '/Data':\n"
              "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n");
}

TEST(Selector, IsTheContainerOfAnArrayOrRecordInside) {
    const auto imported = ImportText(CatalogOfParams(Param(
        "Rec", Record(2, Field(1, "Inner", kRec) + Field(2, "List", Array("Row", Array("Cell", kRec)))))));
    ASSERT_EQ(imported->messages, "");
    const auto* rec = InStatus<ZMTParamRecord>(*imported, "Rec");
    const auto* inner = InStatus<ZMTParamRecord>(*imported, "Rec", "Inner");
    const auto* list = InStatus<ZMTParamArray>(*imported, "Rec", "List");
    const auto* row = InStatus<ZMTParamArray>(*imported, "Rec", "List", "Row");
    const auto* cell = InStatus<ZMTParamRecord>(*imported, "Rec", "List", "Row", "Cell");
    ASSERT_NE(rec, nullptr);
    ASSERT_NE(inner, nullptr);
    ASSERT_NE(list, nullptr);
    ASSERT_NE(row, nullptr);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(rec->Selector(), nullptr);
    EXPECT_EQ(inner->Selector(), rec);
    EXPECT_EQ(list->Selector(), rec);
    EXPECT_EQ(row->Selector(), list);
    EXPECT_EQ(cell->Selector(), row);
}

TEST(Selector, IsNoneInAnOperationEvenBesidePos) {
    const auto imported = ImportText(CatalogOfParams(
        Param("Pos", kWord, At(1)) + Param("List", kList, At(2)) + Param("Rec", kRec, At(3))));
    ASSERT_EQ(imported->messages, "");
    const auto* list = InStatus<ZMTParamArray>(*imported, "List");
    const auto* rec = InStatus<ZMTParamRecord>(*imported, "Rec");
    ASSERT_NE(list, nullptr);
    ASSERT_NE(rec, nullptr);
    EXPECT_EQ(list->Selector(), nullptr);
    EXPECT_EQ(rec->Selector(), nullptr);
}

TEST(Selector, IsTheRecordForAnArrayBesidePosThatIsNotData) {
    const auto imported = ImportText(
        CatalogOfParams(Param("Rec", Record(2, Field(1, "Pos", kWord) + Field(2, "List", kList)))));
    ASSERT_EQ(imported->messages, "");
    const auto* list = InStatus<ZMTParamArray>(*imported, "Rec", "List");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->Selector(), InStatus<ZMTParam>(*imported, "Rec"));
    EXPECT_NE(list->Selector(), nullptr);
}

TEST(Selector, IsFoundInTheSecondPassOnlyAndNotTakenOverByCopies) {
    const auto imported = ImportText(
        CatalogOfParams(Param("Pos", kWord, At(1)) + Param("Data", kList, At(2)) +
                        Param("Rec", Record(2, Field(1, "Inner", kRec) + Field(2, "List", kList)), At(3))));
    ASSERT_EQ(imported->messages, "");
    const auto* data = InStatus<ZMTParamArray>(*imported, "Data");
    const auto* rec = InStatus<ZMTParamRecord>(*imported, "Rec");
    ASSERT_NE(data, nullptr);
    ASSERT_NE(rec, nullptr);
    ASSERT_NE(data->Selector(), nullptr);
    const std::unique_ptr<ZMTNode> dataCopy = data->Clone();
    EXPECT_EQ(dynamic_cast<ZMTParamArray&>(*dataCopy).Selector(), nullptr);
    const std::unique_ptr<ZMTNode> recCopy = rec->Clone();
    EXPECT_EQ(dynamic_cast<ZMTParamRecord&>(*recCopy->FindChild("Inner")).Selector(), nullptr);
    EXPECT_EQ(dynamic_cast<ZMTParamArray&>(*recCopy->FindChild("List")).Selector(), nullptr);
}

TEST(Selector, OfACopyIsFoundInItsOwnPlace) {
    const auto imported = ImportText(CatalogOfParams(Param("Rec", Record(1, Field(1, "Inner", kRec)))));
    const auto* rec = InStatus<ZMTParamRecord>(*imported, "Rec");
    ASSERT_NE(rec, nullptr);
    const std::unique_ptr<ZMTNode> copy = rec->Clone();
    copy->SetParent(nullptr);
    ElementImport import;
    EXPECT_TRUE(copy->Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(dynamic_cast<ZMTParamRecord&>(*copy->FindChild("Inner")).Selector(), copy.get());
}

TEST(Selector, OfACopiedFunctionIsTheCopiedPos) {
    const std::string function =
        "<Function FktDefId=\"f\"><FunctionID>1</FunctionID><FunctionName>Volume</FunctionName>"
        "<FunctionClass><Property><PArray>" +
        std::string("<PAParam><ParamName>Pos</ParamName><PAParamOPType>") + At(1) + "</PAParamOPType>" +
        kWord + "</PAParam><PAParam><ParamName>Data</ParamName><PAParamOPType>" + At(2) + "</PAParamOPType>" +
        kRec + "</PAParam></PArray></Property></FunctionClass></Function>";
    const auto imported =
        ImportText(CatalogOf(BlockOf(function) + "<FBlock><FBlockID>1</FBlockID><FBlockName>Copy</FBlockName>"
                                                 "<Function FktDefRef=\"f\"/></FBlock>"));
    EXPECT_EQ(imported->messages, "");
    for (const char* block : {"Amp", "Copy"}) {
        SCOPED_TRACE(block);
        const auto* pos = NodeAt<ZMTParam>(imported->catalog, block, "Volume", "Status", "Pos");
        const auto* data = NodeAt<ZMTParamRecord>(imported->catalog, block, "Volume", "Status", "Data");
        ASSERT_NE(pos, nullptr);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(data->Selector(), pos);
        EXPECT_EQ(data->GetAt(1)->GetPath(), std::string("/Cat/") + block + "/Volume/Status/Data/F");
    }
}

TEST(Selector, StandsInTheTreeLogByItsName) {
    const auto imported =
        ImportText(CatalogOfParams(Param("POS", kWord, At(1)) + Param("Data", Array("Entry", kRec), At(2))));
    ASSERT_EQ(imported->messages, "");
    const auto* data = InStatus<ZMTParamArray>(*imported, "Data");
    ASSERT_NE(data, nullptr);
    const std::string dump = DumpOf(*data);
    EXPECT_EQ(dump.find("\t\t\t\tPARAMARRAY: Data\n"
                        "\t\t\t\t.Parent: /Cat/Amp/Volume/Status\n"
                        "\t\t\t\t.BytesInMsg: 0\n"
                        "\t\t\t\t.ParamPos: 1\n"
                        "\t\t\t\t.TypeIDName: Array\n"
                        "\t\t\t\t.SelectorParam: POS\n"
                        "\t\t\t\t.NMax: 3\n"
                        "\t\t\t\t\tPARAMRECORD: Entry\n"
                        "\t\t\t\t\t.Parent: /Cat/Amp/Volume/Status/Data\n"
                        "\t\t\t\t\t.BytesInMsg: 0\n"
                        "\t\t\t\t\t.ParamPos: 0\n"
                        "\t\t\t\t\t.TypeIDName: Record\n"
                        "\t\t\t\t\t.SelectorParam: Data\n"
                        "\t\t\t\t\t.NElements: 1\n"),
              0U)
        << dump;
}

}  // namespace
}  // namespace tarvex::test::pos_and_data_test
