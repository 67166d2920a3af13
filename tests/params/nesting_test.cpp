/// Arrays and records inside each other: 64 levels are imported, the one that stands in 64 others is not.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/array.h"
#include "params/composites.h"
#include "params/members.h"
#include "params/record.h"
#include "support/catalog_import.h"

namespace tarvex::test::nesting_test {
namespace {

/// Which of the levels, counted from 1, are records; the others are arrays.
struct Shape {
    const char* what;
    bool (*isRecord)(unsigned level);
};
constexpr Shape kShapes[] = {
    {"arrays", [](unsigned) { return false; }},
    {"records", [](unsigned) { return true; }},
    {"arrays around records", [](unsigned level) { return level > 32; }},
    {"records around arrays", [](unsigned level) { return level <= 32; }},
    {"arrays and records in turn", [](unsigned level) { return level % 2 == 0; }},
};

std::string LevelName(unsigned level) {
    return std::string("L").append(std::to_string(level));
}

/// Type elements of that many levels with `innermost` inside. What stands in level n is called "L<n+1>".
std::string Nested(const Shape& shape, unsigned levels, const std::string& innermost) {
    std::string type = innermost;
    for (unsigned level = levels; level > 0; --level) {
        const std::string name = LevelName(level + 1);
        type = shape.isRecord(level) ? Record(1, Field(1, name, type)) : Array(name, type);
    }
    return type;
}

/// The entries of the containers from level `deepest` up to 1, each about the failure of what it holds, and
/// that of the parameter element.
std::string FailureChain(const Shape& shape, unsigned deepest) {
    std::string messages;
    for (unsigned level = deepest; level > 0; --level) {
        std::string path = "/Cat/Amp/Volume";
        for (unsigned above = 1; above <= level; ++above) {
            path += "/" + LevelName(above);
        }
        messages += shape.isRecord(level)
                        ? "Error #0053 in '" + path + "':\n  Failed to import element <TRecordField>\n"
                        : "Error #0046 in '" + path + "':\n  Failed to import element <TArray>\n";
    }
    return messages + "Error #0129 in '/Cat/Amp/Volume':\n  Failed to import element <PUParam>\n";
}

/// Nodes below "Status" on the way down.
unsigned DepthOf(const Imported& imported) {
    const ZMTNode* node = InStatus<ZMTParam>(imported, "L1");
    unsigned depth = 0;
    for (; node != nullptr; node = node->FindChild(LevelName(depth + 1))) {
        ++depth;
    }
    return depth;
}

TEST(Nesting, LevelsUpTo64AreImported) {
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.what);
        for (const unsigned levels : {2U, 63U, 64U}) {
            const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(shape, levels, kByte))));
            EXPECT_TRUE(imported->ok);
            EXPECT_EQ(imported->messages, "");
            EXPECT_EQ(DepthOf(*imported), levels + 1);
        }
    }
}

TEST(Nesting, Level65FailsAndSoDoesAllAroundIt) {
    const std::string good = Param("Good", kByte);
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.what);
        const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(shape, 65, kByte)) + good));
        EXPECT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, FailureChain(shape, 64));
        EXPECT_EQ(DepthOf(*imported), 0U);
        EXPECT_NE(InStatus<ZMTParam>(*imported, "Good"), nullptr);
    }
}

/// What stands in level 65 is never looked at: neither its own faults nor levels further down.
TEST(Nesting, Level65SaysNothingItself) {
    const Shape& arrays = kShapes[0];
    const Shape& records = kShapes[1];
    for (const char* innermost : {"<TArray/>", "<TRecord/>", "<TArray NMax=\"x\"/>"}) {
        SCOPED_TRACE(innermost);
        for (const Shape* shape : {&arrays, &records}) {
            const auto imported = ImportText(
                CatalogOfParams(Param("L1", Nested(*shape, 64, innermost)) + Param("Good", kByte)));
            EXPECT_EQ(imported->messages, FailureChain(*shape, 64));
        }
    }
    const auto deep =
        ImportText(CatalogOfParams(Param("L1", Nested(records, 300, kByte)) + Param("Good", kByte)));
    EXPECT_EQ(deep->messages, FailureChain(records, 64));
}

/// Level 64 is an array whose element has no name and is an array: not even that is told.
TEST(Nesting, Level65IsNotAskedForItsName) {
    const std::string level64 = R"(<TArray TypeRef="type_array" NMax="3"><TArrayElementType>)" +
                                Array("Item", kByte) + "</TArrayElementType></TArray>";
    const auto imported =
        ImportText(CatalogOfParams(Param("L1", Nested(kShapes[0], 63, level64)) + Param("Good", kByte)));
    EXPECT_EQ(imported->messages, FailureChain(kShapes[0], 64));
}

struct ScalarCase {
    const char* what;
    const char* type;
};
constexpr ScalarCase kScalars[] = {
    {"number", kByte}, {"enumeration", kEnum}, {"string", kText},
    {"bits", kBits},   {"boolean", kBool},     {"void", kVoid},
};

TEST(Nesting, ScalarsInsideLevel64AreImported) {
    for (const ScalarCase& row : kScalars) {
        SCOPED_TRACE(row.what);
        for (const Shape& shape : kShapes) {
            SCOPED_TRACE(shape.what);
            const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(shape, 64, row.type))));
            EXPECT_EQ(imported->messages, "");
            EXPECT_EQ(DepthOf(*imported), 65U);
        }
    }
}

/// Siblings do not add up, and every field of a record at the limit is told.
TEST(Nesting, CountsOnlyWhatStandsAround) {
    const Shape& records = kShapes[1];
    const std::string wide =
        Record(3, Field(1, "A", Array("X", kByte)) + Field(2, "B", Array("Y", kByte)) + Field(3, "C", kByte));
    const auto fits = ImportText(CatalogOfParams(Param("L1", Nested(records, 62, wide))));
    EXPECT_EQ(fits->messages, "");
    const auto tooDeep =
        ImportText(CatalogOfParams(Param("L1", Nested(records, 63, wide)) + Param("Good", kByte)));
    std::string path = "/Cat/Amp/Volume";
    for (unsigned level = 1; level <= 64; ++level) {
        path += "/" + LevelName(level);
    }
    EXPECT_EQ(tooDeep->messages, "Error #0053 in '" + path +
                                     "':\n  Failed to import element <TRecordField>\n" +
                                     FailureChain(records, 64));
}

TEST(Nesting, DepthIsThatOfTheParents) {
    std::vector<ZMTParamRecord> chain(65);
    PlainNode function("Volume");
    chain[0].SetParent(&function);
    for (std::size_t level = 1; level < chain.size(); ++level) {
        chain[level].SetParent(&chain[level - 1]);
    }
    EXPECT_FALSE(IsNestedTooDeep(chain[0]));
    EXPECT_FALSE(IsNestedTooDeep(chain[63]));
    EXPECT_TRUE(IsNestedTooDeep(chain[64]));
}

TEST(Nesting, LogAndClonesOf64LevelsAreComplete) {
    const auto imported = ImportText(CatalogOfParams(Param("L1", Nested(kShapes[4], 64, kVoid))));
    const auto* top = InStatus<ZMTParam>(*imported, "L1");
    ASSERT_NE(top, nullptr);
    const std::string dump = DumpOf(*top);
    EXPECT_NE(dump.find("\n" + std::string(68, '\t') + "PARAMVOID: L65\n"), std::string::npos);
    EXPECT_NE(dump.find("\n" + std::string(67, '\t') + "PARAMRECORD: L64\n"), std::string::npos);
    std::unique_ptr<ZMTNode> node = top->Clone();
    ASSERT_NE(node, nullptr);
    const ZMTNode* below = node.get();
    for (unsigned level = 2; level <= 65; ++level) {
        below = below->FindChild(LevelName(level));
        ASSERT_NE(below, nullptr) << level;
    }
    EXPECT_EQ(below->GetType(), 18);
}

}  // namespace
}  // namespace tarvex::test::nesting_test
