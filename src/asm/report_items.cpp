#include "asm/report_items.h"

#include <algorithm>
#include <limits>

#include <nlohmann/json.hpp>

#include "capture/data_bytes.h"
#include "capture/hexadecimal.h"
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

/// A number; the largest of all in place of a larger one.
std::optional<std::int64_t> NumberOf(const Json& item, const char* key) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    const auto found = item.find(key);
    if (found == item.end() || !found->is_number_integer()) {
        return std::nullopt;
    }
    return found->is_number_unsigned() && found->get<std::uint64_t>() > std::uint64_t{kMost}
               ? kMost
               : found->get<std::int64_t>();
}

/// The raw value, or the bytes of a number that is too long for one.
bool SetRaw(const Json& item, std::string_view type, AsmValue& out) {
    constexpr std::size_t kMaxValueBytes = 4;
    out.raw = NumberOf(item, "raw");
    if (!out.raw) {
        return false;
    }
    out.text = std::to_string(*out.raw);
    std::vector<std::uint8_t> bytes;
    if (type == "number" && !ReadDataBytes(TextOf(item, "bytes"), bytes).empty()) {
        return false;
    }
    if (bytes.size() > kMaxValueBytes) {
        out.form = AsmValue::Form::Bytes;
        out.bytes = std::move(bytes);
    }
    return true;
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
        out.name = "bit" + std::to_string(bit.value_or(-1));
        return bit && SetRaw(item, type, out.value);
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

bool IsSame(const AsmValue& one, const AsmValue& other) {
    const auto isSameField = [](const AsmField& a, const AsmField& b) {
        return a.name == b.name && a.entry == b.entry && IsSame(a.value, b.value);
    };
    return one.form == other.form && one.text == other.text && one.raw == other.raw &&
           one.bytes == other.bytes && std::ranges::equal(one.fields, other.fields, isSameField);
}

}  // namespace

void CompareWithItems(std::vector<AsmField>& fields, const std::vector<AsmField>& said,
                      const ZMostParameterListBaseInfo& items) {
    const std::size_t count = std::min({fields.size(), said.size(), items.Items().size()});
    for (std::size_t i = 0; i < count; ++i) {
        const ZMostParameter& item = *items.Items()[i];
        AsmValue& value = fields[i].value;
        if (fields[i].name != said[i].name || fields[i].entry != said[i].entry) {
            continue;
        }
        value.original = &item;
        const bool hasBits = item.IsType(kParamBitField) || item.IsType(kParamBool);
        if (item.Members() != nullptr && !hasBits) {
            CompareWithItems(value.fields, said[i].value.fields, *item.Members());
        } else {
            value.isUnchanged = IsSame(value, said[i].value);
        }
    }
}

std::vector<AsmField> ItemsOfText(const std::vector<std::string>& lines) {
    std::size_t at = 0;
    return TakeLevel(lines, at, 1);
}

bool ItemsOfJson(const nlohmann::json& items, std::vector<AsmField>& out) {
    return ItemsAt(items, 0, out);
}

}  // namespace tarvex
