/// Scalings of signals: what the catalog says of its numbers, what databases have of it, and what it takes.

#include "export/scaling.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "disasm/number_item.h"
#include "export/signal_layout.h"
#include "import/text/format_text.h"

namespace tarvex::test::scaling_test {
namespace {

using nlohmann::json;

/// A "TNumber" of an unsigned byte; without its range when the bounds are empty.
struct NumberText {
    std::string exponent = "0";
    std::string min{};
    std::string max{};
    std::string step = "0";
    std::string unit = "unit_none";
    std::string basis = "TUByte";
    std::string type = "type_unsigned_byte";
};

std::string Xml(const NumberText& text) {
    const std::string range = text.min.empty() ? "" : "<RangeMin>" + text.min + "</RangeMin>";
    return "<TNumber><BasisDataType><" + text.basis + " TypeRef=\"" + text.type +
           "\"/></BasisDataType><Exponent>" + text.exponent + "</Exponent>" + range +
           (text.max.empty() ? "" : "<RangeMax>" + text.max + "</RangeMax>") + "<Step>" + text.step +
           "</Step><Unit UnitRef=\"" + text.unit + "\"/></TNumber>";
}

/// The type of the tests' numbers and a unit of that text.
std::string DefinitionsWith(const std::string& unitId, const std::string& unitName) {
    std::string xml = "<Definition>";
    for (const auto& [type, size] : {std::pair("type_unsigned_byte", "1"), {"type_unsigned_word", "2"}}) {
        xml.append("<TypeDef TypeID=\"").append(type).append("\"><TDefName>T</TDefName><TDefSize>");
        xml.append(size).append("</TDefSize></TypeDef>");
    }
    return xml + "<UnitDef UnitID=\"" + unitId + "\"><UnitDefName>" + unitName +
           "</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef></Definition>";
}

/// A catalog whose only parameter is a number of that name.
class OneNumber {
  public:
    explicit OneNumber(const NumberText& text, const std::string& definitions = kDefinitions,
                       std::string_view name = "Level")
        : imported_(ImportText(CatalogOf(
              BlockOf(PropertyOf("0x400", "Volume", {{std::string(name), Xml(text)}})), definitions))) {}

    const ZMTParamNumber& Get() const {
        return static_cast<const ZMTParamNumber&>(*Operation().Items().begin());
    }
    const ZMTOperation& Operation() const {
        return *imported_->catalog->GetAt(0x22)->GetAt(0x400)->GetAt(12);
    }

  private:
    std::unique_ptr<Imported> imported_;
};

struct ScalingCase {
    NumberText number;
    sigscale scaling;
};

TEST(ScalingOf, IsWhatTheCatalogSays) {
    const ScalingCase rows[] = {
        {{}, {1}},
        {{"-2", "-30", "250", "0.01", "unit_km_h"}, {0.01, -30, 250, 0.01, "km/h"}},
        {{"0", "0", "0"}, {1, 0, 0}},
        {{"0", "9", "-9"}, {1, 9, -9}},
        {{"0", "-12.5", "1e3", "0.25"}, {1, -12.5, 1000, 0.25}},
        {{"0", "5", ""}, {1}},
        {{"0", "", "5"}, {1}},
        {{"0", "-inf", "5"}, {1}},
        {{"0", "5", "inf", "inf"}, {1}},
        {{"0", "nan", "5", "nan"}, {1}},
        {{"0", "1e999", "2"}, {1}},
        {{"0", "low", "high", "none"}, {1}},
        {{"0", "0,5", "12.5"}, {1}},
        {{"0", "5 km", "7"}, {1}},
        {{"0", "5", "7 km"}, {1}},
        {{"0", " 5\n", "7\t"}, {1, 5, 7}},
        {{"0", "-1.7976931348623157e308", "1.7976931348623157e308"},
         {1, -1.7976931348623157e308, 1.7976931348623157e308}},
        {{"0", "", "", "-0.5"}, {1, {}, {}, -0.5}},
        {{"0", "", "", "-0"}, {1}},
    };
    for (const auto& [text, scaling] : rows) {
        SCOPED_TRACE(Xml(text));
        const sigscale found = ScalingOf(OneNumber(text).Get());
        EXPECT_EQ(found.factor, scaling.factor);
        EXPECT_EQ(found.minimum, scaling.minimum);
        EXPECT_EQ(found.maximum, scaling.maximum);
        EXPECT_EQ(found.step, scaling.step);
        EXPECT_EQ(found.unit, scaling.unit);
    }
}

struct FactorCase {
    const char* exponent;
    double factor;
};

TEST(ScalingOf, FactorIsTheNearestDoubleToThePowerOfTen) {
    const FactorCase rows[] = {
        {"-5", 0.00001},
        {"-4", 0.0001},
        {"-3", 0.001},
        {"-2", 0.01},
        {"-1", 0.1},
        {"0", 1},
        {"1", 10},
        {"2", 100},
        {"3", 1000},
        {"4", 10000},
        {"5", 100000},
        {"-6", 1e-6},
        {"-23", 1e-23},
        {"23", 1e23},
        {"-307", 1e-307},
        {"308", 1e308},
        {"-308", 1e-307},
        {"309", 1e308},
        {"-2147483648", 1e-307},
        {"2147483647", 1e308},
        {"-99999999999", 1e-307},
        {"99999999999", 1e308},
        {"much", 1},
    };
    for (const auto& [exponent, factor] : rows) {
        EXPECT_EQ(ScalingOf(OneNumber({exponent}).Get()).factor, factor) << exponent;
    }
}

struct UnitCase {
    std::string unitId;
    std::string name;
    std::string unit;
};

TEST(ScalingOf, UnitIsTheCatalogsText) {
    const std::string letters(199, 'u');
    const UnitCase rows[] = {
        {"unit_c", "°C", "°C"},
        {"unit_p", "%", "%"},
        {"unit_o", "\n   m / s²\t", "m / s²"},
        {"unit_q", "&quot;a&#9;b&quot;", "\"a.b\""},
        {"unit_n", "not_defined", ""},
        {"unit_n", "Not_Defined", ""},
        {"unit_n", "none", ""},
        {"unit_n", " NONE ", ""},
        {"unit_n", "nones", "nones"},
        {"unit_none", "dB", ""},
        {"UNIT_undefined", "dB", ""},
        {"unit_x", "unit_none", ""},
        {"unit_l", letters + "v", letters + "v"},
        {"unit_l", letters + "vw", letters + "v"},
        {"unit_l", letters + "°", letters},
    };
    for (const auto& [unitId, name, unit] : rows) {
        NumberText text;
        text.unit = unitId;
        EXPECT_EQ(ScalingOf(OneNumber(text, DefinitionsWith(unitId, name)).Get()).unit, unit) << name;
    }
}

TEST(ScalingOf, CoordinatesHaveNoUnit) {
    const NumberText word{"0", "0", "65535", "1", "unit_km_h", "TUWord", "type_unsigned_word"};
    const NumberText byte{"0", "0", "255", "1", "unit_km_h"};
    EXPECT_EQ(ScalingOf(OneNumber(word, kDefinitions, "Pos").Get()), (sigscale{1, 0, 65535, 1, ""}));
    EXPECT_EQ(ScalingOf(OneNumber(word, kDefinitions, "Poss").Get()), (sigscale{1, 0, 65535, 1, "km/h"}));
    EXPECT_EQ(ScalingOf(OneNumber(byte, kDefinitions, "Pos").Get()), (sigscale{1, 0, 255, 1, "km/h"}));
}

/// The digits of a text end there: half of the last one.
double HalfOfTheLastDigit(const std::string& text) {
    const std::size_t exponent = text.find('e');
    const std::string mantissa = text.substr(0, exponent);
    const std::size_t point = mantissa.find('.');
    const auto decimals = point == std::string::npos ? 0 : static_cast<int>(mantissa.size() - point - 1);
    const int power = exponent == std::string::npos ? 0 : std::stoi(text.substr(exponent + 1));
    return 0.5 * std::pow(10.0, power - decimals);
}

TEST(ScalingOf, RawValueTimesFactorIsWhatTheDisassemblerSays) {
    constexpr std::array kExponents = {-5,  -4,  -3,  -2,  -1, 0,  1,  2, 3,  4,  5,  -6,  -7,   -8,
                                       -9,  -10, -13, -20, 6,  7,  8,  9, 10, 14, 20, 100, -100, -300,
                                       298, -11, -12, -4,  -3, -2, -1, 1, 2,  3,  -5, 5};
    constexpr std::pair<const char*, const char*> kTypes[] = {{"TULong", "type_unsigned_long"},
                                                              {"TSLong", "type_signed_long"}};
    std::mt19937 random(2026);
    int compared = 0;
    for (const int exponent : kExponents) {
        for (const auto& [basis, type] : kTypes) {
            NumberText text{std::to_string(exponent)};
            text.basis = basis;
            text.type = type;
            const OneNumber number(text);
            const double factor = ScalingOf(number.Get()).factor;
            for (int i = 0; i < 125; ++i, ++compared) {
                // Of all magnitudes.
                const std::uint32_t bits = static_cast<std::uint32_t>(random()) >> (random() % 32);
                const std::uint8_t bytes[] = {
                    static_cast<std::uint8_t>(bits >> 24U), static_cast<std::uint8_t>(bits >> 16U),
                    static_cast<std::uint8_t>(bits >> 8U), static_cast<std::uint8_t>(bits)};
                const ZMostParameterNumber item(number.Get(), bytes, 0);
                const double physical = static_cast<double>(item.SignedValue()) * factor;
                const std::string shown = item.GetText();
                const double slack = physical == 0 ? 0 : std::fabs(physical) * 1e-15;
                ASSERT_LE(std::fabs(std::strtod(shown.c_str(), nullptr) - physical),
                          HalfOfTheLastDigit(shown) + slack)
                    << shown << " is not " << physical << ", 10^" << exponent;
                if (std::abs(exponent) <= 5 && physical != 0) {
                    ASSERT_EQ(shown, FormatText("%.*f", std::max(0, -exponent), physical)) << exponent;
                }
            }
        }
    }
    EXPECT_EQ(compared, 10'000);
}

/// The message of these parameters, with the setting.
json ScaledMessage(const NamedTypes& params, bool isSafe = false) {
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", params)));
    conversion.flags.writeSignals = true;
    conversion.flags.writeScaling = true;
    conversion.flags.safeLayout = isSafe;
    return MessageNamed(conversion.Database(), "Amp_Volume_Status");
}

/// What a signal has of a scaling.
json ScalingIn(const json& signal) {
    json scaling = json::object();
    for (const char* key : {"factor", "minimum", "maximum", "step", "unit"}) {
        if (signal.contains(key)) {
            scaling[key] = signal[key];
        }
    }
    return scaling;
}

TEST(WriteScaling, GivesScalingsToNumbersAlone) {
    const NumberText speed{"-2", "-30", "250", "0.01", "unit_km_h"};
    const json signals = ScaledMessage({{"Speed", Xml(speed)},
                                        {"Mode", Enumeration(9, {{"1", "On"}})},
                                        {"Bits", BitField(8, {{0, "Ready"}})},
                                        {"Plain", UWord()}})["signals"];
    ASSERT_EQ(signals.size(), 4U);
    const json kSpeed = {
        {"factor", 0.01}, {"minimum", -30}, {"maximum", 250}, {"step", 0.01}, {"unit", "km/h"}};
    EXPECT_EQ(ScalingIn(signals[0]), kSpeed);
    EXPECT_EQ(ScalingIn(signals[1]), json::object());
    EXPECT_EQ(ScalingIn(signals[2]), json::object());
    EXPECT_EQ(ScalingIn(signals[3]), (json{{"factor", 1}}));
}

TEST(WriteScaling, GivesThemToSwitchesAndToBothCopiesOfAField) {
    const NumberText pos{"0", "0", "65535", "1", "unit_km_h", "TUWord", "type_unsigned_word"};
    const NumberText gain{"-1", "", "", "0.5", "unit_km_h"};
    for (const bool isSafe : {false, true}) {
        const json signals =
            ScaledMessage({{"Pos", Xml(pos)}, {"Data", Record({{"Gain", Xml(gain)}})}}, isSafe)["signals"];
        ASSERT_EQ(signals.size(), 3U);
        EXPECT_EQ(signals[0]["multiplexor"], true);
        EXPECT_EQ(ScalingIn(signals[0]),
                  (json{{"factor", 1}, {"minimum", 0}, {"maximum", 65535}, {"step", 1}}));
        const json kGain = {{"factor", 0.1}, {"step", 0.5}, {"unit", "km/h"}};
        EXPECT_EQ(ScalingIn(signals[1]), kGain);
        EXPECT_EQ(ScalingIn(signals[2]), kGain);
    }
}

TEST(WriteScaling, IsOffUnlessAskedFor) {
    Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", {{"Speed", Xml({"-2", "-30", "250", "0.01", "unit_km_h"})}})));
    conversion.flags.writeSignals = true;
    const json message = MessageNamed(conversion.Database(), "Amp_Volume_Status");
    EXPECT_EQ(message["signals"], SignalsOf({{"Speed", 7, 8}}));
}

struct CostCase {
    const char* what = nullptr;
    sigscale scaling;
    Cost cost;
};

TEST(ScalingCost, GrowsWithTheUnit) {
    const CostCase rows[] = {
        {"a factor alone", {0.1}, {100, 160, 160}},
        {"the longest numbers",
         {1.2345678901234567e-300, -1.7976931348623157e308, 1e300, -5e-324},
         {100, 160, 160}},
        {"a unit of two letters", {1, {}, {}, {}, "dB"}, {102, 162, 172}},
        {"a unit of one letter in two bytes", {1, {}, {}, {}, "°"}, {102, 162, 172}},
        {"the largest unit", {1, {}, {}, {}, std::string(200, '"')}, {300, 360, 1360}},
    };
    for (const auto& [what, scaling, cost] : rows) {
        const Cost found = CostOf(scaling);
        EXPECT_EQ(found.steps, cost.steps) << what;
        EXPECT_EQ(found.memory, cost.memory) << what;
        EXPECT_EQ(found.written, cost.written) << what;
    }
}

struct RoomCase {
    const char* what = nullptr;
    Cost room;
    bool isScaled = false;
    bool isThere = false;
};

/// A signal takes 160, 256 and 160; its scaling with a unit of four letters 104, 164 and 184.
TEST(ScalingCost, IsTakenFromTheRunWithTheSignal) {
    const RoomCase rows[] = {
        {"enough", {264, 420, 344}, true, true},
        {"a step less", {263, 420, 344}, true, false},
        {"a byte of memory less", {264, 419, 344}, true, false},
        {"a byte of files less", {264, 420, 343}, true, false},
        {"without scalings", {160, 256, 160}, false, true},
    };
    NumberText text;
    text.unit = "unit_km_h";
    const OneNumber number(text, kDefinitions, "A");
    for (const auto& [what, room, isScaled, isThere] : rows) {
        KestrelWriteManager manager(nullptr);
        const AliasNames aliases;
        msgblk* message = manager.CreateMessage(nullptr, 0);
        SignalOptions options;
        options.areScaled = isScaled;
        SignalWriter signals(manager, aliases, options, SignalBudget(0, RunAllowance(room)));
        signals.Write(*message, number.Operation());
        EXPECT_EQ(signals.IsCut(), !isThere) << what;
        EXPECT_EQ(manager.GetSignal(*message, "A") != nullptr, isThere) << what;
    }
}

}  // namespace
}  // namespace tarvex::test::scaling_test
