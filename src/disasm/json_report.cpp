#include "disasm/json_report.h"

#include <nlohmann/json.hpp>

#include "disasm/array_item.h"
#include "disasm/bit_field_item.h"
#include "disasm/enum_item.h"
#include "disasm/number_item.h"
#include "disasm/wording.h"

namespace tarvex {
namespace {

using Json = nlohmann::ordered_json;

Json ItemsJson(const ZMostParameterListBaseInfo& items, unsigned firstNumber);

/// What only items of some kinds have.
void AddValue(const ZMostParameter& item, Json& json) {
    switch (item.Kind()) {
        case ParamKind::Number: {
            const auto& number = static_cast<const ZMostParameterNumber&>(item);
            json["raw"] = number.SignedValue();
            if (const std::string unit = number.UnitName(); !unit.empty()) {
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
        case ParamKind::Array:
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::FktIDBitStream:
        case ParamKind::Record:
        case ParamKind::Stream:
        case ParamKind::StreamCase:
        case ParamKind::String:
        case ParamKind::Void:
            break;
    }
}

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
    if (item.Members() != nullptr) {
        json["items"] = ItemsJson(*item.Members(), FirstEntryNumber(item));
    }
    return json;
}

Json ItemsJson(const ZMostParameterListBaseInfo& items, unsigned firstNumber) {
    Json json = Json::array();
    unsigned entryNumber = firstNumber;
    for (const auto& item : items.Items()) {
        json.push_back(ItemJson(*item, entryNumber));
        entryNumber += entryNumber > 0 ? 1 : 0;
    }
    return json;
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

/// Captures and paths need not be UTF-8; JSON has to be.
void AppendLine(const Json& json, std::string& out) {
    out += json.dump(-1, ' ', false, Json::error_handler_t::replace);
    out += '\n';
}

}  // namespace

const char* KindName(ParamKind kind) {
    switch (kind) {
        case ParamKind::Array:
            return "array";
        case ParamKind::BitField:
            return "bit_field";
        case ParamKind::Bool:
            return "boolean";
        case ParamKind::BoolField:
            return "bit";
        case ParamKind::Enum:
            return "enumeration";
        case ParamKind::FktIDBitStream:
            return "function_ids";
        case ParamKind::Number:
            return "number";
        case ParamKind::Record:
            return "record";
        case ParamKind::Stream:
            return "stream";
        case ParamKind::String:
            return "string";
        case ParamKind::Void:
            return "void";
        case ParamKind::Base:
        case ParamKind::StreamCase:  // becomes no item of its own
            break;
    }
    return "parameter";
}

void JsonReport::Message(const LinePlace& place, const CapturedMessage& message,
                         const DecodedMessage& decoded, std::string& out) const {
    Json json = PlaceJson(place);
    json["message"] = AddressText(message);
    json["data"] = HexText(message.data, "");
    json["function_block"] = NameJson(decoded.block);
    json["function"] = NameJson(decoded.function);
    json["operation"] = NameJson(decoded.operation);
    json["items"] = ItemsJson(decoded.items, 0);
    json["errors"] = decoded.faults;
    AppendLine(json, out);
}

void JsonReport::BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                         std::string& out) const {
    Json json = PlaceJson(place);
    json["text"] = ShownText(line);
    json["errors"] = Json::array({std::string(fault)});
    AppendLine(json, out);
}

}  // namespace tarvex
