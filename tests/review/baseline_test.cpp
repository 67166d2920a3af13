/// Faults that are known: what is compared, and files that are no baselines.

#include "review/baseline.h"

#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::baseline_test {
namespace {

using review::Baseline;

Fault MakeFault(unsigned number, const std::string& path, const std::string& text, std::uint64_t line = 1) {
    Fault fault;
    fault.number = number;
    fault.path = path;
    fault.text = text;
    fault.line = line;
    return fault;
}

std::string WhyNotRead(const std::string& path) {
    try {
        Baseline::Read(path);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "it was read";
}

TEST(ReviewBaseline, KnowsFaultsByNumberPathAndText) {
    const TempDir dir;
    const std::string path = dir.File("known");
    Baseline written;
    written.Add(MakeFault(93, "/r1/Amp/Flags", "too long"));
    written.Add(MakeFault(9, "/r1/Amp", "twice"));
    written.Add(MakeFault(9, "/r1/Amp", "twice"));
    written.Write(path);
    EXPECT_EQ(ReadFile(path), "tarvex-catalog baseline 1\n2\t9\t/Amp\ttwice\n1\t93\t/Amp/Flags\ttoo long\n");
    const struct {
        const char* what;
        Fault fault;
        bool isKnown;
    } rows[] = {
        {"on another line, of another release", MakeFault(93, "/r2/Amp/Flags", "too long", 77), true},
        {"again", MakeFault(93, "/r2/Amp/Flags", "too long"), false},
        {"the first of two", MakeFault(9, "/r2/Amp", "twice"), true},
        {"the second of two", MakeFault(9, "/r2/Amp", "twice"), true},
        {"a third", MakeFault(9, "/r2/Amp", "twice"), false},
        {"another number", MakeFault(94, "/r2/Amp/Flags", "too long"), false},
        {"another path", MakeFault(93, "/r2/Amp/Flag", "too long"), false},
        {"another text", MakeFault(93, "/r2/Amp/Flags", "too short"), false},
    };
    Baseline known = Baseline::Read(path);
    for (const auto& row : rows) {
        EXPECT_EQ(known.Take(row.fault), row.isKnown) << row.what;
    }
}

TEST(ReviewBaseline, TextsOfSeveralLinesStayOne) {
    const TempDir dir;
    Baseline written;
    written.Add(MakeFault(0, "", "a\tb\nc"));
    written.Write(dir.File("known"));
    EXPECT_EQ(ReadFile(dir.File("known")), "tarvex-catalog baseline 1\n1\t0\t\ta.b.c\n");
    Baseline known = Baseline::Read(dir.File("known"));
    EXPECT_TRUE(known.Take(MakeFault(0, "", "a\tb\nc")));
}

TEST(ReviewBaseline, FilesThatAreNoneAreToldWithALine) {
    const TempDir dir;
    const std::string path = dir.File("known");
    const std::string head = "tarvex-catalog baseline 1\n";
    const std::string noBaseline =
        ":1: this is no baseline: its first line is not 'tarvex-catalog baseline 1'";
    const std::string noRow = "expected count, number, path and text, parted by tabs";
    const struct {
        std::string content;
        std::string told;
    } rows[] = {
        {"", path + noBaseline},
        {"{\"faults\": []}\n", path + noBaseline},
        {"tarvex-catalog baseline 2\n", path + noBaseline},
        {std::string("\0\0\0\n", 4), path + noBaseline},
        {head + "1\t93\t/Amp\ttext\n1\t93\t/Amp", path + ":3: the file ends within a line"},
        {head + "1\t93\t/Amp\n", path + ":2: " + noRow},
        {head + "one\t93\t/Amp\ttext\n", path + ":2: " + noRow},
        {head + "1\t93x\t/Amp\ttext\n", path + ":2: " + noRow},
        {head + "99999999999999999999999\t93\t/Amp\ttext\n", path + ":2: " + noRow},
        {head + "\n", path + ":2: " + noRow},
    };
    for (const auto& row : rows) {
        dir.Write("known", row.content);
        EXPECT_EQ(WhyNotRead(path), row.told);
    }
    EXPECT_EQ(WhyNotRead(dir.File("missing")), "can't read '" + dir.File("missing") + "'");
    EXPECT_EQ(WhyNotRead(dir.Path()), "can't read '" + dir.Path() + "'");
}

TEST(ReviewBaseline, WhatCannotBeWrittenIsTold) {
    const TempDir dir;
    EXPECT_THROW(Baseline().Write(dir.File("missing") + "/known"), std::runtime_error);
}

}  // namespace
}  // namespace tarvex::test::baseline_test
