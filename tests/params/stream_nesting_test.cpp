/// Streams inside arrays, records and streams: each is one of the 64 levels, its cases are none.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/members.h"
#include "params/streams.h"

namespace tarvex::test::stream_nesting_test {
namespace {

enum class Level { Array, Record, Stream };

/// What the levels are, counted from 1.
struct Shape {
    const char* what;
    std::function<Level(unsigned)> at;
};

const Shape kStreams = {"streams", [](unsigned) { return Level::Stream; }};
const Shape kInTurn = {
    "all in turn", [](unsigned level) {
        return level % 3 == 0 ? Level::Stream : level % 3 == 1 ? Level::Array : Level::Record;
    }};
const Shape kStreamOutside = {"arrays in a stream",
                              [](unsigned level) { return level == 1 ? Level::Stream : Level::Array; }};
const Shape kStreamInside = {"a stream in records",
                             [](unsigned level) { return level == 64 ? Level::Stream : Level::Record; }};

std::string LevelName(unsigned level) {
    return std::string("L").append(std::to_string(level));
}

/// Type elements of that many levels with `innermost` inside. What stands in level n is called "L<n+1>".
std::string Nested(const Shape& shape, unsigned levels, const std::string& innermost) {
    std::string type = innermost;
    for (unsigned level = levels; level > 0; --level) {
        const std::string name = LevelName(level + 1);
        switch (shape.at(level)) {
            case Level::Array:
                type = Array(name, type);
                break;
            case Level::Record:
                type = Record(1, Field(1, name, type));
                break;
            case Level::Stream:
                type = Stream(Case("#NULL#", "1", Member("1", name, type)));
                break;
        }
    }
    return type;
}

/// Nodes below "Status" on the way down, without the cases between them.
unsigned DepthOf(const Imported& imported) {
    const ZMTNode* node = InStatus<ZMTParam>(imported, "L1");
    unsigned depth = 0;
    while (node != nullptr) {
        ++depth;
        const ZMTNode* streamCase = node->FindChild("{StreamCase}");
        node = (streamCase != nullptr ? streamCase : node)->FindChild(LevelName(depth + 1));
    }
    return depth;
}

/// The path of a level while it is imported.
std::string PathOf(const Shape& shape, unsigned level) {
    std::string path = "/Cat/Amp/Volume";
    for (unsigned above = 1; above < level; ++above) {
        path += "/" + LevelName(above) + (shape.at(above) == Level::Stream ? "/{StreamCase}" : "");
    }
    return path + "/" + LevelName(level);
}

/// The entries of a stream about the failure of what its only case holds.
std::string StreamFailure(const Shape& shape, unsigned level) {
    const std::string path = PathOf(shape, level);
    return "Error #0021 in '" + path + "/{StreamCase}':\n  Failed to import element <StreamParam>\n" +
           "Error #0032 in '" + path + "':\n  Failed to import element <StreamCase>\n";
}

TEST(StreamNesting, LevelsUpTo64AreImported) {
    for (const Shape& shape : {kStreams, kInTurn, kStreamOutside, kStreamInside}) {
        SCOPED_TRACE(shape.what);
        for (const unsigned levels : {2U, 63U, 64U}) {
            const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(shape, levels, kByte))));
            EXPECT_TRUE(imported->ok);
            EXPECT_EQ(imported->messages, "");
            EXPECT_EQ(DepthOf(*imported), levels + 1);
        }
    }
}

TEST(StreamNesting, Level65FailsUpToTheNextStream) {
    struct TooDeepCase {
        const Shape& shape;
        std::string messages;
        unsigned depth;
    };
    std::string arrays;
    for (unsigned level = 64; level > 1; --level) {
        arrays +=
            "Error #0046 in '" + PathOf(kStreamOutside, level) + "':\n  Failed to import element <TArray>\n";
    }
    const TooDeepCase rows[] = {
        // Level 64 is a stream that loses its case; it stays itself.
        {kStreams, StreamFailure(kStreams, 64), 64},
        {kStreamInside, StreamFailure(kStreamInside, 64), 64},
        // Level 64 is an array that fails, and so its stream at level 63 loses its case.
        {kInTurn,
         "Error #0046 in '" + PathOf(kInTurn, 64) + "':\n  Failed to import element <TArray>\n" +
             StreamFailure(kInTurn, 63),
         63},
        {kStreamOutside, arrays + StreamFailure(kStreamOutside, 1), 1},
    };
    for (const auto& [shape, messages, depth] : rows) {
        SCOPED_TRACE(shape.what);
        const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(shape, 65, kByte))));
        EXPECT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, messages);
        EXPECT_EQ(DepthOf(*imported), depth);
    }
}

TEST(StreamNesting, StreamAtLevel65FailsInEveryContainer) {
    const Shape arrays = {"arrays", [](unsigned) { return Level::Array; }};
    std::string messages;
    for (unsigned level = 64; level > 0; --level) {
        messages += "Error #0046 in '" + PathOf(arrays, level) + "':\n  Failed to import element <TArray>\n";
    }
    messages += "Error #0129 in '/Cat/Amp/Volume':\n  Failed to import element <PUParam>\n";
    // What is told about a stream without length or cases is not told of this one.
    for (const std::string& innermost : {Stream(Case("1")), Stream(""), std::string("<TStream/>")}) {
        SCOPED_TRACE(innermost);
        const auto imported =
            ImportText(CatalogOfParams(Param("L1", Nested(arrays, 64, innermost)) + Param("Good", kByte)));
        EXPECT_EQ(imported->messages, messages);
        EXPECT_NE(InStatus<ZMTParam>(*imported, "Good"), nullptr);
    }
}

TEST(StreamNesting, DepthIsThatOfTheParentsWithoutTheCases) {
    std::vector<ZMTParamStream> streams(65);
    std::vector<ZMTParamStreamCase> cases(65);
    PlainNode function("Volume");
    streams[0].SetParent(&function);
    for (std::size_t level = 1; level < streams.size(); ++level) {
        cases[level - 1].SetParent(&streams[level - 1]);
        streams[level].SetParent(&cases[level - 1]);
    }
    EXPECT_FALSE(IsNestedTooDeep(streams[0]));
    EXPECT_FALSE(IsNestedTooDeep(streams[63]));
    EXPECT_FALSE(IsNestedTooDeep(cases[63]));
    EXPECT_TRUE(IsNestedTooDeep(streams[64]));
}

TEST(StreamNesting, LogAndClonesOf64LevelsAreComplete) {
    const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(kStreams, 64, kVoid))));
    const auto* top = InStatus<ZMTParam>(*imported, "L1");
    ASSERT_NE(top, nullptr);
    // Four nodes stand above L1, and 63 streams and their cases between it and L64.
    const std::string dump = DumpOf(*top);
    EXPECT_NE(dump.find("\n" + std::string(130, '\t') + "PARAMSTREAM: L64\n"), std::string::npos);
    EXPECT_NE(dump.find("\n" + std::string(131, '\t') + "PARAMSTREAMCASE: {StreamCase}\n"),
              std::string::npos);
    EXPECT_NE(dump.find("\n" + std::string(132, '\t') + "PARAMVOID: L65\n"), std::string::npos);
    const std::unique_ptr<ZMTNode> clone = top->Clone();
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(DumpOf(*clone), dump);
}

/// The indentation counts streams but not their cases, unlike the level.
TEST(StreamNesting, IndentationLeavesOutEveryCase) {
    const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(kStreams, 3, kVoid))));
    const auto* deepest =
        InStatus<ZMTParam>(*imported, "L1", "{StreamCase}", "L2", "{StreamCase}", "L3", "{StreamCase}", "L4");
    ASSERT_NE(deepest, nullptr);
    EXPECT_EQ(deepest->GetLevel(), 10U);
    EXPECT_EQ(deepest->GetIndent(), 7U);
}

TEST(StreamNesting, StreamsStandInRecordsAndArrays) {
    const auto imported = ImportText(CatalogOfParams(Param(
        "Rec", Record(3, Field(1, "S", kByte) + Field(2, "Body", Stream(Case("S", "1") + Case("S", ">2"))) +
                             Field(3, "List", Array("Item", Stream(Case("S", "1"))))))));
    EXPECT_EQ(imported->messages, "");
    const auto* field = InStatus<ZMTParamStream>(*imported, "Rec", "Body");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->ParamPos(), 2U);
    EXPECT_EQ(field->FindChild("(S>=0x02)")->GetPath(), "/Cat/Amp/Volume/Status/Rec/Body/(S>=0x02)");
    const auto* item = InStatus<ZMTParamStream>(*imported, "Rec", "List", "Item");
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->ParamPos(), 0U);
    EXPECT_EQ(item->FindChild("{StreamCase}")->GetPath(),
              "/Cat/Amp/Volume/Status/Rec/List/Item/{StreamCase}");
}

struct FailingCase {
    const char* what;
    std::string type;
    const char* messages;
};

TEST(StreamNesting, StreamThatFailsIsToldByItsContainer) {
    const std::string noType = R"(<TStream Length="8"/>)";
    const FailingCase rows[] = {
        {"array", Array("Body", noType),
         R"(Error #0030 in '/Cat/Amp/Volume/P/Body':
  Missing required attribute TypeRef
Error #0046 in '/Cat/Amp/Volume/P':
  Failed to import element <TArray>
Error #0129 in '/Cat/Amp/Volume':
  Failed to import element <PUParam>
)"},
        {"record", Record(1, Field(1, "Body", noType)),
         R"(Error #0030 in '/Cat/Amp/Volume/P/Body':
  Missing required attribute TypeRef
Error #0053 in '/Cat/Amp/Volume/P':
  Failed to import element <TRecordField>
Error #0129 in '/Cat/Amp/Volume':
  Failed to import element <PUParam>
)"},
        {"stream", Stream(Case("#NULL#", "1", Member("1", "Body", noType))),
         R"(Error #0030 in '/Cat/Amp/Volume/P/{StreamCase}/Body':
  Missing required attribute TypeRef
Error #0021 in '/Cat/Amp/Volume/P/{StreamCase}':
  Failed to import element <StreamParam>
Error #0032 in '/Cat/Amp/Volume/P':
  Failed to import element <StreamCase>
)"},
    };
    const char* const inSet = "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>";
    for (const FailingCase& row : rows) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(Param("P", row.type) + Param("Good", kByte, inSet)));
        EXPECT_EQ(imported->messages, row.messages);
    }
}

/// Arrays and records in a case have no selector: what they stand in is neither array nor record.
TEST(StreamNesting, ArraysAndRecordsInACaseHaveNoSelectorOfTheirOwn) {
    const auto imported = ImportText(CatalogOfParams(Param(
        "Body", Stream(Case("#NULL#", "1",
                            Member("1", "List", Array("Item", Record(1, Field(1, "F", kByte)))) +
                                Member("2", "Pos", kWord) + Member("3", "Data", Array("Cell", kByte)))))));
    EXPECT_EQ(imported->messages, "");
    const auto* list = InStatus<ZMTParam>(*imported, "Body", "{StreamCase}", "List");
    const auto* data = InStatus<ZMTParam>(*imported, "Body", "{StreamCase}", "Data");
    ASSERT_NE(list, nullptr);
    ASSERT_NE(data, nullptr);
    EXPECT_NE(DumpOf(*list).find("\n\t\t\t\t\t\t.SelectorParam: \n"), std::string::npos);
    EXPECT_NE(DumpOf(*list).find("\n\t\t\t\t\t\t\t.SelectorParam: List\n"), std::string::npos);
    EXPECT_NE(DumpOf(*data).find("\n\t\t\t\t\t\t.SelectorParam: Pos\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvex::test::stream_nesting_test
