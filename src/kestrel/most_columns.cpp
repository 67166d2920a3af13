#include "kestrel/most_columns.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "kestrel/json_text.h"

namespace kestrel {
namespace {

constexpr std::uint32_t kLastAddress = 0xFFFFFF;

/// A long text in every row would make a table of any size.
std::string_view StartOf(std::string_view text) {
    return text.size() <= kMostColumnSize
               ? text
               : WithoutCutCharacter(text.substr(0, kMostColumnSize), kMostColumnSize);
}

std::string DefaultOf(const AttrDef& definition) {
    if (definition.value_type != AttrType::Integer) {
        const std::string text = Text(definition.default_text);
        return std::string(StartOf(text));
    }
    std::string number;
    AppendNumber(number, Finite(definition.default_number));
    return number;
}

}  // namespace

std::string AddressText(std::uint32_t identifier) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const std::uint32_t number = identifier & ~kExtendedIdentifier;
    std::string text;
    if (number > kLastAddress) {
        return text;
    }
    for (int shift = 20; shift >= 0; shift -= 4) {
        text += kDigits[number >> static_cast<unsigned>(shift) & 0xFU];
        if (shift == 16 || shift == 4) {
            text += '.';
        }
    }
    return text;
}

std::string HexadecimalText(std::uint32_t number) {
    std::string text(11, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "0x%X", number)));
    return text;
}

MostColumns::MostColumns(const Database& database) {
    for (const AttrDef& definition : database.AttrDefs()) {
        const auto* name = std::ranges::find(kMostColumnNames, NameIn(definition.name));
        if (definition.object_kind != AttrObject::Message || name == std::end(kMostColumnNames)) {
            continue;
        }
        const auto place = static_cast<std::size_t>(name - std::begin(kMostColumnNames));
        definitions_[place] = &definition;
        defaults_[place] = DefaultOf(definition);
    }
}

const AttrValues::Value* MostColumns::ValueOf(const Message& message, MostColumn column) const {
    const AttrDef* definition = definitions_[static_cast<std::size_t>(column)];
    const auto& values = message.attributes.Values();
    const auto found = std::ranges::find(values, definition, &AttrValues::Value::definition);
    return found == values.end() ? nullptr : &*found;
}

std::string MostColumns::Of(const Message& message, MostColumn column) {
    const AttrValues::Value* value = ValueOf(message, column);
    if (value == nullptr) {
        return defaults_[static_cast<std::size_t>(column)];
    }
    const std::string text = values_.Of(*value);
    return std::string(StartOf(text));
}

std::string MostColumns::WholeOf(const Message& message, MostColumn column) {
    const AttrValues::Value* value = ValueOf(message, column);
    return value != nullptr && value->definition->holdsTexts ? values_.Of(*value) : Of(message, column);
}

}  // namespace kestrel
