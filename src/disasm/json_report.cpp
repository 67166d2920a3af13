#include "disasm/json_report.h"

#include "disasm/bit_field_item.h"
#include "disasm/classified_stream_item.h"
#include "disasm/enum_item.h"
#include "disasm/json_text.h"
#include "disasm/number_item.h"
#include "disasm/stream_item.h"
#include "import/text/wording.h"
#include "params/kind_name.h"

namespace tarvex {
namespace {

/// A key, with the comma in front of it, and a number.
void AddField(std::string& out, std::string_view key, std::int64_t number) {
    AppendNumber(out.append(key), number);
}

/// A key and a text.
void AddField(std::string& out, std::string_view key, std::string_view text) {
    AppendJsonText(out.append(key), text);
}

/// A key and bytes in hexadecimal.
void AddField(std::string& out, std::string_view key, std::span<const std::uint8_t> bytes) {
    AppendHex(out.append(key).append("\""), bytes, "");
    out += '"';
}

/// A key and a name, cut where it is very long.
void AddName(std::string& out, std::string_view key, std::string_view name) {
    const std::size_t begin = out.append(key).size();
    AppendShownName(out, name);
    QuoteJsonText(out, begin);
}

/// What only items of some kinds have.
void AppendValue(const ZMostParameter& item, std::string& out) {
    constexpr std::string_view kRaw = ",\"raw\":";
    switch (item.Kind()) {
        case ParamKind::Number: {
            const auto& number = static_cast<const ZMostParameterNumber&>(item);
            AddField(out, kRaw, number.SignedValue());
            if (const std::string_view unit = number.UnitText(); !unit.empty()) {
                AddField(out, ",\"unit\":", unit);
            }
            break;
        }
        case ParamKind::Enum: {
            const auto& enumeration = static_cast<const ZMostParameterEnum&>(item);
            AddField(out, kRaw, enumeration.RawValue());
            if (const std::string_view value = enumeration.ValueName(); !value.empty()) {
                AddName(out, ",\"value\":", value);
            }
            break;
        }
        case ParamKind::BoolField: {
            const auto& bit = static_cast<const ZMostParameterBoolField&>(item);
            AddField(out, ",\"bit\":", bit.Bit());
            out.append(kRaw).append(bit.Value() ? "1" : "0");
            break;
        }
        case ParamKind::ClassifiedStream: {
            const auto& stream = static_cast<const ZMostParameterClassifiedStream&>(item);
            AddField(out, ",\"media_type\":", std::string_view(stream.MediaType()));
            AddField(out, ",\"content\":", stream.Content());
            break;
        }
        case ParamKind::StreamSignal:
            AddField(out, kRaw, static_cast<const ZMostParameterStreamSignal&>(item).Value());
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

/// What an item says, less its members and the brace at its end.
void AppendItem(const ZMostParameter& item, unsigned entryNumber, std::string& out) {
    AddName(out, "{\"name\":", item.GetName());
    if (entryNumber > 0) {
        AddField(out, ",\"entry\":", entryNumber);
    }
    out.append(",\"type\":\"").append(KindName(item.Kind()));
    AddField(out, "\",\"offset\":", static_cast<std::int64_t>(item.Offset()));
    if (item.Kind() != ParamKind::BoolField) {  // its byte is its field's
        AddField(out, ",\"bytes\":", item.Bytes());
    }
    const std::size_t text = out.append(",\"text\":").size();
    item.AppendText(out);
    QuoteJsonText(out, text);
    AppendValue(item, out);
}

/// The bits of a field or boolean, as items.
void AppendBits(const ZMostParameterBitField& field, std::string& out) {
    out += ",\"items\":[";
    for (unsigned bit = 0; bit < field.BitCount(); ++bit) {
        out += bit == 0 ? "" : ",";
        AppendItem(field.BitAt(bit), 0, out);
        out += '}';
    }
    out += ']';
}

void AppendItems(const ZMostParameterListBaseInfo& items, const ZMostParameter* container, std::size_t end,
                 std::string& out) {
    out += ",\"items\":[";
    std::size_t index = 0;
    for (const auto& item : items.Items()) {
        if (out.size() > end) {
            return;
        }
        out += index == 0 ? "" : ",";
        AppendItem(*item, container == nullptr ? 0 : container->EntryNumber(index), out);
        if (item->IsType(kParamBitField) || item->IsType(kParamBool)) {
            AppendBits(static_cast<const ZMostParameterBitField&>(*item), out);
        } else if (item->Members() != nullptr) {
            AppendItems(*item->Members(), item.get(), end, out);
        }
        out += '}';
        ++index;
    }
    out += ']';
}

/// What a capture says of where a message comes from.
void AppendOrigin(const CapturedMessage& message, std::string& out) {
    if (!message.time.empty()) {
        AddField(out, ",\"time\":", std::string_view(message.time));
    }
    if (!message.direction.empty()) {
        AddField(out, ",\"direction\":", std::string_view(message.direction));
    }
    constexpr unsigned kDeviceDigits = 4;
    if (message.source) {
        AppendHexNumber(out.append(",\"source\":\""), *message.source, kDeviceDigits);
        out += '"';
    }
    if (message.destination) {
        AppendHexNumber(out.append(",\"destination\":\""), *message.destination, kDeviceDigits);
        out += '"';
    }
}

/// Opens the object of a line.
void AppendPlace(const LinePlace& place, std::string& out) {
    out += '{';
    if (!place.file.empty()) {
        AddField(out, "\"file\":", std::string_view(place.file));
        out += ',';
    }
    AddField(out, "\"line\":", static_cast<std::int64_t>(place.number));
}

template <class Node>
void AddNodeName(std::string& out, std::string_view key, const Node* node) {
    if (node == nullptr) {
        out.append(key).append("null");
    } else {
        AddField(out, key, std::string_view(node->GetName()));
    }
}

}  // namespace

void AppendJsonMessage(const CapturedMessage& message, std::string& out) {
    const std::size_t begin = out.size();
    AppendOrigin(message, out);
    AppendAddress(message, out.append(",\"message\":\""));
    AddField(out, "\",\"data\":", std::span(message.data));
    out += "}\n";
    out[begin] = '{';  // where the first comma was
}

void JsonReport::AppendMessage(const LinePlace& place, const CapturedMessage& message,
                               const DecodedMessage& decoded, std::size_t end, std::string& out) const {
    AppendPlace(place, out);
    AppendOrigin(message, out);
    AppendAddress(message, out.append(",\"message\":\""));
    AddField(out, "\",\"data\":", std::span(message.data));
    AddNodeName(out, ",\"function_block\":", decoded.block);
    AddNodeName(out, ",\"function\":", decoded.function);
    AddNodeName(out, ",\"operation\":", decoded.operation);
    AppendItems(decoded.items, nullptr, end, out);
    out += ",\"errors\":[";
    for (const std::string& fault : decoded.faults) {
        AddField(out, &fault == decoded.faults.data() ? "" : ",", std::string_view(fault));
    }
    out += "]}\n";
}

void JsonReport::BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                         std::string& out) const {
    AppendPlace(place, out);
    AddField(out, ",\"text\":", std::string_view(ShownText(line)));
    AddField(out, ",\"errors\":[", fault);
    out += "]}\n";
}

}  // namespace tarvex
