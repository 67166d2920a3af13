/// Large catalogs take work that grows with their size, not with its square.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "cost/work.h"
#include "params/composites.h"
#include "support/catalog_import.h"

namespace tarvex::test::import_cost_test {
namespace {

/// `piece` of 0, 1, ..., one after the other.
template <class Piece>
std::string Each(unsigned count, const Piece& piece) {
    std::string text;
    for (unsigned number = 0; number < count; ++number) {
        text += piece(number);
    }
    return text;
}

std::string Times(unsigned count, const std::string& text) {
    return Each(count, [&](unsigned) { return text; });
}

std::string Named(const char* stem, unsigned number) {
    return stem + std::to_string(number);
}

std::string OneFunction(unsigned id, const std::string& attributes, const std::string& functionClass) {
    return "<Function " + attributes + "><FunctionID>" + std::to_string(id) + "</FunctionID><FunctionName>" +
           Named("F", id) + "</FunctionName><FunctionClass>" + functionClass + "</FunctionClass></Function>";
}

std::string Property(const std::string& params) {
    return "<Property><PUnclassified>" + params + "</PUnclassified></Property>";
}

std::string Functions(unsigned count) {
    return CatalogOf(BlockOf(Each(count, [](unsigned id) {
        return VoidFunction(std::to_string(id), Named("FunctionWithALongCommonName", id));
    })));
}

std::string EnumerationOf(unsigned values) {
    return "<TEnum TypeRef=\"type_enum\" TEnumMax=\"65535\">" +
           Each(values,
                [](unsigned code) {
                    return "<TEnumValue Code=\"" + std::to_string(code) + "\">" + Named("Value", code) +
                           "</TEnumValue>";
                }) +
           "</TEnum>";
}

std::string EnumerationValues(unsigned count) {
    return CatalogOfParams(Param("Mode", EnumerationOf(count)));
}

/// Five functions that refer to all error functions.
std::string ErrorFunctions(unsigned count) {
    const auto error = [](unsigned pos) {
        return "<ERParam ParamDefId=\"" + Named("E", pos) + "\"><ParamName>" + Named("E", pos) +
               "</ParamName><ERParamOPType><MReportError><ParamPos>" + std::to_string(pos) +
               "</ParamPos></MReportError></ERParamOPType>" + kVoid + "</ERParam>";
    };
    const auto reference = [](unsigned pos) { return "<ERParam ParamDefRef=\"" + Named("E", pos) + "\"/>"; };
    const std::string trigger = "<Method><MTrigger>" + Each(count, reference) + "</MTrigger></Method>";
    return CatalogOf(Each(count, error) +
                     BlockOf(Each(5, [&](unsigned id) { return OneFunction(id, "", trigger); })));
}

/// Text among very many comments and one child element.
std::string NameBehindComments(unsigned count) {
    return CatalogOf("<FBlock><FBlockName>" + Times(count, " <!---->") +
                     " <x/>Amp</FBlockName><FBlockID>1</FBlockID>" + VoidFunction("1", "Mute") + "</FBlock>");
}

/// Copies that have no place in the block are refused before they are made.
std::string FunctionCopiedInVain(unsigned count) {
    return CatalogOf(BlockOf(OneFunction(1, "FktDefId=\"f\"", Property(Param("Mode", EnumerationOf(count)))) +
                             Times(count, "<Function FktDefRef=\"f\"/>")));
}

/// Parameters that find their position taken are refused before they are cloned.
std::string ErrorFunctionMergedInVain(unsigned count) {
    return CatalogOfParams(
        "<ERParam ParamDefId=\"e\"><ParamName>Code</ParamName><ERParamOPType><PReportError>"
        "<ParamPos>1</ParamPos></PReportError></ERParamOPType><ERParamType>" +
        EnumerationOf(count) + "</ERParamType></ERParam>" + Times(count, "<ERParam ParamDefRef=\"e\"/>"));
}

/// A record whose fields, all of that type, have a common name or one each.
std::string RecordOf(unsigned count, const std::string& type, const char* name, bool areEqual) {
    return Record(count, Each(count, [&](unsigned number) {
                      return Field(static_cast<int>(number + 1), areEqual ? name : Named(name, number), type);
                  }));
}

/// Every operation has a copy of its own, in which every field looks for its name.
std::string RecordInEightOperations(unsigned count) {
    return CatalogOfParams(Param("Rec", RecordOf(count, kText, "FieldWithALongCommonName", false),
                                 "<PCmdSet/><PCmdGet/><PCmdSetGet/><PCmdIncrement/><PCmdDecrement/>"
                                 "<PCmdGetInterface/><PReportStatus/><PReportError/>"));
}

/// Every field but the first has a name that stands before it.
std::string FieldsOfOneName(unsigned count) {
    return CatalogOfParams(Param("Rec", RecordOf(count, kText, "Same", true)));
}

/// Every field is deleted in the second pass, so that the next one finds no name before it.
std::string FieldsThatFail(unsigned count) {
    return CatalogOfParams(Param("Rec", RecordOf(count, Array("Item", kText), "Data", true)));
}

/// The fields look for their names in the records around theirs, too.
std::string RecordsInARecord(unsigned count) {
    return CatalogOfParams(
        Param("Rec", RecordOf(count, Record(1, Field(1, "Value", kText)), "Entry", false)));
}

template <class PosY>
std::string StreamOf(unsigned count, const PosY& posY) {
    const auto streamCase = [&](unsigned number) {
        return R"(<StreamCase><PosDescription PosX="S" PosY=")" + posY(number) +
               R"("/><StreamParam><ParamName ParamIdx="1">F</ParamName>)" + kVoid +
               "</StreamParam></StreamCase>";
    };
    return CatalogOfParams(Param("S", kByte, At(1)) + Param("Body",
                                                            R"(<TStream TypeRef="type_stream" Length="8">)" +
                                                                Each(count, streamCase) + "</TStream>",
                                                            At(2)));
}

std::string DifferentCases(unsigned count) {
    return StreamOf(count, [](unsigned number) { return std::to_string(number); });
}

std::string OverlappingCases(unsigned count) {
    return StreamOf(count, [](unsigned number) { return Named(">", number); });
}

std::string CasesInTheFirst(unsigned count) {
    return StreamOf(count, [](unsigned number) { return number == 0 ? "0..20000" : std::to_string(number); });
}

std::string EqualCases(unsigned count) {
    return StreamOf(count, [](unsigned) { return std::string("7"); });
}

/// In descending order.
std::string CaseOf(unsigned count, const char* index) {
    const auto param = [&](unsigned number) {
        return "<StreamParam><ParamName ParamIdx=\"" + Named(index, count - number) + "\">" +
               Named("ParameterWithALongCommonName", count - number) + "</ParamName>" + kVoid +
               "</StreamParam>";
    };
    return CatalogOfParams(Param("Body",
                                 R"(<TStream TypeRef="type_stream" Length="8"><StreamCase>)" +
                                     Each(count, param) + "</StreamCase></TStream>",
                                 "<PCmdSet/><PReportStatus/>"));
}

std::string CaseOfParams(unsigned count) {
    return CaseOf(count, "");
}

std::string CaseOfOnePosition(unsigned count) {
    return CaseOf(count, "1seq");
}

using Names = std::vector<const char*>;

/// An entry of the log, and how often it comes: once, for each piece or for each but the first.
enum class Often { Never, Once, EachButFirst, Each };
struct Entry {
    Often often = Often::Never;
    const char* text = "";
};

enum class Children { None, One, All };

/// A catalog of `count` pieces of something. The node at the path has so many children: none, one or one for
/// each piece.
struct CostCase {
    const char* what;
    unsigned count;
    std::string (*catalog)(unsigned count);
    Names path;
    Children children = Children::All;
    Entry entry = {};
    Entry last = {};
};

const Names kBlock = {"Amp"};
const Names kRec = {"Amp", "Volume", "Status", "Rec"};
const Names kBody = {"Amp", "Volume", "Status", "Body"};

const CostCase kRows[] = {
    {"functions", 200, Functions, kBlock},
    {"values of an enumeration", 400, EnumerationValues, {"Amp", "Volume", "Status", "Mode"}},
    {"error functions", 100, ErrorFunctions, {"Amp", "F4", "Error"}},
    {"comments in front of a name", 2000, NameBehindComments, kBlock, Children::One},
    {"copies of a function of as many values",
     300,
     FunctionCopiedInVain,
     kBlock,
     Children::One,
     {Often::Each,
      "Error #0108 in '/Cat/Amp/F1':\n  Double definition of element with ID 0x1\n"
      "Error #0145 in '/Cat/Amp':\n  Failed to import element <Function>\n"}},
    {"uses of an error function of as many values",
     300,
     ErrorFunctionMergedInVain,
     {"Amp", "Volume", "Error"},
     Children::One,
     {Often::Each,
      "Error #0134 in '/Cat/Amp/Volume':\n  Position 1 of 'Code' already occupied\n"
      "Error #0127 in '/Cat/Amp/Volume':\n  Merge of 'Temp_ERFunction_e' failed\n"}},
    {"fields in eight operations", 200, RecordInEightOperations, kRec},
    {"fields of one name",
     500,
     FieldsOfOneName,
     kRec,
     Children::All,
     {Often::EachButFirst,
      "Warning #0009 in '/Cat/Amp/Volume/Status/Rec/Same':\n  Multiple use of parameter name 'Same'\n"}},
    {"fields that fail their check",
     500,
     FieldsThatFail,
     kRec,
     Children::None,
     {Often::Each,
      "Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':\n"
      "  Can't find 'Pos' parameter to 'Data' parameter of record or array\n"},
     {Often::Once, "Warning #0058 in '/Cat/Amp/Volume/Status/Rec':\n  Record contains no valid parameter\n"}},
    {"records in a record", 300, RecordsInARecord, kRec},
    {"cases", 300, DifferentCases, kBody},
    {"overlapping cases",
     300,
     OverlappingCases,
     kBody,
     Children::All,
     {Often::Once, "Warning #0035 in '/Cat/Amp/Volume/Body':\n  Overlapping streamcase(s)\n"}},
    {"cases in the range of the first",
     300,
     CasesInTheFirst,
     kBody,
     Children::All,
     {Often::Once, "Warning #0035 in '/Cat/Amp/Volume/Body':\n  Overlapping streamcase(s)\n"}},
    {"equal cases",
     300,
     EqualCases,
     kBody,
     Children::One,
     {Often::EachButFirst,
      "Warning #0033 in '/Cat/Amp/Volume/Body':\n  Double definition of element at position 7\n"}},
    {"parameters of a case", 300, CaseOfParams, {"Amp", "Volume", "Status", "Body", "{StreamCase}"}},
    {"parameters of a case at one position",
     300,
     CaseOfOnePosition,
     {"Amp", "Volume", "Status", "Body", "{StreamCase}"}},
};

std::string TextOf(const Entry& entry, unsigned count) {
    switch (entry.often) {
        case Often::Never:
            return "";
        case Often::Once:
            return entry.text;
        case Often::EachButFirst:
            return Times(count - 1, entry.text);
        case Often::Each:
            return Times(count, entry.text);
    }
    return "?";
}

unsigned ChildrenAt(ZMTNode& root, const Names& path) {
    const ZMTNode* node = &root;
    for (const char* name : path) {
        node = node == nullptr ? nullptr : node->FindChild(name);
    }
    EXPECT_NE(node, nullptr);
    unsigned children = 0;
    for (unsigned slot = 0; node != nullptr && slot < 10'000; ++slot) {
        children += node->GetChild(slot) != nullptr ? 1 : 0;
    }
    return children;
}

/// The work of an import without a tree log, which has to come out as the row says.
Work ImportWork(const CostCase& row, unsigned count) {
    const std::string xml = row.catalog(count);
    const Work work = WorkOf([&] { const FactoryImport imported(CatalogParamFactory{}, xml); });
    FactoryImport imported(CatalogParamFactory{}, xml);
    EXPECT_TRUE(imported.ok);
    EXPECT_TRUE(imported.messages == TextOf(row.entry, count) + TextOf(row.last, count))
        << imported.messages.substr(0, 400);
    EXPECT_EQ(ChildrenAt(imported.catalog, row.path),
              row.children == Children::All ? count : static_cast<unsigned>(row.children));
    return work;
}

TEST(ImportCost, GrowsInProportionToTheCatalog) {
    for (const CostCase& row : kRows) {
        SCOPED_TRACE(row.what);
        EXPECT_TRUE(GrowsInProportion(ImportWork(row, row.count), ImportWork(row, 2 * row.count)));
    }
}

/// Long names. Where they differ makes a difference only to who compares each with each.
using LongName = std::string (*)(unsigned number);

std::string DifferingAtTheStart(unsigned number) {
    return std::to_string(10'000 + number) + std::string(1000, 'N');
}

std::string DifferingAtTheEnd(unsigned number) {
    return std::string(1000, 'N') + std::to_string(10'000 + number);
}

/// A function of 50 parameters, copied into all other blocks.
std::string CopiedParams(LongName nameOf) {
    const std::string params = Each(
        50, [&](unsigned number) { return Param(nameOf(number), kVoid, At(static_cast<int>(number + 1))); });
    const std::string function = OneFunction(1, "FktDefId=\"f\"", Property(params));
    return CatalogOf(Each(50, [&](unsigned id) {
        return "<FBlock><FBlockID>" + std::to_string(id) + "</FBlockID><FBlockName>" + nameOf(id) +
               "</FBlockName>" + (id > 0 ? "<Function FktDefRef=\"f\"/>" : function) + "</FBlock>";
    }));
}

/// Streams that stand behind 40 other parameters, of which the last one selects.
std::string StreamsBehindParams(LongName nameOf) {
    constexpr unsigned kOthers = 40;
    const std::string params = Each(kOthers, [&](unsigned number) {
        return Param(nameOf(number), kByte, At(static_cast<int>(number + 1)));
    });
    const std::string cases = Each(100, [&](unsigned value) {
        return "<StreamCase><PosDescription PosX=\"" + nameOf(kOthers - 1) + "\" PosY=\"" +
               std::to_string(value) + R"("/><StreamParam><ParamName ParamIdx="1">F</ParamName>)" + kVoid +
               "</StreamParam></StreamCase>";
    });
    const std::string streams = Each(2, [&](unsigned number) {
        return Param(Named("Body", number),
                     R"(<TStream TypeRef="type_stream" Length="8">)" + cases + "</TStream>",
                     At(static_cast<int>(kOthers + 1 + number)));
    });
    return CatalogOfParams(params + streams);
}

struct LongNameCase {
    const char* what;
    std::string (*catalog)(LongName nameOf);
};

TEST(ImportCost, IsTheSameWhereverLongNamesDiffer) {
    const LongNameCase rows[] = {
        {"copied parameters", CopiedParams},
        {"stream cases behind parameters", StreamsBehindParams},
    };
    for (const LongNameCase& row : rows) {
        SCOPED_TRACE(row.what);
        const auto callsFor = [&](LongName nameOf) {
            const std::string xml = row.catalog(nameOf);
            return WorkOf([&] {
                       const FactoryImport imported(CatalogParamFactory{}, xml);
                       EXPECT_TRUE(imported.ok);
                       EXPECT_EQ(imported.messages, "");
                   })
                .calls;
        };
        const std::uint64_t start = callsFor(DifferingAtTheStart);
        EXPECT_LE(callsFor(DifferingAtTheEnd), start + start / 4);
    }
}

/// Records in each other, each with four fields of long names besides.
std::string LongNamesOnLevels(unsigned levels) {
    std::string inside = kText;
    for (unsigned level = 0; level < levels; ++level) {
        const std::string fields = Each(4, [&](unsigned number) {
            return Field(static_cast<int>(number + 1), DifferingAtTheEnd(100 * level + number), kText);
        });
        inside = Record(5, fields + Field(5, DifferingAtTheEnd(100 * level + 4), inside));
    }
    return CatalogOfParams(Param("Rec", inside));
}

/// A name that is looked for on every level is hashed once, and compared with no other one letter by letter.
TEST(ImportCost, OfLongNamesGrowsInProportionToTheLevels) {
    const auto workFor = [&](unsigned levels) {
        const std::string xml = LongNamesOnLevels(levels);
        return WorkOf([&] { EXPECT_TRUE(FactoryImport(CatalogParamFactory{}, xml).ok); });
    };
    EXPECT_TRUE(GrowsInProportion(workFor(25), workFor(50)));
}

}  // namespace
}  // namespace tarvex::test::import_cost_test
