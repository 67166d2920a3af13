#include <algorithm>

#include "asm/scalars.h"
#include "capture/hexadecimal.h"
#include "disasm/item.h"
#include "import/text/names.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

/// Both states of the bit have that text.
bool IsSharedText(const ZMTParamBoolField* bit, std::string_view text) {
    return bit != nullptr && NamesEqual(text, ShownName(bit->TrueDesc())) &&
           NamesEqual(text, ShownName(bit->FalseDesc()));
}

/// What a bit may be called: "on", "1", the catalog's text. A 0 or 1 without quotes is the bit itself, even
/// where the catalog has such a text.
std::optional<bool> BitValue(const ZMTParamBoolField* bit, std::string_view text, bool isWord) {
    const bool isItself = isWord && (text == "0" || text == "1");
    if (bit != nullptr && !isItself && NamesEqual(text, ShownName(bit->TrueDesc()))) {
        return true;
    }
    if (bit != nullptr && !isItself && NamesEqual(text, ShownName(bit->FalseDesc()))) {
        return false;
    }
    for (const char* yes : {"1", "on", "true", "yes"}) {
        if (NamesEqual(text, yes)) {
            return true;
        }
    }
    for (const char* no : {"0", "off", "false", "no"}) {
        if (NamesEqual(text, no)) {
            return false;
        }
    }
    return std::nullopt;
}

/// The value of a bit as it was given.
std::optional<bool> BitValue(const ZMTParamBoolField* bit, const AsmValue& value, std::string_view text) {
    if (value.raw) {
        return *value.raw == 0 || *value.raw == 1 ? std::optional(*value.raw == 1) : std::nullopt;
    }
    return BitValue(bit, text, value.form == AsmValue::Form::Word);
}

/// The bits that a label of a report names, from the left: "[bit15..13 8]" are 15, 14, 13 and 8. "bit3" and
/// "[bit3] Name" are 3. Nothing for other texts.
std::vector<std::uint32_t> BitsOfLabel(std::string_view label) {
    std::vector<std::uint32_t> bits;
    std::string_view inner = label.starts_with('[') ? label.substr(1, label.find(']') - 1) : label;
    if (inner.size() < 3 || !NamesEqual(inner.substr(0, 3), "bit")) {
        return {};
    }
    for (const std::string_view token : SplitTokens(inner.substr(3), " ")) {
        const std::size_t dots = token.find("..");
        const auto first = DigitsOf(token.substr(0, dots), 10);
        const auto last = dots == std::string_view::npos ? first : DigitsOf(token.substr(dots + 2), 10);
        constexpr std::uint32_t kEnd = 16;
        if (!first || !last || *first >= kEnd || *last > *first) {
            return {};
        }
        for (std::uint32_t bit = *first + 1; bit > *last; --bit) {
            bits.push_back(bit - 1);
        }
    }
    return bits;
}

/// The bit of that name.
std::optional<std::uint32_t> BitNamed(const ZMTParamBitField& field, std::string_view name) {
    for (std::uint32_t bit = 0; bit < field.Length(); ++bit) {
        const ZMTParamBoolField* named = field.FindBit(bit);
        if (named != nullptr && !named->GetName().empty() && NamesEqual(named->GetName(), name)) {
            return bit;
        }
    }
    return std::nullopt;
}

/// `isKept`: what is there is what the message has had.
AsmResult EncodeBitField(const ZMTParamBitField& field, const AsmField& given, bool isKept,
                         std::uint32_t& out) {
    std::vector<std::uint32_t> bits = BitsOfLabel(given.name);
    if (const auto named = BitNamed(field, given.name)) {
        bits = {*named};
    }
    if (bits.empty() || std::ranges::any_of(bits, [&](auto bit) { return bit >= field.Length(); })) {
        std::vector<std::string_view> names;
        for (const ZMTParamBoolField& bit : field.Items()) {
            if (!bit.GetName().empty()) {
                names.push_back(bit.GetName());
            }
        }
        return {"unknown bit '" + ShownText(given.name) + "'" +
                    (names.empty() ? ", expected bit0 to bit" + std::to_string(field.Length() - 1)
                                   : ExpectedNames(given.name, names)),
                given.place};
    }
    std::string text = given.value.text;
    if (bits.size() > 1) {
        std::erase(text, ' ');
        if (text.size() != bits.size()) {
            return Complaint(given.value, "expected " + std::to_string(bits.size()) + " bits, 0 or 1");
        }
    }
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const ZMTParamBoolField* bit = field.FindBit(bits[i]);
        const std::string_view one = bits.size() > 1 ? std::string_view(text).substr(i, 1) : text;
        if (!given.value.raw && IsSharedText(bit, one)) {
            if (isKept) {
                continue;  // as it was
            }
            return Complaint(given.value, "both states of the bit are called '" + ShownText(one) +
                                              "', expected on or off");
        }
        const auto value = BitValue(bit, given.value, one);
        if (!value) {
            return Complaint(given.value, "no value of a bit '" + ShownText(text) +
                                              "', expected on, off or the text of the bit");
        }
        out = (out & ~(1U << bits[i])) | static_cast<std::uint32_t>(*value) << bits[i];
    }
    return {};
}

/// A number in place of the bits, or the value of the only one that is described.
std::optional<std::uint32_t> WholeBits(const ZMTParamBitField& field, std::string_view text, bool isWord) {
    if (HasHexMark(text)) {
        return HexOf(text);
    }
    if (field.Count() == 1) {
        const ZMTParamBoolField& only = *field.Items().begin();
        if (const auto value = IsSharedText(&only, text) ? std::nullopt : BitValue(&only, text, isWord)) {
            return static_cast<std::uint32_t>(*value) << only.BitPos();
        }
    }
    return DigitsOf(text, 10);
}

}  // namespace

AsmResult EncodeBits(const ZMTParamBitField& field, const AsmValue& value, AsmBytes& out) {
    // Bits that no report shows stay as they were.
    const bool isKept = IsOf(field, value.original);
    std::uint32_t bits = isKept ? value.original->RawValue() : 0;
    if (value.fields.empty() && value.form != AsmValue::Form::Fields) {
        const auto whole = WholeBits(field, TrimBlanks(value.text), value.form == AsmValue::Form::Word);
        if (!whole || *whole >= 1U << 8 * std::clamp(field.GetBytesInMsg(), 1, 2)) {
            return Complaint(value, "no bits '" + ShownText(value.text) + "', expected " + ExpectedOf(field));
        }
        bits = *whole;
    }
    for (const AsmField& given : value.fields) {
        if (AsmResult result = EncodeBitField(field, given, isKept, bits); !result.IsGood()) {
            return result;
        }
    }
    AppendBytes(out, bits, field.GetBytesInMsg());
    return {};
}

}  // namespace tarvex
