#include "disasm/json_report.h"

#include <nlohmann/json.hpp>

#include "disasm/bit_field_item.h"
#include "disasm/classified_stream_item.h"
#include "disasm/enum_item.h"
#include "disasm/number_item.h"
#include "disasm/stream_item.h"
#include "disasm/wording.h"
#include "params/kind_name.h"

namespace tarvex {
namespace {

using Json = nlohmann::ordered_json;

/// What only items of some kinds have.
void AddValue(const ZMostParameter& item, Json& json) {
    switch (item.Kind()) {
        case ParamKind::Number: {
            const auto& number = static_cast<const ZMostParameterNumber&>(item);
            json["raw"] = number.SignedValue();
            if (const std::string unit = number.UnitText(); !unit.empty()) {
                json["unit"] = unit;
            }
            break;
        }
        case ParamKind::Enum: {
            const auto& enumeration = static_cast<const ZMostParameterEnum&>(item);
            json["raw"] = enumeration.RawValue();
            if (const std::string value = enumeration.ValueName(); !value.empty()) {
                json["value"] = value;
            }
            break;
        }
        case ParamKind::BoolField: {
            const auto& bit = static_cast<const ZMostParameterBoolField&>(item);
            json["bit"] = bit.Bit();
            json["raw"] = bit.Value() ? 1 : 0;
            break;
        }
        case ParamKind::ClassifiedStream: {
            const auto& stream = static_cast<const ZMostParameterClassifiedStream&>(item);
            json["media_type"] = stream.MediaType();
            json["content"] = HexText(stream.Content(), "");
            break;
        }
        case ParamKind::StreamSignal:
            json["raw"] = static_cast<const ZMostParameterStreamSignal&>(item).Value();
            break;
        case ParamKind::Array:
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::FktIDBitStream:
        case ParamKind::Record:
        case ParamKind::ShortStream:
        case ParamKind::Stream:
        case ParamKind::StreamCase:
        case ParamKind::String:
        case ParamKind::Void:
            break;
    }
}

/// Captures and paths need not be UTF-8; JSON has to be.
void Append(const Json& json, std::string& out) {
    out += json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// What an item says, less its members.
Json ItemJson(const ZMostParameter& item, unsigned entryNumber) {
    Json json;
    json["name"] = ShownName(item.GetName());
    if (entryNumber > 0) {
        json["entry"] = entryNumber;
    }
    json["type"] = KindName(item.Kind());
    json["offset"] = item.Offset();
    if (item.Kind() != ParamKind::BoolField) {  // its byte is its field's
        json["bytes"] = HexText(item.Bytes(), "");
    }
    json["text"] = item.GetText();
    AddValue(item, json);
    return json;
}

/// Adds "items" to the object at the end of the text. The items of a message become text one by one: all of
/// them together might take hundreds of megabytes.
void AppendItems(const ZMostParameterListBaseInfo& items, const ZMostParameter* container, std::size_t end,
                 std::string& out) {
    out.pop_back();
    out += ",\"items\":[";
    std::size_t index = 0;
    const char* separator = "";
    for (const auto& item : items.Items()) {
        if (out.size() > end) {
            return;
        }
        const unsigned entryNumber = container == nullptr ? 0 : container->EntryNumber(index++);
        out += separator;
        Append(ItemJson(*item, entryNumber), out);
        if (item->Members() != nullptr) {
            AppendItems(*item->Members(), item.get(), end, out);
        }
        separator = ",";
    }
    out += "]}";
}

Json PlaceJson(const LinePlace& place) {
    Json json;
    if (!place.file.empty()) {
        json["file"] = place.file;
    }
    json["line"] = place.number;
    return json;
}

template <class Node>
Json NameJson(const Node* node) {
    return node == nullptr ? Json() : Json(node->GetName());
}

}  // namespace

void JsonReport::AppendMessage(const LinePlace& place, const CapturedMessage& message,
                               const DecodedMessage& decoded, std::size_t end, std::string& out) const {
    Json json = PlaceJson(place);
    json["message"] = AddressText(message);
    json["data"] = HexText(message.data, "");
    json["function_block"] = NameJson(decoded.block);
    json["function"] = NameJson(decoded.function);
    json["operation"] = NameJson(decoded.operation);
    Append(json, out);
    AppendItems(decoded.items, nullptr, end, out);
    out.pop_back();
    out += ",\"errors\":";
    Append(Json(decoded.faults), out);
    out += "}\n";
}

void JsonReport::BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                         std::string& out) const {
    Json json = PlaceJson(place);
    json["text"] = ShownText(line);
    json["errors"] = Json::array({std::string(fault)});
    Append(json, out);
    out += '\n';
}

}  // namespace tarvex
