#include "kestrel/model_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <nlohmann/json.hpp>

#include "kestrel/json_text.h"

namespace kestrel {

std::string_view ObjectName(AttrObject object) {
    switch (object) {
        case AttrObject::Database:
            return "database";
        case AttrObject::Node:
            return "node";
        case AttrObject::Message:
            return "message";
    }
    return "unknown";
}

std::string_view TypeName(AttrType type) {
    switch (type) {
        case AttrType::Integer:
            return "integer";
        case AttrType::String:
            return "string";
        case AttrType::Enumeration:
            return "enumeration";
    }
    return "unknown";
}

std::string_view ByteOrderName(const sigblk& signal) {
    return (signal.flags & kSignalBigEndian) != 0 ? "big_endian" : "little_endian";
}

std::string NameText(const char (&name)[kNameSize]) {
    std::string text = Text(WithoutCutCharacter(NameIn(name)));
    if (text.size() <= kNameSize) {
        return text;
    }
    // What stands for bad bytes is longer than they were; a name has to fit its record when it is read again.
    text.resize(kNameSize);
    return std::string(WithoutCutCharacter(text));
}

std::string Text(const char* text) {
    return text == nullptr ? std::string() : Text(std::string_view(text));
}

std::string Text(std::string_view text) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(text.begin(), text.end(), isAscii)) {
        return std::string(text);
    }
    using nlohmann::json;
    return json::parse(json(text).dump(-1, ' ', false, json::error_handler_t::replace)).get<std::string>();
}

std::vector<std::string> ChoiceNames(const AttrDef& definition) {
    std::vector<std::string> names;
    if (definition.value_type != AttrType::Enumeration) {
        return names;
    }
    if (definition.value_list == nullptr || *definition.value_list == '\0') {
        return names;
    }
    std::string_view rest = definition.value_list;
    for (;;) {
        const std::size_t end = rest.find('\n');
        names.push_back(Text(rest.substr(0, end)));
        if (end == std::string_view::npos) {
            return names;
        }
        rest.remove_prefix(end + 1);
    }
}

double Finite(double number) {
    if (std::isnan(number)) {
        return 0;
    }
    return std::clamp(number, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
}

std::string ValueText(const AttrDef& definition, const std::vector<std::string>& choices,
                      kestrel_attr_value_t value) {
    if (definition.holdsTexts) {
        return Text(value.text);
    }
    if (definition.value_type == AttrType::Enumeration) {
        const bool isKnown = value.number >= 0 && value.number < static_cast<double>(choices.size());
        return isKnown ? choices[static_cast<std::size_t>(value.number)] : Text(definition.default_text);
    }
    std::string number;
    AppendNumber(number, Finite(value.number));
    return number;
}

std::string ValueTexts::Of(const AttrValues::Value& entry) {
    const auto [place, isNew] = choices_.try_emplace(entry.definition);
    if (isNew) {
        place->second = ChoiceNames(*entry.definition);
    }
    return ValueText(*entry.definition, place->second, entry.value);
}

}  // namespace kestrel
