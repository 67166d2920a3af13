/// What belongs together in two catalogs, and what makes no difference.

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "review/diff_catalogs.h"

namespace tarvex::test::diff_matches_test {
namespace {

using namespace diff;
using namespace review;
using testing::ElementsAre;
using testing::IsEmpty;

class ReviewDiffMatches : public DiffTest {
  protected:
    /// Functions of the block "Amp".
    std::vector<std::string> LinesOfFunctions(const std::string& before, const std::string& after) {
        return LinesOf(CatalogOf(BlockOf(before)), CatalogOf(BlockOf(after)));
    }
    /// Parameters of the function "Volume" (0x400) of that block.
    std::vector<std::string> LinesOfParams(const std::string& before, const std::string& after) {
        return LinesOf(CatalogOfParams(before), CatalogOfParams(after));
    }
};

const std::string kByte = Number("type_unsigned_byte", "");
const std::string kWord = Number("type_unsigned_word", "");

std::string Status(const std::string& name, int position, const std::string& type) {
    return Param(name, type, At("PReportStatus", position));
}

std::string AsUtf16(const std::string& ascii) {
    std::string text = "\xFF\xFE";
    for (const char c : ascii) {
        text.append({c, '\0'});
    }
    return text;
}

std::string AllReplaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

TEST_F(ReviewDiffMatches, FormOrderAndEncodingMakeNoDifference) {
    options_.areDescriptionsCompared = true;
    const std::string base = BaseCatalog();
    dir_.Write("c.dtd", "<!ELEMENT FunctionCatalog ANY>\n<!ATTLIST TEnum TEnumMax CDATA \"9\">\n");
    const std::string reordered =
        Block("0x22", "Amp",
              Function("0x403", "Streams", kStreams) + Function("0x400", "Volume", kVolume) +
                  Function("0x402", "Titles", kTitles) + Function("0x401", "Balance", kBalance));
    const std::string texts[] = {
        base,
        CatalogOf(kTuner + kAmp),
        CatalogOf(kTuner + reordered),
        "<FunctionCatalog>" + std::string(kDefinitions) + kAmp + kTuner + "</FunctionCatalog>",
        AllReplaced(AllReplaced(base, "<PUParam>", "\n\t\t<PUParam>\n"), "About ", "\n  About\t "),
        AsUtf16(AllReplaced(base, "UTF-8", "UTF-16")),
        Replaced(base, "<FunctionCatalog>",
                 "<!DOCTYPE FunctionCatalog SYSTEM \"c.dtd\" [<!ENTITY t \"Tuner\">]><FunctionCatalog>"),
        Replaced(
            Replaced(base, "<FunctionCatalog>",
                     "<!DOCTYPE FunctionCatalog SYSTEM \"c.dtd\" [<!ENTITY t \"Tuner\">]><FunctionCatalog>"),
            "<FBlockName>Tuner<", "<FBlockName>&t;<"),
    };
    const auto before = Read(base);
    for (const std::string& text : texts) {
        const auto after = Read(text);
        ASSERT_NE(after->Catalog(), nullptr) << text;
        EXPECT_THAT(Lines(*before, *after), IsEmpty()) << text;
        EXPECT_THAT(Lines(*after, *before), IsEmpty()) << text;
    }
}

TEST_F(ReviewDiffMatches, FunctionsThatShiftAreTheSameFunctions) {
    const auto functions = [](int shift, const std::string& first) {
        std::string text = first;
        for (const char* name : {"A", "B", "C"}) {
            text +=
                Function(std::to_string(1 + shift++), name, Status(name + std::string("Value"), 1, kByte));
        }
        return text;
    };
    EXPECT_THAT(LinesOfFunctions(functions(0, ""), functions(1, Function("1", "New", Status("X", 1, kByte)))),
                ElementsAre("Amp (22) New (001): function added: Status (bytes)",
                            "Amp (22) A (002): function moved 001 -> 002 (bytes)",
                            "Amp (22) B (003): function moved 002 -> 003 (bytes)",
                            "Amp (22) C (004): function moved 003 -> 004 (bytes)"));
}

TEST_F(ReviewDiffMatches, AnIdentifierGoesBeforeANameWithOtherContent) {
    // Volume is called Loudness now, and another function Volume.
    EXPECT_THAT(LinesOfFunctions(Function("1", "Volume", Status("Level", 1, kByte)),
                                 Function("1", "Loudness", Status("Level", 1, kByte)) +
                                     Function("2", "Volume", Status("Litres", 1, kWord))),
                ElementsAre("Amp (22) Loudness (001): function renamed Volume -> Loudness",
                            "Amp (22) Volume (002): function added: Status (bytes)"));
}

TEST_F(ReviewDiffMatches, BlocksComeAndGo) {
    const std::string station = Function("0x200", "Station", Status("Name", 1, kByte));
    const std::string amp = Block("0x22", "Amp", station);
    EXPECT_THAT(LinesOf(CatalogOf(amp), CatalogOf(amp + Block("0x40", "Tuner", station))),
                ElementsAre("Tuner (40): block added: 1 function (bytes)"));
    EXPECT_THAT(LinesOf(CatalogOf(amp + Block("0x40", "Tuner", station)), CatalogOf(amp)),
                ElementsAre("Tuner (40): block removed: 1 function (bytes)"));
    EXPECT_THAT(
        LinesOf(CatalogOf(amp + Block("0x40", "Tuner", station)),
                CatalogOf(Block("0x22", "Tuner", station) + Block("0x40", "Amp", station))),
        ElementsAre("Tuner (22): block moved 40 -> 22 (bytes)", "Amp (40): block moved 22 -> 40 (bytes)"));
}

TEST_F(ReviewDiffMatches, ParametersByNameThenPlace) {
    const std::string a = Status("A", 1, kByte);
    const std::string b = Status("B", 2, kByte);
    const struct {
        std::string before;
        std::string after;
        std::vector<std::string> lines;
    } rows[] = {
        // Two that change places: one has moved.
        {a + b,
         Status("B", 1, kByte) + Status("A", 2, kByte),
         {"Amp (22) Volume (400): A moved 1 -> 2 [Status] (bytes)"}},
        {Status("B", 1, kByte) + Status("A", 2, kByte),
         a + b,
         {"Amp (22) Volume (400): A moved 2 -> 1 [Status] (bytes)"}},
        // One in front moves nothing in itself.
        {a,
         Status("X", 1, kWord) + Status("A", 2, kByte),
         {"Amp (22) Volume (400): X added: unsigned number, 2 bytes [Status] (bytes)"}},
        // Another name and another kind is another parameter.
        {a,
         Status("X", 1, "<TBool TypeRef=\"type_bool\"/>"),
         {"Amp (22) Volume (400): A removed: unsigned number, 1 byte [Status] (bytes)",
          "Amp (22) Volume (400): X added: boolean, 1 byte, 8 bits used [Status] (bytes)"}},
        // Behind a removed one names still count.
        {a + b + Status("C", 3, kByte),
         a + Status("C", 2, kByte),
         {"Amp (22) Volume (400): B removed: unsigned number, 1 byte [Status] (bytes)"}},
        {a + b + Status("C", 3, kByte),
         a + Status("D", 2, kByte) + Status("C", 3, kByte),
         {"Amp (22) Volume (400): D renamed B -> D [Status]"}},
        // Two of one name: the second one changes, in both operations.
        {Param("V", kByte, At("PCmdSet", 1) + At("PReportStatus", 1)) +
             Param("V", kByte, At("PCmdSet", 2) + At("PReportStatus", 2)),
         Param("V", kByte, At("PCmdSet", 1) + At("PReportStatus", 1)) +
             Param("V", kWord, At("PCmdSet", 2) + At("PReportStatus", 2)),
         {"Amp (22) Volume (400): V length 1 byte -> 2 bytes [Set, Status] (bytes)"}},
        // Both of them change.
        {Param("V", kByte, At("PCmdSet", 1) + At("PReportStatus", 1)) +
             Param("V", kByte, At("PCmdSet", 2) + At("PReportStatus", 2)),
         Param("V", kWord, At("PCmdSet", 1) + At("PReportStatus", 1)) +
             Param("V", kWord, At("PCmdSet", 2) + At("PReportStatus", 2)),
         {"Amp (22) Volume (400): V length 1 byte -> 2 bytes [Set, Status] (bytes)",
          "Amp (22) Volume (400): V length 1 byte -> 2 bytes [Set, Status] (bytes)"}},
        // Written once for both operations, then once for each: the same parameter.
        {Param("V", kByte, At("PCmdSet", 1) + At("PReportStatus", 1)),
         Param("V", kByte, At("PCmdSet", 1)) + Param("V", kByte, At("PReportStatus", 1)),
         {}},
        {Param("V", kByte, At("PCmdSet", 1) + At("PReportStatus", 1)),
         Param("V", kByte, At("PCmdSet", 1)) + Param("V", kWord, At("PReportStatus", 1)),
         {"Amp (22) Volume (400): V length 1 byte -> 2 bytes [Status] (bytes)"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LinesOfParams(row.before, row.after), row.lines);
    }
}

TEST_F(ReviewDiffMatches, CodesOfValuesShift) {
    const auto values = [](std::initializer_list<const char*> names) {
        std::string text = "<TEnum TypeRef=\"type_enum\" TEnumMax=\"9\">";
        int code = 0;
        for (const char* name : names) {
            text += "<TEnumValue Code=\"" + std::to_string(code++) + "\">" + name + "</TEnumValue>";
        }
        return Status("E", 1, text + "</TEnum>");
    };
    EXPECT_THAT(LinesOfParams(values({"A", "B"}), values({"X", "A", "B"})),
                ElementsAre("Amp (22) Volume (400): E value A moved 0x00 -> 0x01 [Status] (meaning)",
                            "Amp (22) Volume (400): E value B moved 0x01 -> 0x02 [Status] (meaning)",
                            "Amp (22) Volume (400): E value 0x00 X added [Status]"));
    EXPECT_THAT(LinesOfParams(values({"R", "R", "C"}), values({"R", "B", "C"})),
                ElementsAre("Amp (22) Volume (400): E value 0x01 renamed R -> B [Status] (meaning)"));
}

/// A definition that three functions refer to.
TEST_F(ReviewDiffMatches, WhatManyFunctionsReferToChangesOnce) {
    const auto functions = [](const std::string& type) {
        const std::string error =
            "<ERParam ParamDefId=\"e\"><ParamName>Code</ParamName><ERParamOPType><PReportError><ParamPos>1"
            "</ParamPos></PReportError></ERParamOPType><ERParamType>" +
            type + "</ERParamType></ERParam>";
        const std::string reference = "<ERParam ParamDefRef=\"e\"/>";
        return Function("1", "A", Status("V", 1, kByte) + error) +
               Function("2", "B", Status("V", 1, kByte) + reference) +
               Function("3", "C", Status("V", 1, kByte) + reference);
    };
    EXPECT_THAT(
        LinesOfFunctions(functions(kByte), functions(kWord)),
        ElementsAre(
            "Amp (22) A (001): Code length 1 byte -> 2 bytes [Error] (bytes), and in 2 more functions"));
}

TEST_F(ReviewDiffMatches, CopiedFunctionsChangeOnce) {
    const auto blocks = [](const std::string& params) {
        std::string original = Function("1", "A", params);
        original.insert(original.find('>'), " FktDefId=\"f\"");
        return CatalogOf(Block("1", "X", original) + Block("2", "Y", "<Function FktDefRef=\"f\"/>"));
    };
    EXPECT_THAT(
        LinesOf(blocks(Status("V", 1, kByte)),
                blocks(Status("V", 1, kWord) + Status("W", 2, kByte) + Param("Z", kByte, At("PCmdSet", 1)))),
        ElementsAre(
            "X (01) A (001): operation Set added: Z (bytes), and in 1 more function",
            "X (01) A (001): V length 1 byte -> 2 bytes [Status] (bytes), and in 1 more function",
            "X (01) A (001): W added: unsigned number, 1 byte [Status] (bytes), and in 1 more function"));
}

TEST_F(ReviewDiffMatches, WhatCouldNotBeReadIsNotJustRemoved) {
    const std::string sound = Function("1", "A", Status("V", 1, kByte) + Status("W", 2, kByte));
    EXPECT_THAT(
        LinesOfFunctions(sound, Function("1", "A", Status("V", 1, kByte) + Status("W", 2, "<TOdd/>"))),
        ElementsAre(
            "Amp (22) A (001): W removed: unsigned number, 1 byte [Status] (bytes), could not be read "
            "in the new catalog: message 128"));
    const std::string other = Function("2", "B", Status("V", 1, kByte));
    const std::string lost = Replaced(other, "<FunctionName>B<", "<FunctionName>A<");
    EXPECT_THAT(
        LinesOfFunctions(sound + lost, sound + other),
        ElementsAre("Amp (22) B (002): function added: Status (bytes), could not be read in the old catalog: "
                    "message 116"));
}

/// The parameters are the same, and where they stand is not.
TEST_F(ReviewDiffMatches, LayoutsOfOperations) {
    const auto two = [](const std::string& type, const std::string& operations) {
        return Param("A", kByte, At("PCmdSet", 1) + At("PReportStatus", 1)) + Param("B", type, operations);
    };
    const std::string sound = two(kByte, At("PCmdSet", 2) + At("PReportStatus", 2));
    const auto record = [](const char* count) {
        return Status("R", 1,
                      std::string("<TRecord TypeRef=\"type_record\" NElements=\"") + count + "\">" +
                          Field("X", 1, kByte) + Field("Y", 2, kByte) + "</TRecord>");
    };
    const auto chosen = [](const char* name) {
        return Status(name, 1, kWord) +
               Status("Data", 2,
                      "<TRecord TypeRef=\"type_record\" NElements=\"2\">" + Field("X", 1, kByte) +
                          Field("Y", 2, "<TString TypeRef=\"type_string\" MaxSize=\"8\"/>") + "</TRecord>");
    };
    const struct {
        std::string before;
        std::string after;
        std::vector<std::string> lines;
    } rows[] = {
        {sound,
         two(kByte, At("PCmdSet", 2) + At("PReportStatus", 3)),
         {"Amp (22) Volume (400): operation layout complete -> incomplete: there is no parameter at position "
          "2 "
          "(message 102) [Status] (bytes)"}},
        {sound,
         two(kByte, At("PCmdSet", 3) + At("PReportStatus", 3)),
         {"Amp (22) Volume (400): operation layout complete -> incomplete: there is no parameter at position "
          "2 "
          "(message 102) [Set, Status] (bytes)"}},
        // Another change beside it.
        {sound,
         two(kWord, At("PCmdSet", 2) + At("PReportStatus", 3)),
         {"Amp (22) Volume (400): B length 1 byte -> 2 bytes [Set, Status] (bytes)",
          "Amp (22) Volume (400): operation layout complete -> incomplete: there is no parameter at position "
          "2 "
          "(message 102) [Status] (bytes)"}},
        // The gap is elsewhere.
        {two(kByte, At("PReportStatus", 3)) + Status("C", 5, kByte),
         two(kByte, At("PReportStatus", 2)) + Status("C", 5, kByte),
         {"Amp (22) Volume (400): operation layout incomplete: there is no parameter at position 2 (message "
          "102) -> incomplete: there is no parameter at position 3 (message 102) [Status] (bytes)"}},
        // Positions may count from 0.
        {Status("A", 1, kByte), Status("A", 0, kByte), {}},
        // Another end is what another parameter says already.
        {sound,
         two("<TString TypeRef=\"type_string\" MaxSize=\"8\"/>", At("PCmdSet", 2) + At("PReportStatus", 2)),
         {"Amp (22) Volume (400): B type unsigned number, 1 byte -> string, open, at most 8 bytes [Set, "
          "Status] (bytes)"}},
        // Records.
        {record("2"),
         record("3"),
         {"Amp (22) Volume (400): operation layout complete -> incomplete: R has another number of fields "
          "than "
          "it says (message 55) [Status] (bytes)"}},
        {record("3"), record("4"), {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LinesOfParams(row.before, row.after), row.lines);
    }
    options_.areBytesOnly = true;
    EXPECT_EQ(LinesOfParams(rows[0].before, rows[0].after), rows[0].lines);
    EXPECT_THAT(LinesOfParams(chosen("Pos"), chosen("Pos")), IsEmpty());
}

std::string Enumeration(const std::string& values) {
    return Status("E", 1, "<TEnum TypeRef=\"type_enum\" TEnumMax=\"9\">" + values + "</TEnum>");
}

std::string Value(const std::string& code, const std::string& name) {
    return "<TEnumValue Code=\"" + code + "\">" + name + "</TEnumValue>";
}

/// What the names in the trees have in common tells nothing.
TEST_F(ReviewDiffMatches, NamesAreThoseOfTheCatalogs) {
    EXPECT_THAT(LinesOfParams(Enumeration(Value("0", "Да") + Value("1", "Нет")),
                              Enumeration(Value("0", "Нет") + Value("1", "Да"))),
                ElementsAre("Amp (22) Volume (400): E value Да moved 0x00 -> 0x01 [Status] (meaning)",
                            "Amp (22) Volume (400): E value Нет moved 0x01 -> 0x00 [Status] (meaning)"));
    EXPECT_THAT(LinesOfParams(Enumeration(Value("0", "1.5 V")), Enumeration(Value("0", "15\xC2\x9B V"))),
                ElementsAre("Amp (22) Volume (400): E value 0x00 renamed 1.5 V -> 15. V [Status] (meaning)"));
    EXPECT_THAT(LinesOfParams(Status("T+", 1, kByte) + Status("T-", 2, kByte),
                              Status("T-", 1, kByte) + Status("T+", 2, kByte)),
                ElementsAre("Amp (22) Volume (400): T \"T+\" moved 1 -> 2 [Status] (bytes)"));
    EXPECT_THAT(
        LinesOfParams(Status("Größe", 1, kByte), Status("Größe", 1, kWord)),
        ElementsAre("Amp (22) Volume (400): Gre \"Größe\" length 1 byte -> 2 bytes [Status] (bytes)"));
    EXPECT_THAT(LinesOfParams(Status("Да", 1, kByte), Status("Да", 1, kWord)),
                ElementsAre("Amp (22) Volume (400): \"Да\" length 1 byte -> 2 bytes [Status] (bytes)"));
}

TEST_F(ReviewDiffMatches, SelectorsByWhatTheyAreNotByTheirNames) {
    const auto stream = [](const char* selector, int position) {
        const std::string name = selector;
        return Status("Data", position,
                      "<TStream TypeRef=\"type_stream\"><StreamCase><PosDescription PosX=\"" + name +
                          "\" PosY=\"1\"/>" + Member("A", 1, kByte) +
                          "</StreamCase><StreamCase><PosDescription PosX=\"" + name + "\" PosY=\"2\"/>" +
                          Member("B", 1, kWord) + "</StreamCase></TStream>");
    };
    const std::string kind = Status("Kind", 1, kByte) + stream("Kind", 2);
    const std::string sort = Status("Sort", 1, kByte) + stream("Sort", 2);
    EXPECT_THAT(LinesOfParams(kind, sort),
                ElementsAre("Amp (22) Volume (400): Sort renamed Kind -> Sort [Status]"));
    const std::string both = Status("Kind", 1, kByte) + Status("Mode", 2, kByte);
    EXPECT_THAT(LinesOfParams(both + stream("Kind", 3), both + stream("Mode", 3)),
                ElementsAre("Amp (22) Volume (400): Data selector Kind -> Mode [Status] (bytes)"));
    options_.areBytesOnly = true;
    EXPECT_THAT(LinesOfParams(kind, sort), IsEmpty());
}

TEST_F(ReviewDiffMatches, LostPartsOfParametersSaySo) {
    const auto stream = [](const std::string& second) {
        return Status("S", 1,
                      "<TStream TypeRef=\"type_stream\"><StreamCase><PosDescription PosX=\"#NULL#\" "
                      "PosY=\"1\"/>" +
                          Member("A", 1, kByte) +
                          "</StreamCase><StreamCase><PosDescription PosX=\"#NULL#\" PosY=\"2\"/>" +
                          Member("B", 1, second) + "</StreamCase></TStream>");
    };
    EXPECT_THAT(
        LinesOfParams(stream(kByte), stream("<TOdd/>")),
        ElementsAre("Amp (22) Volume (400): S case PosY=0x02 removed [Status] (bytes), could not be read "
                    "in the new catalog: message 32"));
    EXPECT_THAT(
        LinesOfParams(Enumeration(Value("x", "A") + Value("1", "B")),
                      Enumeration(Value("0", "A") + Value("1", "B"))),
        ElementsAre("Amp (22) Volume (400): E value 0x00 A added [Status], could not be read in the old "
                    "catalog: message 81"));
    const std::string sound = Function("1", "A", Status("V", 1, kByte));
    EXPECT_THAT(
        LinesOfFunctions(sound, AllReplaced(sound, "PUnclassified", "POdd")),
        ElementsAre("Amp (22) A (001): operation Status removed: V (bytes), could not be read in the new "
                    "catalog: message 150"));
}

TEST_F(ReviewDiffMatches, BytesOnly) {
    options_.areBytesOnly = true;
    const std::string after =
        Replaced(Replaced(BaseCatalog(), "<RangeMax>30<", "<RangeMax>63<"), "Length=\"6\"", "Length=\"10\"");
    EXPECT_THAT(
        LinesOf(BaseCatalog(), after),
        ElementsAre("Amp (22) Balance (401): Flags length 1 byte, 6 bits used -> 2 bytes, 10 bits used "
                    "[Status] (bytes)"));
}

TEST_F(ReviewDiffMatches, DescriptionsWhereTheyAreAskedFor) {
    const std::string after =
        Replaced(Replaced(Replaced(BaseCatalog(), "About Amp.", "Loud."), "About Volume.", ""), "About Gain.",
                 "More.");
    EXPECT_THAT(LinesOf(BaseCatalog(), after), IsEmpty());
    options_.areDescriptionsCompared = true;
    EXPECT_THAT(
        LinesOf(BaseCatalog(), after),
        ElementsAre("Amp (22): block description \"About Amp.\" -> \"Loud.\"",
                    "Amp (22) Volume (400): function description \"About Volume.\" -> none",
                    "Amp (22) Titles (402): Setup.Gain description \"About Gain.\" -> \"More.\" [Status]"));
}

TEST_F(ReviewDiffMatches, DescriptionsOfRecordsAndValues) {
    const auto text = [](const std::string& ofRecord, const std::string& ofValue) {
        return Status("R", 1,
                      "<TRecord TypeRef=\"type_record\" NElements=\"1\"><TRecordDesc>" + ofRecord +
                          "</TRecordDesc>" + Field("X", 1, kByte) + "</TRecord>") +
               Status("E", 2,
                      "<TEnum TypeRef=\"type_enum\" TEnumMax=\"9\"><TEnumValue Code=\"1\" "
                      "SymbolicName=\"Busy\">" +
                          ofValue + "</TEnumValue></TEnum>");
    };
    EXPECT_THAT(LinesOfParams(text("One.", "A."), text("Two.", "B.")), IsEmpty());
    options_.areDescriptionsCompared = true;
    EXPECT_THAT(
        LinesOfParams(text("One.", "A."), text("Two.", "B.")),
        ElementsAre("Amp (22) Volume (400): R description \"One.\" -> \"Two.\" [Status]",
                    "Amp (22) Volume (400): E value 0x01 Busy description \"A.\" -> \"B.\" [Status]"));
}

TEST_F(ReviewDiffMatches, ClassesOfFunctions) {
    const std::string method = AllReplaced(
        Replaced(
            Function("1", "A", Param("V", kByte, "<MReportResult><ParamPos>1</ParamPos></MReportResult>")),
            "<Property><PUnclassified>", "<Method><MUnclassified>"),
        "PUParam", "MUParam");
    EXPECT_THAT(
        LinesOfFunctions(Function("1", "A", Status("V", 1, kByte)),
                         Replaced(method, "</PUnclassified></Property>", "</MUnclassified></Method>")),
        ElementsAre("Amp (22) A (001): function class property -> method (meaning)"));
}

/// A large name stands in every line.
TEST_F(ReviewDiffMatches, LongNamesAreCut) {
    const std::string name(5000, 'n');
    const auto lines = LinesOfParams(Status(name, 1, kByte) + Status("B", 2, kByte),
                                     Status(name, 1, kWord) + Status("B", 2, kByte));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.front(), "Amp (22) Volume (400): " + std::string(200, 'n') +
                                 "... length 1 byte -> 2 bytes "
                                 "[Status] (bytes)");
}

/// A difference behind what is shown is shown; programs get all.
TEST_F(ReviewDiffMatches, LongTextsAreCutInFrontOfTheirDifference) {
    const std::string alike(300, 'n');
    const auto before = Read(CatalogOfParams(Enumeration(Value("1", alike + "a"))));
    const auto after = Read(CatalogOfParams(Enumeration(Value("1", alike + "b" + std::string(4000, 'm')))));
    const std::string shown = "..." + std::string(40, 'n');
    EXPECT_THAT(Lines(*before, *after),
                ElementsAre("Amp (22) Volume (400): E value 0x01 renamed " + shown + "a -> " + shown + "b" +
                            std::string(159, 'm') + "... [Status] (meaning)"));
    const std::vector<Change> changes = CompareCatalogs(*before->Catalog(), *after->Catalog(), options_);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes.front().before, alike + "a");
    EXPECT_EQ(changes.front().after, alike + "b" + std::string(3699, 'm') + "...");
}

}  // namespace
}  // namespace tarvex::test::diff_matches_test
