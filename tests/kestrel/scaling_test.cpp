/// Factor, range, step and unit of signals: set, written in every format and read back.

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "full_database.h"
#include "kestrel/database.h"
#include "sqlite_file.h"
#include "support.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const std::string kFront = R"("start_bit": 0, "length": 0, "byte_order": "little_endian", "signed": false)";

/// A database with one message, "Msg".
class Scaling : public DatabaseTest {
  protected:
    sigblk& AddScaled(std::string_view name, const sigscale& scaling) {
        sigblk& signal = AddSignal(message_, name);
        EXPECT_EQ(manager_.SetScaling(message_, signal, scaling), kKestrelOk) << name;
        return signal;
    }

    std::string WriteAs(const char* name) {
        std::string path = directory_ / name;
        EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelOk) << name;
        return path;
    }

    /// What stands behind the other keys of the first signal.
    std::string WrittenScaling() {
        const std::string text = Written();
        const std::size_t begin = text.find(kFront) + kFront.size();
        return text.substr(begin, text.find("}\n", begin) - begin);
    }

    msgblk& message_ = AddMessage(1, "Msg");
};

struct KeysCase {
    sigscale scaling;
    std::string keys;
};

TEST_F(Scaling, InVornStandsBehindTheOtherKeys) {
    const KeysCase rows[] = {
        {{}, R"(, "factor": 1)"},
        {{0.1, -12.5, 12.5, 0.5, "dB"},
         R"(, "factor": 0.1, "minimum": -12.5, "maximum": 12.5, "step": 0.5, "unit": "dB")"},
        {{100000, 0, 4294967295.0}, R"(, "factor": 100000, "minimum": 0, "maximum": 4294967295)"},
        {{1e-5, {}, {}, 1e-5}, R"(, "factor": 1e-05, "step": 1e-05)"},
        {{0.01, -0.0, {}, {}, "km/h"}, R"(, "factor": 0.01, "minimum": 0, "unit": "km/h")"},
        {{1, {}, -3}, R"(, "factor": 1, "maximum": -3)"},
        {{1e-307, {}, {}, {}, "\"°C\"\\"}, R"(, "factor": 1e-307, "unit": "\"°C\"\\")"},
        {{1e22, 0.1 + 0.2}, R"(, "factor": 1e+22, "minimum": 0.30000000000000004)"},
        {{1e15, -1e14, 999999999999999.0, 1.7976931348623157e308},
         R"(, "factor": 1e+15, "minimum": -100000000000000, "maximum": 999999999999999)"
         R"(, "step": 1.7976931348623157e+308)"},
    };
    sigblk& signal = AddSignal(message_, "Level");
    for (const auto& [scaling, keys] : rows) {
        ASSERT_EQ(manager_.SetScaling(message_, signal, scaling), kKestrelOk);
        EXPECT_EQ(WrittenScaling(), keys);
    }
}

TEST_F(Scaling, InVornIsTheLastOfASignal) {
    sigblk& signal = AddScaled("Level", {0.5, {}, {}, {}, "s"});
    signal.flags = kSignalMultiplexor | kSignalMultiplexed;
    signal.multiplexer_value = 7;
    signal.value_descriptions = Describe(1, "On");
    EXPECT_EQ(
        WrittenScaling(),
        R"(, "values": [[1, "On"]], "multiplexor": true, "multiplexer_value": 7, "factor": 0.5, "unit": "s")");
}

TEST_F(Scaling, ThatIsNoneIsRefusedAndChangesNothing) {
    const sigscale rows[] = {
        {0},    {-0.1},       {kInfinity},        {std::nan("")},         {1, -kInfinity},
        {-0.0}, {-kInfinity}, {1, {}, kInfinity}, {1, {}, {}, kInfinity}, {1, 0, std::nan("")},
    };
    sigblk& signal = AddScaled("Level", {0.25});
    for (const sigscale& scaling : rows) {
        EXPECT_EQ(manager_.SetScaling(message_, signal, scaling), kKestrelBadArgument) << scaling.factor;
        EXPECT_EQ(WrittenScaling(), R"(, "factor": 0.25)");
    }
}

struct UnitCase {
    std::string unit;
    std::string kept;
};

TEST_F(Scaling, UnitIsTextOfAtMost200Bytes) {
    const std::string letters(198, 'u');
    const UnitCase rows[] = {
        {letters + "vw", letters + "vw"},
        {letters + "vwx", letters + "vw"},
        {letters + "°", letters + "°"},
        {letters + "v°", letters + "v"},
        {letters + "€", letters},
        {"m\xFFs", "m\xEF\xBF\xBDs"},
        {letters + "\xFF", letters},
        {std::string("m\0s", 3), "m"},
        {std::string(1'000'000, 'u'), letters + "uu"},
    };
    sigblk& signal = AddSignal(message_, "Level");
    for (const auto& [unit, kept] : rows) {
        ASSERT_EQ(manager_.SetScaling(message_, signal, {.unit = unit}), kKestrelOk);
        EXPECT_EQ(WrittenScaling(), R"(, "factor": 1, "unit": ")" + kept + "\"");
        EXPECT_EQ(ReadAsVorn(WriteAs("out.sqlite")), ReadFile(WriteAs("out.vorn")));
    }
}

TEST_F(Scaling, OfSignalsWithoutADatabaseIsKeptToo) {
    msgblk& held = *manager_.CreateMessage(nullptr, 0);
    EXPECT_EQ(manager_.SetScaling(held, *manager_.CreateSignal(held, 0), {2}), kKestrelOk);
    EXPECT_EQ(Written().find("factor"), std::string::npos);
}

TEST_F(Scaling, IsStoredOnceForAllSignalsThatShareIt) {
    struct WithoutScaling : sigblk {
        kestrel::Signal* next = nullptr;
    };
    EXPECT_EQ(sizeof(kestrel::Signal), sizeof(WithoutScaling) + sizeof(void*));
    const auto scalingOf = [](const sigblk& signal) {
        return static_cast<const kestrel::Signal&>(signal).scaling;
    };
    const sigscale level{0.1, 0, 100, 0.1, "dB"};
    const sigblk& first = AddScaled("A", level);
    const sigblk& second = AddScaled("B", level);
    EXPECT_EQ(scalingOf(first), scalingOf(second));
    for (const sigscale& other : std::vector<sigscale>{{0.2, 0, 100, 0.1, "dB"},
                                                       {0.1, 1, 100, 0.1, "dB"},
                                                       {0.1, 0, 101, 0.1, "dB"},
                                                       {0.1, 0, 100, {}, "dB"},
                                                       {0.1, 0, 100, 0.1, "Hz"}}) {
        EXPECT_NE(scalingOf(AddScaled("C", other)), scalingOf(first));
    }
    EXPECT_EQ(scalingOf(AddSignal(message_, "D")), nullptr);
}

TEST_F(Scaling, IsReadBackFromVornAndSqlite) {
    AddScaled("A", {0.1, -12.5, 12.5, 0.5, "dB"});
    AddSignal(message_, "B");
    AddScaled("C", {1e-307, -1.7976931348623157e308, 1.7976931348623157e308, 5e-324});
    AddScaled("D", {1e308, {}, 0.30000000000000004, -1, "°C \"quoted\"\t"});
    AddScaled("E", {0.1, -12.5, 12.5, 0.5, "dB"});
    AddScaled("F", {1, -0.0});
    const std::string vorn = ReadFile(WriteAs("out.vorn"));
    const std::string sqlite = WriteAs("out.sqlite");
    EXPECT_EQ(ReadAsVorn(directory_ / "out.vorn"), vorn);
    EXPECT_EQ(ReadAsVorn(sqlite), vorn);
    const std::string copy = directory_ / "copy.sqlite";
    ASSERT_EQ(kestrel::WriteDatabase(*kestrel::ReadDatabase(directory_ / "out.vorn"), copy.c_str()),
              kKestrelOk);
    EXPECT_EQ(ReadFile(copy), ReadFile(sqlite));
}

TEST_F(Scaling, InSqliteIsARowOfItsOwnTable) {
    AddSignal(message_, "A");
    AddScaled("B", {0.1, -12.5, 12.5, 0.5, "dB"});
    AddScaled("C", {100000, 0, {}, {}, {}});
    SqliteFile file(WriteAs("out.sqlite"));
    EXPECT_EQ(file.Rows("SELECT * FROM signal_scaling"),
              "2 0.1 -12.5 12.5 0.5 'dB'\n3 100000.0 0.0 NULL NULL NULL\n");
    EXPECT_EQ(file.Rows("SELECT name, type, \"notnull\", pk FROM pragma_table_info('signal_scaling')"),
              "'signal_id' 'INTEGER' 0 1\n'factor' 'REAL' 1 0\n'minimum' 'REAL' 0 0\n'maximum' 'REAL' 0 0\n"
              "'step' 'REAL' 0 0\n'unit' 'TEXT' 0 0\n");
    EXPECT_EQ(file.Rows("SELECT \"from\", \"table\" FROM pragma_foreign_key_list('signal_scaling')"),
              "'signal_id' 'signal'\n");
    EXPECT_EQ(file.Rows("PRAGMA foreign_key_check"), "");
    EXPECT_EQ(file.Rows("PRAGMA integrity_check"), "'ok'\n");
}

TEST_F(Scaling, WithoutOneSqliteHasNoTableForIt) {
    AddSignal(message_, "A");
    EXPECT_EQ(SqliteFile(WriteAs("out.sqlite"))
                  .Rows("SELECT count(*) FROM sqlite_master WHERE name = 'signal_scaling'"),
              "0\n");
}

struct KcdValueCase {
    sigscale scaling;
    std::uint16_t flags = 0;
    const char* value = nullptr;
};

TEST_F(Scaling, InKcdStandsInTheValue) {
    const KcdValueCase rows[] = {
        {{}, 0, R"(<Value slope="1"/>)"},
        {{0.1, -12.5, 12.5, 0.5, "dB"},
         kSignalSigned,
         R"(<Value type="signed" slope="0.1" unit="dB" min="-12.5" max="12.5"/>)"},
        {{1e-5, 0}, kSignalBigEndian, R"(<Value slope="1e-05" min="0"/>)"},
        {{100000, {}, 1e6, {}, "<°C & \"K\">"},
         0,
         R"(<Value slope="100000" unit="&lt;°C &amp; &quot;K&quot;&gt;" max="1000000"/>)"},
        {{1, {}, {}, {}, "a\x01z"}, 0, R"(<Value slope="1" unit="a?z"/>)"},
        {{2, 0, 3}, kSignalMultiplexor, R"(<Value slope="2" min="0" max="3"/>)"},
    };
    sigblk& signal = AddSignal(message_, "Level");
    for (const auto& [scaling, flags, value] : rows) {
        signal.flags = flags;
        ASSERT_EQ(manager_.SetScaling(message_, signal, scaling), kKestrelOk);
        const std::string xml = ReadFile(WriteAs("out.kcd"));
        const std::size_t begin = xml.find("<Value");
        ASSERT_NE(begin, std::string::npos) << value;
        EXPECT_EQ(xml.substr(begin, xml.find("/>", begin) + 2 - begin), value);
    }
}

struct DamagedKeyCase {
    const char* good;
    std::string bad;
    std::string error;
};

class DamagedScaling : public Scaling {
  protected:
    DamagedScaling() {
        AddScaled("A", {0.1, -12.5, 12.5, 0.5, "dB"});
        AddScaled("B", {2});
        AddSignal(message_, "C");
    }
};

TEST_F(DamagedScaling, InVornIsFoundWithItsLine) {
    const std::string longUnit(201, 'u');
    const DamagedKeyCase rows[] = {
        {R"("factor": 0.1)", R"("factor": "0.1")", "\"factor\" of a signal is no number"},
        {R"("factor": 0.1)", R"("factor": null)", "\"factor\" of a signal is no number"},
        {R"("factor": 0.1)", R"("factor": 0)", "the factor of a signal is not above 0"},
        {R"("factor": 0.1)", R"("factor": -0.1)", "the factor of a signal is not above 0"},
        {R"("factor": 0.1, )", "", "a signal has no \"factor\""},
        {R"("factor": 2)", R"("unit": "dB")", "a signal has no \"factor\""},
        {R"("factor": 2)", R"("step": 1)", "a signal has no \"factor\""},
        {R"("factor": 2)", R"("factor": 2, "offset": 1)", "a signal has an unknown key"},
        {R"("minimum": -12.5)", R"("minimum": true)", "\"minimum\" of a signal is no number"},
        {R"("maximum": 12.5)", R"("maximum": [])", "\"maximum\" of a signal is no number"},
        {R"("step": 0.5)", R"("step": null)", "\"step\" of a signal is no number"},
        {R"("unit": "dB")", R"("unit": null)", "\"unit\" of a signal is no text"},
        {R"("unit": "dB")", R"("unit": "d\u0000B")", "a unit has a zero character"},
        {R"("unit": "dB")", R"("unit": ")" + longUnit + "\"",
         "the unit '" + longUnit.substr(1) + "...' is longer than 200 bytes"},
    };
    const std::string good = ReadFile(WriteAs("good.vorn"));
    for (const auto& [part, bad, error] : rows) {
        std::string text = good;
        const std::size_t place = text.find(part);
        ASSERT_NE(place, std::string::npos) << part;
        MakeFile(directory_ / "bad.vorn", text.replace(place, std::string_view(part).size(), bad));
        EXPECT_EQ(ErrorOf(directory_ / "bad.vorn"), "line 15: " + error) << bad;
    }
    std::string text = good;
    text.replace(text.find(R"("step": 0.5)"), 11, R"("step": 9e999)");
    MakeFile(directory_ / "bad.vorn", text);
    EXPECT_NE(ErrorOf(directory_ / "bad.vorn"), "");
}

struct DamagedRowCase {
    std::string sql;
    std::string error;  // behind the table
};

TEST_F(DamagedScaling, InSqliteIsFoundWithItsRow) {
    const std::string again =
        "CREATE TABLE t AS SELECT * FROM signal_scaling; DROP TABLE signal_scaling;"
        "ALTER TABLE t RENAME TO signal_scaling;";
    const DamagedRowCase rows[] = {
        {"UPDATE signal_scaling SET signal_id = 9 WHERE signal_id = 2",
         ", row 2: signal_id is no id of another table's row"},
        {again + "UPDATE signal_scaling SET signal_id = 1", ", row 2: the scaling of a signal stands twice"},
        {again + "UPDATE signal_scaling SET signal_id = 'A'", ", row 1: signal_id is no id"},
        {again + "UPDATE signal_scaling SET factor = NULL", ", row 1: factor is no number"},
        {"UPDATE signal_scaling SET factor = 0 WHERE signal_id = 2",
         ", row 2: the factor of a signal is not above 0"},
        {"UPDATE signal_scaling SET factor = -1", ", row 1: the factor of a signal is not above 0"},
        {"UPDATE signal_scaling SET factor = 9e999", ", row 1: factor is no finite number"},
        {"UPDATE signal_scaling SET factor = 'one'", ", row 1: factor is no number"},
        {"UPDATE signal_scaling SET minimum = -9e999", ", row 1: minimum is no finite number"},
        {"UPDATE signal_scaling SET maximum = 'x'", ", row 1: maximum is no number"},
        {"UPDATE signal_scaling SET step = x'00'", ", row 1: step is no number"},
        {"UPDATE signal_scaling SET unit = x'00'", ", row 1: unit is no text"},
        {"UPDATE signal_scaling SET unit = 'd' || char(0)", ", row 1: a unit has a zero character"},
        {"UPDATE signal_scaling SET unit = printf('%.*c', 201, 'u')",
         ", row 1: the unit '" + std::string(200, 'u') + "...' is longer than 200 bytes"},
        {"ALTER TABLE signal_scaling DROP COLUMN step", ": no such column: step"},
        {"DROP TABLE signal_scaling; CREATE VIEW signal_scaling AS SELECT 1 AS signal_id, 2 AS factor",
         " is no stored table"},
    };
    for (const auto& [sql, error] : rows) {
        const std::string path = WriteAs("bad.sqlite");
        SqliteFile(path).Run("DROP VIEW signals; " + std::string(sql));  // which needs its columns
        EXPECT_EQ(ErrorOf(path), "table signal_scaling" + error) << sql;
    }
}

struct HarmlessRowCase {
    const char* sql;
    const char* kept;  // of the first signal
};

TEST_F(DamagedScaling, WhatSqliteMayHaveBesidesIsRead) {
    const HarmlessRowCase rows[] = {
        {"UPDATE signal_scaling SET minimum = NULL, step = NULL, unit = ''",
         R"(, "factor": 0.1, "maximum": 12.5)"},
        {"UPDATE signal_scaling SET minimum = 20", R"(, "factor": 0.1, "minimum": 20, "maximum": 12.5)"
                                                   R"(, "step": 0.5, "unit": "dB")"},
        {"ALTER TABLE signal_scaling ADD COLUMN offset REAL DEFAULT 1; UPDATE signal_scaling SET factor = 3",
         R"(, "factor": 3, "minimum": -12.5, "maximum": 12.5, "step": 0.5, "unit": "dB")"},
        {"DROP TABLE signal_scaling", ""},
    };
    for (const auto& [sql, kept] : rows) {
        const std::string path = WriteAs("changed.sqlite");
        SqliteFile(path).Run(sql);
        EXPECT_NE(ReadAsVorn(path).find(kFront + kept + "},\n"), std::string::npos) << sql;
    }
}

}  // namespace
