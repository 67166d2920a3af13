#include "asm/report_items.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "capture/data_bytes.h"
#include "capture/hexadecimal.h"
#include "import/text/wording.h"
#include "params/members.h"

namespace tarvex {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kDeepest = std::size_t{2} * kMaxNesting;

std::size_t LevelOf(std::string_view line) {
    return std::min(line.find_first_not_of(' '), line.size()) / kIndent;
}

/// "[2] Name = text".
AsmField FieldOf(std::string_view line, std::size_t below) {
    constexpr std::string_view kEquals = " = ";
    const std::size_t begin = std::min(line.find_first_not_of(' '), line.size());
    const std::size_t equals = line.find(kEquals);
    std::string_view label = line.substr(begin, equals == std::string_view::npos ? equals : equals - begin);
    AsmField field;
    field.place = {below, begin + 1};
    field.value.form = AsmValue::Form::Item;
    field.value.place = field.place;
    if (equals != std::string_view::npos) {
        field.value.text = line.substr(equals + kEquals.size());
        field.value.place.column = equals + kEquals.size() + 1;
    }
    if (const std::size_t close = label.find(']');
        label.starts_with('[') && close != std::string_view::npos) {
        if (const auto number = DigitsOf(label.substr(1, close - 1), 10)) {
            field.entry = *number;
            label.remove_prefix(std::min(close + 2, label.size()));
        }
    }
    field.name = label;
    return field;
}

/// Takes the lines from that one on that stand on the level, each with those that stand deeper.
std::vector<AsmField> TakeLevel(const std::vector<std::string>& lines, std::size_t& at, std::size_t level) {
    std::vector<AsmField> fields;
    while (at < lines.size() && LevelOf(lines[at]) >= level) {
        fields.push_back(FieldOf(lines[at], at + 1));
        ++at;
        if (at < lines.size() && LevelOf(lines[at]) > level && level < kDeepest) {
            fields.back().value.fields = TakeLevel(lines, at, level + 1);
        }
    }
    return fields;
}

std::string TextOf(const Json& item, const char* key) {
    const auto found = item.find(key);
    return found != item.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::optional<std::int64_t> NumberOf(const Json& item, const char* key) {
    const auto found = item.find(key);
    return found != item.end() && found->is_number_integer() ? std::optional(found->get<std::int64_t>())
                                                             : std::nullopt;
}

/// The raw value in hexadecimal, in two's complement of as many bytes as the item has.
bool SetRaw(const Json& item, std::string_view type, AsmValue& out) {
    constexpr std::size_t kMaxValueBytes = 4;
    const auto raw = NumberOf(item, "raw");
    if (!raw) {
        return false;
    }
    auto value = static_cast<std::uint64_t>(*raw);
    if (type == "number") {
        std::vector<std::uint8_t> bytes;
        if (!ReadDataBytes(TextOf(item, "bytes"), bytes).empty()) {
            return false;
        }
        if (bytes.size() > kMaxValueBytes) {
            out.form = AsmValue::Form::Bytes;
            out.bytes = std::move(bytes);
            return true;
        }
        const std::size_t bits = 8 * std::max<std::size_t>(bytes.size(), 1);
        if (*raw < -(std::int64_t{1} << (bits - 1))) {
            return false;
        }
        value = *raw < 0 ? value & ((std::uint64_t{1} << bits) - 1) : value;
    }
    constexpr std::uint64_t kMost = 0xFFFFFFFF;
    out.text = "0x";
    AppendHexNumber(out.text, static_cast<std::uint32_t>(value), 1);
    return value <= kMost;
}

bool ItemsAt(const Json& items, std::size_t depth, std::vector<AsmField>& out);

bool ItemOf(const Json& item, std::size_t depth, AsmField& out) {
    if (!item.is_object() || depth > kDeepest) {
        return false;
    }
    const std::string type = TextOf(item, "type");
    const auto entry = NumberOf(item, "entry").value_or(0);
    constexpr std::int64_t kMaxEntry = 65536;
    if (entry < 0 || entry > kMaxEntry) {
        return false;
    }
    out.name = TextOf(item, "name");
    out.entry = static_cast<unsigned>(entry);
    out.value.form = AsmValue::Form::Item;
    out.value.text = TextOf(item, "text");
    if (type == "bit") {
        const auto bit = NumberOf(item, "bit");
        const auto raw = NumberOf(item, "raw");
        out.name = "bit" + std::to_string(bit.value_or(-1));
        out.value.text = std::to_string(raw.value_or(-1));
        return bit && raw;
    }
    if (type == "number" || type == "enumeration" || type == "signal") {
        return SetRaw(item, type, out.value);
    }
    const auto members = item.find("items");
    return members == item.end() || ItemsAt(*members, depth + 1, out.value.fields);
}

bool ItemsAt(const Json& items, std::size_t depth, std::vector<AsmField>& out) {
    return items.is_array() && std::ranges::all_of(items, [&](const Json& item) {
               return ItemOf(item, depth, out.emplace_back());
           });
}

}  // namespace

std::vector<AsmField> ItemsOfText(const std::vector<std::string>& lines) {
    std::size_t at = 0;
    return TakeLevel(lines, at, 1);
}

bool ItemsOfJson(const nlohmann::json& items, std::vector<AsmField>& out) {
    return ItemsAt(items, 0, out);
}

}  // namespace tarvex
