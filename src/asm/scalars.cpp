#include "asm/scalars.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "capture/hexadecimal.h"
#include "disasm/item.h"
#include "import/text/format_text.h"
#include "import/text/names.h"
#include "import/text/nearest_name.h"
#include "import/text/wording.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

constexpr std::int32_t kMaxValueBytes = 4;

/// The word or item as text; quoted numbers are as good.
bool IsText(const AsmValue& value) {
    return value.form == AsmValue::Form::Word || value.form == AsmValue::Form::Quoted ||
           value.form == AsmValue::Form::Item;
}

/// A number in decimal digits, as its digits and the power of ten that they are multiplied with.
struct Decimal {
    std::int64_t digits = 0;
    std::int32_t exponent = 0;
    std::string_view rest;  // behind it
};

std::optional<Decimal> ReadDecimal(std::string_view text) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / 10 - 1;
    Decimal number;
    std::size_t at = 0;
    const bool isNegative = text.starts_with('-');
    at += isNegative || text.starts_with('+') ? 1 : 0;
    bool isBehindPoint = false;
    bool hasDigits = false;
    for (; at < text.size(); ++at) {
        if (text[at] == '.' && !isBehindPoint) {
            isBehindPoint = true;
        } else if (text[at] >= '0' && text[at] <= '9') {
            if (number.digits > kMost) {
                return std::nullopt;
            }
            number.digits = 10 * number.digits + (text[at] - '0');
            number.exponent -= isBehindPoint ? 1 : 0;
            hasDigits = true;
        } else {
            break;
        }
    }
    if (!hasDigits) {
        return std::nullopt;
    }
    if (at < text.size() && FoldCase(text[at]) == 'e') {
        std::string_view power = text.substr(at + 1);
        const bool isLess = power.starts_with('-');
        power.remove_prefix(isLess || power.starts_with('+') ? 1 : 0);
        power = power.substr(0, power.find_first_not_of("0123456789"));
        if (!power.empty()) {
            constexpr std::uint32_t kMaxPower = 400;
            const auto value = DigitsOf(power, 10);
            if (!value || *value > kMaxPower) {
                return std::nullopt;
            }
            number.exponent +=
                isLess ? -static_cast<std::int32_t>(*value) : static_cast<std::int32_t>(*value);
            at = static_cast<std::size_t>(power.data() + power.size() - text.data());
        }
    }
    number.digits = isNegative ? -number.digits : number.digits;
    number.rest = TrimBlanks(text.substr(at));
    return number;
}

/// The digits times a power of ten; nothing when that is no whole number or far too large.
std::optional<std::int64_t> Shifted(std::int64_t digits, std::int32_t power) {
    constexpr std::int64_t kMost = std::int64_t{1} << 40;
    for (; power > 0 && digits != 0; --power) {
        if (std::abs(digits) > kMost) {
            return std::nullopt;
        }
        digits *= 10;
    }
    for (; power < 0 && digits != 0; ++power) {
        if (digits % 10 != 0) {
            return std::nullopt;
        }
        digits /= 10;
    }
    return std::abs(digits) > kMost ? std::nullopt : std::optional(digits);
}

/// Digits of a double as catalogs have them: "12.5", "0.1".
std::string Short(double value) {
    return FormatText("%.10g", value);
}

bool IsMultiple(double value, double step) {
    constexpr double kTolerance = 1e-6;
    const double count = value / step;
    return std::fabs(count - std::round(count)) < kTolerance * std::max(1.0, std::fabs(count));
}

bool HasBounds(const ZMTParamNumber& number) {
    return number.HasRange() && number.RangeMin() < number.RangeMax();
}

/// The bits of a number that has a value.
unsigned ValueBits(const ZMTParamNumber& number) {
    return 8 * static_cast<unsigned>(std::clamp(number.GetBytesInMsg(), 1, kMaxValueBytes));
}

std::int64_t LeastOf(const ZMTParamNumber& number) {
    return number.IsSigned() ? -(std::int64_t{1} << (ValueBits(number) - 1)) : 0;
}

std::int64_t MostOf(const ZMTParamNumber& number) {
    return (std::int64_t{1} << (ValueBits(number) - (number.IsSigned() ? 1 : 0))) - 1;
}

/// Which coordinate has that name: x or y.
std::optional<std::size_t> CoordinateNamed(std::string_view name) {
    return NamesEqual(name, "x") || NamesEqual(name, "PosX")   ? std::optional<std::size_t>(0)
           : NamesEqual(name, "y") || NamesEqual(name, "PosY") ? std::optional<std::size_t>(1)
                                                               : std::nullopt;
}

/// Both coordinates: "PosX=1 PosY=2", {x=1,y=2} in any order, or [1,2].
std::optional<std::uint32_t> PairOf(const AsmValue& value) {
    std::vector<std::pair<std::optional<std::size_t>, std::string_view>> given;
    if (IsText(value)) {
        for (const std::string_view token : SplitTokens(value.text, " ")) {
            const std::size_t equals = std::min(token.find('='), token.size());
            given.emplace_back(CoordinateNamed(token.substr(0, equals)),
                               token.substr(std::min(equals + 1, token.size())));
        }
    }
    for (const AsmValue& entry : value.list) {
        given.emplace_back(given.size(), entry.text);
    }
    for (const AsmField& field : value.fields) {
        given.emplace_back(CoordinateNamed(field.name), field.value.text);
    }
    std::optional<std::uint32_t> both[2];
    for (const auto& [which, text] : given) {
        if (!which || *which > 1 || both[*which]) {
            return std::nullopt;
        }
        both[*which] = DigitsOf(text, 10);
    }
    constexpr std::uint32_t kMax = 0xFF;
    return both[0] && both[1] && *both[0] <= kMax && *both[1] <= kMax
               ? std::optional(*both[0] << 8 | *both[1])
               : std::nullopt;
}

/// The raw value of a physical one, if it has one.
std::optional<std::int64_t> RawOf(const ZMTParamNumber& number, const Decimal& decimal) {
    return Shifted(decimal.digits, decimal.exponent - number.Exponent());
}

AsmResult CheckNumber(const ZMTParamNumber& number, const AsmValue& value, std::int64_t raw) {
    const double physical = static_cast<double>(raw) * std::pow(10.0, number.Exponent());
    constexpr double kTolerance = 1e-9;
    const double room = kTolerance * std::max(std::fabs(number.RangeMin()), std::fabs(number.RangeMax()));
    if (HasBounds(number) && (physical < number.RangeMin() - room || physical > number.RangeMax() + room)) {
        return {Short(physical) + " is out of range, expected " + ExpectedOf(number), value.place, true};
    }
    const double step = number.Step();
    if (step > 0 && !IsMultiple(physical, step) &&
        !(HasBounds(number) && IsMultiple(physical - number.RangeMin(), step))) {
        return {Short(physical) + " is off the step, expected " + ExpectedOf(number), value.place, true};
    }
    return {};
}

/// A raw value in hexadecimal digits: the number that it is in as many bits as the number has.
std::optional<std::int64_t> RawInHexadecimal(const ZMTParamNumber& number, std::string_view text) {
    const auto bits = HexOf(text);
    if (!bits || std::uint64_t{*bits} >> ValueBits(number) != 0) {
        return std::nullopt;
    }
    const std::int64_t value = *bits;
    return value > MostOf(number) ? value - (std::int64_t{1} << ValueBits(number)) : value;
}

/// "12.5 dB": the unit, if one is given, has to be the number's.
bool IsUnit(const ZMTParamNumber& number, std::string_view unit) {
    return unit.empty() || NamesEqual(unit, TrimBlanks(number.UnitText())) ||
           NamesEqual(unit, number.UnitName());
}

std::vector<std::string_view> NamesOf(const ZMTParamEnum& enumeration) {
    std::vector<std::string_view> names;
    for (const ZMTEnumValue& value : enumeration.Items()) {
        names.push_back(value.GetName());
    }
    return names;
}

/// What stands in front of the code of "Play (0x00)"; nothing where there is no such code.
std::string_view NameBeforeCode(std::string_view text) {
    const std::size_t open = text.ends_with(')') ? text.rfind('(') : std::string_view::npos;
    return open == std::string_view::npos ? std::string_view() : TrimBlanks(text.substr(0, open));
}

/// The names that a code has.
std::vector<std::string_view> NamesOfCode(const ZMTParamEnum& enumeration, std::uint32_t code) {
    std::vector<std::string_view> names;
    for (const ZMTEnumValue& value : enumeration.Items()) {
        if (value.CodeMin() <= code && code <= value.CodeMax()) {
            names.push_back(value.GetName());
        }
    }
    return names;
}

/// What is wrong with the name in front of a code; empty for one of the code's, and for none.
std::string WrongNameOfCode(const ZMTParamEnum& enumeration, std::string_view text, std::uint32_t code) {
    const std::string_view name = NameBeforeCode(text);
    const std::vector<std::string_view> names = NamesOfCode(enumeration, code);
    if (name.empty() ||
        std::ranges::any_of(names, [&](auto one) { return NamesEqual(TrimBlanks(ShownName(one)), name); })) {
        return {};
    }
    std::string wrong = "'" + ShownText(name) + "' is no name of 0x";
    AppendHexNumber(wrong, code, 2);
    return wrong + (names.empty() ? "" : ", expected " + ShownName(names.front()));
}

/// A code, as a number or behind its name: "Play (0x00)".
std::optional<std::uint32_t> CodeIn(std::string_view text) {
    if (text.ends_with(')')) {
        const std::size_t open = text.rfind('(');
        text = open == std::string_view::npos ? text : text.substr(open + 1, text.size() - open - 2);
    }
    return HasHexMark(text) ? HexOf(text) : DigitsOf(text, 10);
}

}  // namespace

AsmResult Complaint(const AsmValue& value, std::string text) {
    return {std::move(text), value.place};
}

bool IsOf(const ZMTNode& param, const ZMostParameter* item) {
    return item != nullptr && &item->Parameter() == &param;
}

void AppendBytes(AsmBytes& out, std::uint32_t number, std::int32_t count) {
    for (std::int32_t left = count; left > 0; --left) {
        out.push_back(static_cast<std::uint8_t>(left > kMaxValueBytes ? 0 : number >> 8 * (left - 1)));
    }
}

std::string ExpectedNames(std::string_view given, const std::vector<std::string_view>& names) {
    const std::string_view nearest = NearestName(given, names);
    if (!nearest.empty()) {
        return " (" + ShownName(nearest) + "?)";
    }
    constexpr std::size_t kMostShown = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kMostShown); ++i) {
        text += (text.empty() ? ", expected " : ", ") + ShownName(names[i]);
    }
    return text + (names.size() > kMostShown ? ", ..." : "");
}

AsmResult EncodeNumber(const ZMTParamNumber& number, const AsmValue& value, AsmBytes& out) {
    const std::int32_t size = number.GetBytesInMsg();
    if (HasCoordinates(number)) {
        if (const auto both = PairOf(value)) {
            AppendBytes(out, *both, size);
            return {};
        }
        if (!value.fields.empty() || !value.list.empty()) {
            return Complaint(value, "no coordinates, expected x and y such as {x=1,y=0}");
        }
    }
    const std::string wrong = "no number '" + ShownText(value.text) + "', expected " + ExpectedOf(number);
    if (!IsText(value) || size < 1 || size > kMaxValueBytes) {
        return Complaint(value,
                         size > kMaxValueBytes ? "the number has too many bytes, expected hex:" : wrong);
    }
    const std::string_view text = TrimBlanks(value.text);
    if (value.raw || HasHexMark(text)) {
        const auto raw = value.raw ? value.raw : RawInHexadecimal(number, text);
        if (!raw || *raw < LeastOf(number) || *raw > MostOf(number)) {
            return Complaint(value, value.raw ? "no raw value '" + value.text + "', expected one from " +
                                                    std::to_string(LeastOf(number)) + " to " +
                                                    std::to_string(MostOf(number))
                                              : wrong);
        }
        AppendBytes(out, static_cast<std::uint32_t>(*raw), size);
        return HasCoordinates(number) ? AsmResult() : CheckNumber(number, value, *raw);
    }
    const auto decimal = ReadDecimal(text);
    if (!decimal || !IsUnit(number, decimal->rest)) {
        return Complaint(
            value, decimal ? "the unit is '" + ShownText(decimal->rest) + "', expected " + ExpectedOf(number)
                           : wrong);
    }
    const auto raw = RawOf(number, *decimal);
    if (!raw || *raw < LeastOf(number) || *raw > MostOf(number)) {
        return Complaint(value, "no value for '" + ShownText(text) + "', expected " + ExpectedOf(number));
    }
    AppendBytes(out, static_cast<std::uint32_t>(*raw), size);
    return CheckNumber(number, value, *raw);
}

AsmResult EncodeEnum(const ZMTParamEnum& enumeration, const AsmValue& value, AsmBytes& out) {
    const std::string_view text = TrimBlanks(value.text);
    const std::uint32_t most = enumeration.GetBytesInMsg() > 1 ? 0xFFFF : 0xFF;
    std::optional<std::int64_t> code = value.raw;
    for (const ZMTEnumValue& one : enumeration.Items()) {
        if (!code && !one.GetName().empty() && NamesEqual(one.GetName(), text)) {
            code = one.CodeMin();
        }
    }
    if (!code && IsText(value)) {
        code = CodeIn(text);
        const std::string wrong =
            code ? WrongNameOfCode(enumeration, text, static_cast<std::uint32_t>(*code)) : std::string();
        if (!wrong.empty()) {
            return Complaint(value, wrong);
        }
    }
    if (!code || *code < 0 || *code > most) {
        return Complaint(value,
                         "no value '" + ShownText(text) + "'" + ExpectedNames(text, NamesOf(enumeration)));
    }
    AppendBytes(out, static_cast<std::uint32_t>(*code), enumeration.GetBytesInMsg());
    return {};
}

AsmResult EncodeFunctionIDs(const AsmValue& value, AsmBytes& out) {
    std::vector<std::string_view> tokens = SplitTokens(value.text, ", ");
    for (const AsmValue& entry : value.list) {
        tokens.push_back(entry.text);
    }
    AsmBytes stream;
    for (const std::string_view token : tokens) {
        const std::size_t dots = token.find("..");
        const auto first = HexOf(token.substr(0, dots));
        const auto last = dots == std::string_view::npos ? first : HexOf(token.substr(dots + 2));
        constexpr std::uint32_t kEnd = 65535 * 8;
        if (!first || !last || *last >= kEnd || *first > *last) {
            return Complaint(value,
                             "no FunctionIDs '" + ShownText(token) + "', expected such as 000 or 100..105");
        }
        stream.resize(std::max<std::size_t>(stream.size(), *last / 8 + 1));
        for (std::uint32_t id = *first; id <= *last; ++id) {
            stream[id / 8] = static_cast<std::uint8_t>(stream[id / 8] | 0x80U >> id % 8);
        }
    }
    out.insert(out.end(), stream.begin(), stream.end());
    return {};
}

AsmResult ReadSignal(const ZMTParamStreamSignal& signal, const AsmValue& value, std::uint32_t& out) {
    const std::string_view text = TrimBlanks(value.text);
    const auto number = HasHexMark(text) ? HexOf(text) : DigitsOf(text, 10);
    constexpr std::uint32_t kAllBits = 32;
    if (!number || (signal.BitLength() < kAllBits && *number >> signal.BitLength() != 0)) {
        return Complaint(value, "no value '" + ShownText(text) + "', expected " + ExpectedOf(signal));
    }
    out = *number;
    return {};
}

std::string ExpectedOf(const ZMTParam& param) {
    switch (param.Kind()) {
        case ParamKind::Number: {
            const auto& number = static_cast<const ZMTParamNumber&>(param);
            const double scale = std::pow(10.0, number.Exponent());
            const bool hasBounds = HasBounds(number);
            std::string text = "a number from ";
            text +=
                Short(hasBounds ? number.RangeMin() : static_cast<double>(LeastOf(number)) * scale) + " to ";
            text += Short(hasBounds ? number.RangeMax() : static_cast<double>(MostOf(number)) * scale);
            text += number.HasPhysicalUnit() ? " " + number.UnitText() : "";
            return text + (number.Step() > 0 ? " in steps of " + Short(number.Step()) : "");
        }
        case ParamKind::Enum: {
            const auto& enumeration = static_cast<const ZMTParamEnum&>(param);
            const std::string names = ExpectedNames({}, NamesOf(enumeration));
            constexpr std::string_view kExpected = ", expected ";
            return names.size() > kExpected.size() ? "one of " + names.substr(kExpected.size()) : "a code";
        }
        case ParamKind::Bool:
        case ParamKind::BitField:
            return "bits such as {bit0=on} or 0x01";
        case ParamKind::String: {
            const std::uint32_t most = static_cast<const ZMTParamString&>(param).MaxSize();
            return most == ZMTParamString::kUnbounded
                       ? "a text"
                       : "a text of at most " + std::to_string(most) + " characters";
        }
        case ParamKind::Array:
            return "a list such as [1,2]";
        case ParamKind::Record:
            return "fields such as {a=1,b=2}";
        case ParamKind::Stream:
        case ParamKind::ShortStream:
            return "fields such as {a=1} or bytes such as hex:01FF";
        case ParamKind::ClassifiedStream:
            return "bytes such as hex:01FF, or {media_type=\"text/plain\",content=hex:41}";
        case ParamKind::FktIDBitStream:
            return "FunctionIDs such as [000,100..105]";
        case ParamKind::StreamSignal:
            return "a number of " +
                   std::to_string(static_cast<const ZMTParamStreamSignal&>(param).BitLength()) + " bits";
        case ParamKind::Base:
        case ParamKind::BoolField:
        case ParamKind::StreamCase:
        case ParamKind::Void:
            break;
    }
    return "nothing";
}

}  // namespace tarvex
