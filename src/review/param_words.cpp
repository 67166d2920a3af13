#include "review/param_words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>

#include "import/text/format_text.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "kestrel/json_text.h"
#include "params/array.h"
#include "params/bit_field.h"
#include "params/case_stream.h"
#include "params/classified_stream.h"
#include "params/kind_name.h"
#include "params/layout.h"
#include "params/pos_and_data.h"
#include "params/record.h"
#include "params/short_stream.h"
#include "params/stream.h"
#include "params/stream_signal.h"
#include "params/string.h"
#include "params/type_element.h"
#include "review/counted.h"
#include "review/own_texts.h"

namespace tarvex::review {
namespace {

constexpr std::uint32_t kNoBound = std::numeric_limits<std::uint32_t>::max();

std::string AtMost(std::uint32_t count, const std::string& what) {
    return count == kNoBound ? std::string() : "at most " + Counted(count, what);
}

/// The fields of a record one behind the other.
std::optional<std::uint64_t> FixedBytesOf(const ZMTParamRecord& record) {
    if (UnsureEnd(record) || MissingMember(record) || HasChosenFields(record)) {
        return std::nullopt;
    }
    std::uint64_t sum = 0;
    for (const ZMTParam& field : record.Items()) {
        const std::optional<std::uint64_t> bytes = FixedBytes(field);
        if (!bytes) {
            return std::nullopt;
        }
        sum += *bytes;
    }
    return sum;
}

std::string OpenText(const std::string& limit) {
    return limit.empty() ? "open" : "open, " + limit;
}

/// "0x02": at least two digits. There are thousands of them.
void AppendCode(std::string& text, std::uint32_t code) {
    std::array<char, 8> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), code, 16);
    text.append("0x").append(end - digits.data() < 2 ? "0" : "");
    std::transform(digits.data(), end, std::back_inserter(text),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
}

std::string CodeRange(std::uint32_t min, std::uint32_t max) {
    const bool isOpen = min != max && max == static_cast<std::uint32_t>(kOpenRangeEnd);
    std::string text = isOpen ? ">=" : "";
    AppendCode(text, min);
    if (min != max && !isOpen) {
        text += "..";
        AppendCode(text, max);
    }
    return text;
}

/// Negative values are those of signed selectors; a range that is reversed as a signed one is meant unsigned.
std::string SelectorRange(const ZMTParamStreamCase& streamCase) {
    const auto min = static_cast<std::int32_t>(streamCase.PosYMin());
    const auto max = static_cast<std::int32_t>(streamCase.PosYMax());
    if (min >= 0 || min > max) {
        return CodeRange(streamCase.PosYMin(), streamCase.PosYMax());
    }
    if (max == kOpenRangeEnd) {
        return ">=" + std::to_string(min);
    }
    return std::to_string(min) + (min == max ? std::string() : ".." + std::to_string(max));
}

}  // namespace

std::string KindText(const ZMTParam& param) {
    if (param.Kind() == ParamKind::StreamCase) {
        return "case";
    }
    std::string name = KindName(param.Kind());
    std::ranges::replace(name, '_', ' ');
    return name;
}

std::string TypeText(const ZMTParam& param) {
    std::string sign;
    if (param.IsType(kParamNumber)) {
        sign = static_cast<const ZMTParamNumber&>(param).IsSigned() ? "signed " : "unsigned ";
    }
    return sign + KindText(param);
}

std::optional<std::uint64_t> FixedBytes(const ZMTParam& param) {
    switch (param.Kind()) {
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::Enum:
        case ParamKind::Number:
            return UnsureEnd(param) ? std::nullopt
                                    : std::optional(static_cast<std::uint64_t>(param.GetBytesInMsg()));
        case ParamKind::Record:
            return FixedBytesOf(static_cast<const ZMTParamRecord&>(param));
        case ParamKind::Void:
            return 0;
        case ParamKind::Array:
        case ParamKind::Base:
        case ParamKind::BoolField:
        case ParamKind::ClassifiedStream:
        case ParamKind::FktIDBitStream:
        case ParamKind::ShortStream:
        case ParamKind::Stream:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::String:
            break;
    }
    return std::nullopt;
}

std::string LimitText(const ZMTParam& param) {
    switch (param.Kind()) {
        case ParamKind::Array:
            return AtMost(static_cast<const ZMTParamArray&>(param).NMax(), "element");
        case ParamKind::ClassifiedStream:
            return AtMost(static_cast<const ZMTParamClassifiedStream&>(param).MaxLength(), "byte");
        case ParamKind::ShortStream:
            return AtMost(static_cast<const ZMTParamShortStream&>(param).MaxLength(), "byte");
        case ParamKind::Stream: {
            const std::uint32_t length = static_cast<const ZMTParamStream&>(param).Length();
            return length == 0 ? std::string() : AtMost(length, "byte");
        }
        case ParamKind::String:
            return AtMost(static_cast<const ZMTParamString&>(param).MaxSize(), "byte");
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::BoolField:
        case ParamKind::Enum:
        case ParamKind::FktIDBitStream:
        case ParamKind::Number:
        case ParamKind::Record:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::Void:
            break;
    }
    return {};
}

std::string LengthText(const ZMTParam& param) {
    switch (param.Kind()) {
        case ParamKind::BitField:
        case ParamKind::Bool: {
            const auto& field = static_cast<const ZMTParamBitField&>(param);
            return Counted(static_cast<std::uint64_t>(field.GetBytesInMsg()), "byte") + ", " +
                   Counted(field.Length(), "bit") + " used";
        }
        case ParamKind::BoolField:
            return Counted(1, "bit");
        case ParamKind::StreamSignal:
            return Counted(static_cast<const ZMTParamStreamSignal&>(param).BitLength(), "bit");
        case ParamKind::Array:
        case ParamKind::Base:
        case ParamKind::ClassifiedStream:
        case ParamKind::Enum:
        case ParamKind::FktIDBitStream:
        case ParamKind::Number:
        case ParamKind::Record:
        case ParamKind::ShortStream:
        case ParamKind::Stream:
        case ParamKind::StreamCase:
        case ParamKind::String:
        case ParamKind::Void:
            break;
    }
    if (const std::optional<std::uint64_t> bytes = FixedBytes(param)) {
        return Counted(*bytes, "byte");
    }
    return UnsureEnd(param) ? "unknown" : OpenText(LimitText(param));
}

std::string NumberText(double number) {
    if (!std::isfinite(number)) {
        return FormatText("%f", number);
    }
    std::string text;
    kestrel::AppendShortNumber(text, number);
    return text;
}

std::string PhysicalText(std::int64_t raw, std::int32_t exponent) {
    constexpr std::int32_t kMostPlaces = 18;
    std::string digits = std::to_string(raw);
    if (raw == 0 || exponent == 0) {
        return digits;
    }
    if (exponent > kMostPlaces || exponent < -kMostPlaces) {
        return digits + "e" + std::to_string(exponent);
    }
    if (exponent > 0) {
        return digits.append(static_cast<std::size_t>(exponent), '0');
    }
    const std::string sign = raw < 0 ? "-" : "";
    digits.erase(0, sign.size());
    const auto places = static_cast<std::size_t>(-exponent);
    if (digits.size() <= places) {
        digits.insert(0, places + 1 - digits.size(), '0');
    }
    digits.insert(digits.size() - places, ".");
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') {
        digits.pop_back();
    }
    return sign + digits;
}

std::string RangeText(const ZMTParamNumber& number) {
    return number.HasRange() ? NumberText(number.RangeMin()) + ".." + NumberText(number.RangeMax())
                             : std::string();
}

std::string StepText(const ZMTParamNumber& number) {
    return number.Step() == 0 ? std::string() : NumberText(number.Step());
}

std::string UnitText(const ZMTParamNumber& number) {
    return number.HasPhysicalUnit() && !HasCoordinates(number) ? number.UnitText() : std::string();
}

std::string CodesText(const ZMTEnumValue& value) {
    return CodeRange(value.CodeMin(), value.CodeMax());
}

std::string BitText(const ZMTParamBoolField& bit) {
    return OwnTexts(bit).Meanings();
}

std::string CaseText(const ZMTParamStreamCase& streamCase) {
    if (IsAlways(streamCase)) {
        return "always";
    }
    const std::string& x = streamCase.PosXString();
    const std::string range = SelectorRange(streamCase);
    const std::string y = (range.starts_with(">=") ? "PosY" : "PosY=") + range;
    return x.empty() || NamesEqual(x, kNoCoordinate) ? y : "PosX=" + x + ", " + y;
}

bool IsAlways(const ZMTParamStreamCase& streamCase) {
    if (!NamesEqual(streamCase.PosXString(), kNoCoordinate) || streamCase.GetParent() == nullptr) {
        return false;
    }
    const auto& stream = static_cast<const ZMTParamCaseStream&>(*streamCase.GetParent());
    return stream.Selector() == nullptr && stream.Count() == 1 && !stream.HasLostCases();
}

std::string_view LayoutWord(Layout layout) {
    switch (layout) {
        case Layout::Complete:
            return "complete";
        case Layout::Open:
            return "open";
        case Layout::Incomplete:
            break;
    }
    return "incomplete";
}

std::string DescriptionText(const ZMTParam& param) {
    const Element* element = param.GetElement();
    std::string text;
    for (const char* name : {"ParamDescription", "TRecordFieldDesc", "TArrayDesc", "SignalDescription"}) {
        if (text = DescriptionText(element, name); !text.empty()) {
            break;
        }
    }
    if (param.IsType(kParamRecord) && element != nullptr) {
        const std::string ofRecord = DescriptionText(FindTypeElement(*element, "TRecord"), "TRecordDesc");
        text.append(text.empty() || ofRecord.empty() ? "" : " ").append(ofRecord);
    }
    return text;
}

std::string DescriptionText(const Element* element, const char* name) {
    const Element* description = FindChildElement(element, name);
    return description == nullptr ? std::string() : InOneLine(description->text);
}

}  // namespace tarvex::review
