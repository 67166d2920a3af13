/// Differences in every form.

#include "review/diff_report.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tarvex::test::diff_report_test {
namespace {

using namespace review;
using nlohmann::json;

template <class PrintReport>
std::string Printed(const PrintReport& printReport, const DiffReport& report) {
    std::string printed;
    printReport(report, [&](const std::string& text) { printed += text; });
    return printed;
}

/// One change of each sort.
DiffReport SampleReport() {
    DiffReport report{"old.xml", "n|w.xml", {}};
    Change block;
    block.kind = ChangeKind::Removed;
    block.object = Object::Block;
    block.effect = Effect::Bytes;
    block.block = {"Amp", 0x22};
    block.before = "2 functions";
    block.lostBy = 142;
    report.changes.push_back(block);
    Change range;
    range.aspect = Aspect::Range;
    range.block = {"Tuner", 0x40};
    range.function = Place{"Station", 0x20};
    range.path = "Data.Level";
    range.before = "0..30";
    range.operations = {"Set", "Status"};
    range.alsoIn = 1;
    report.changes.push_back(range);
    Change value = range;
    value.kind = ChangeKind::Renamed;
    value.object = Object::Value;
    value.aspect = Aspect::Name;
    value.effect = Effect::Meaning;
    value.item = "0x02";
    value.before = "a|b";
    value.after = "*c*";
    value.alsoIn = 0;
    report.changes.push_back(value);
    return report;
}

std::string PrintedText(const DiffReport& report, bool isColoured) {
    return Printed([&](const DiffReport& each,
                       const Print& print) { PrintDiffText(each, vorn::Style(isColoured), print); },
                   report);
}

TEST(DiffReport, Text) {
    EXPECT_EQ(
        PrintedText(SampleReport(), false),
        "Amp (22): block removed: 2 functions (bytes), could not be read in the new catalog: message 142\n"
        "Tuner (40) Station (020): Data.Level range 0..30 -> none [Set, Status], and in 1 more function\n"
        "Tuner (40) Station (020): Data.Level value 0x02 renamed a|b -> *c* [Set, Status] (meaning)\n"
        "3 changes: 1 removed, 1 renamed, 1 changed; bytes on the bus: 1\n");
    EXPECT_EQ(PrintedText({"a", "b", {}}, false), "no changes\n");
}

TEST(DiffReport, ColouredText) {
    EXPECT_EQ(
        PrintedText(SampleReport(), true),
        "\x1B[1mAmp (22):\x1B[0m \x1B[31mblock removed\x1B[0m: 2 functions \x1B[1;33m(bytes)\x1B[0m, could "
        "not "
        "be read in the new catalog: message 142\n"
        "\x1B[1mTuner (40) Station (020):\x1B[0m \x1B[33mData.Level range\x1B[0m 0..30 -> none "
        "[Set, Status], and in 1 more function\n"
        "\x1B[1mTuner (40) Station (020):\x1B[0m \x1B[33mData.Level value 0x02 renamed\x1B[0m a|b -> *c* "
        "[Set, Status] (meaning)\n"
        "\x1B[2m3 changes: 1 removed, 1 renamed, 1 changed; bytes on the bus: 1\x1B[0m\n");
}

TEST(DiffReport, Markdown) {
    EXPECT_EQ(
        Printed(PrintDiffMarkdown, SampleReport()),
        "# old.xml -> n\\|w.xml\n"
        "\n"
        "3 changes: 1 removed, 1 renamed, 1 changed; bytes on the bus: 1\n"
        "\n"
        "## Amp (22)\n"
        "\n"
        "| Function | Change | Before | After | Operations | On the bus |\n"
        "|---|---|---|---|---|---|\n"
        "| | block removed, could not be read in the new catalog: message 142 | 2 functions | | | bytes |\n"
        "\n"
        "## Tuner (40)\n"
        "\n"
        "| Function | Change | Before | After | Operations | On the bus |\n"
        "|---|---|---|---|---|---|\n"
        "| Station (020) | Data.Level range, and in 1 more function | 0..30 | | Set, Status | |\n"
        "| Station (020) | Data.Level value 0x02 renamed | a\\|b | \\*c\\* | Set, Status | meaning |\n");
    EXPECT_EQ(Printed(PrintDiffMarkdown, {"a", "b", {}}), "# a -> b\n\nno changes\n");
}

TEST(DiffReport, Json) {
    const json report = json::parse(Printed(PrintDiffJson, SampleReport()));
    EXPECT_EQ(report["before"], "old.xml");
    EXPECT_EQ(report["after"], "n|w.xml");
    ASSERT_EQ(report["changes"].size(), 3U);
    EXPECT_EQ(report["changes"][0], json({{"change", "removed"},
                                          {"object", "block"},
                                          {"aspect", "existence"},
                                          {"effect", "bytes"},
                                          {"block", {{"name", "Amp"}, {"number", 0x22}}},
                                          {"function", nullptr},
                                          {"operations", json::array()},
                                          {"parameter", nullptr},
                                          {"item", nullptr},
                                          {"before", "2 functions"},
                                          {"after", nullptr},
                                          {"lost_by", 142},
                                          {"also_in", 0}}));
    EXPECT_EQ(report["changes"][2], json({{"change", "renamed"},
                                          {"object", "value"},
                                          {"aspect", "name"},
                                          {"effect", "meaning"},
                                          {"block", {{"name", "Tuner"}, {"number", 0x40}}},
                                          {"function", {{"name", "Station"}, {"number", 0x20}}},
                                          {"operations", {"Set", "Status"}},
                                          {"parameter", "Data.Level"},
                                          {"item", "0x02"},
                                          {"before", "a|b"},
                                          {"after", "*c*"},
                                          {"lost_by", nullptr},
                                          {"also_in", 0}}));
    EXPECT_EQ(report["summary"], json({{"changes", 3},
                                       {"added", 0},
                                       {"removed", 1},
                                       {"renamed", 1},
                                       {"moved", 0},
                                       {"changed", 1},
                                       {"bytes", 1},
                                       {"meaning", 1}}));
    EXPECT_EQ(json::parse(Printed(PrintDiffJson, {"a", "b", {}}))["changes"], json::array());
}

}  // namespace
}  // namespace tarvex::test::diff_report_test
