#include "capture/json_message.h"

#include <nlohmann/json.hpp>

#include "capture/hexadecimal.h"
#include "capture/json_splitter.h"
#include "capture/loose_fields.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

using Json = nlohmann::json;

std::string NoUse(const std::string& key, std::string_view expected) {
    return "no valid '" + ShownText(key) + "', expected " + std::string(expected);
}

/// A number of at most so many bits.
std::optional<std::uint32_t> WholeNumber(const Json& value, std::uint32_t max) {
    if (!value.is_number_integer() || (!value.is_number_unsigned() && value.get<std::int64_t>() < 0) ||
        value.get<std::uint64_t>() > max) {
        return std::nullopt;
    }
    return value.get<std::uint32_t>();
}

std::string HexText(std::uint32_t number, unsigned digits) {
    std::string text;
    AppendHexNumber(text, number, digits);
    return text;
}

/// A number as hexadecimal text, a text as it is.
std::optional<std::string> FieldText(const Json& value) {
    constexpr std::uint32_t kMax = 0xFFFFFFFF;
    if (value.is_string()) {
        return value.get<std::string>();
    }
    const auto number = WholeNumber(value, kMax);
    return number ? std::optional(HexText(*number, 1)) : std::nullopt;
}

/// Bytes as hexadecimal text.
std::optional<std::string> DataText(const Json& value) {
    if (value.is_object()) {
        const auto inner = value.find("data");
        return inner == value.end() || inner->is_object() ? std::nullopt : DataText(*inner);
    }
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (!value.is_array()) {
        return std::nullopt;
    }
    constexpr std::uint32_t kMaxByteValue = 0xFF;
    std::string text;
    for (const Json& element : value) {
        const auto byte = element.is_string() ? HexOf(element.get_ref<const std::string&>())
                                              : WholeNumber(element, kMaxByteValue);
        if (!byte || *byte > kMaxByteValue) {
            return std::nullopt;
        }
        (text += ' ') += HexText(*byte, 2);
    }
    return text;
}

/// The halves of the addresses of devices.
struct Device {
    std::optional<std::uint32_t> high;
    std::optional<std::uint32_t> low;
};

struct HalfKey {
    std::string_view key;
    bool isTarget;
    bool isHigh;
};
constexpr HalfKey kHalves[] = {{"sourceaddrhigh", false, true},
                               {"sourceaddrlow", false, false},
                               {"targetaddrhigh", true, true},
                               {"targetaddrlow", true, false}};

/// Reads the keys of one object.
class ObjectReader {
  public:
    std::string Take(const std::string& key, const Json& value) {
        if (value.is_null()) {
            return {};
        }
        for (const HalfKey& half : kHalves) {
            if (half.key == PlainKey(key)) {
                return TakeHalf(half, key, value);
            }
        }
        return TakeColumn(ColumnOf(key), key, value);
    }
    std::string Read(CapturedMessage& out, const AddressNames& names) {
        SetDevice(Column::Source, devices_[0]);
        SetDevice(Column::Destination, devices_[1]);
        return fields_.Read(out, names);
    }

  private:
    std::string TakeHalf(const HalfKey& half, const std::string& key, const Json& value) {
        constexpr std::uint32_t kMaxByteValue = 0xFF;
        const auto text = FieldText(value);
        const auto byte = text ? HexOf(*text) : std::nullopt;
        if (!byte || *byte > kMaxByteValue) {
            return NoUse(key, "a byte");
        }
        Device& device = devices_[half.isTarget ? 1 : 0];
        (half.isHigh ? device.high : device.low) = byte;
        return {};
    }
    std::string TakeColumn(Column column, const std::string& key, const Json& value) {
        std::optional<std::string> text;
        switch (column) {
            case Column::Other:
                return {};
            case Column::Date:
                text = value.is_string() ? value.get<std::string>() : std::string();
                break;
            case Column::Data:
                text = DataText(value);
                break;
            case Column::Time:
                fields_.SetTimeUnit(TimeUnitOf(key));
                [[fallthrough]];
            case Column::Length:
                text = value.is_string()   ? std::optional(value.get<std::string>())
                       : value.is_number() ? std::optional(value.dump())
                                           : std::nullopt;
                break;
            default:
                text = FieldText(value);
                break;
        }
        if (!text) {
            return NoUse(key, column == Column::Data ? "bytes" : "a number or a text");
        }
        fields_.Set(column, *text);
        return {};
    }
    void SetDevice(Column column, const Device& device) {
        if (device.high || device.low) {
            fields_.Set(column, HexText(device.high.value_or(0) << 8 | device.low.value_or(0), 4));
        }
    }

    LooseFields fields_;
    Device devices_[2];
};

}  // namespace

std::string ParseJsonMessage(std::string_view text, CapturedMessage& out, const AddressNames& names) {
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object()) {
        return std::string(kNoJsonObject);
    }
    ObjectReader reader;
    for (const auto& [key, value] : json.items()) {
        if (std::string fault = reader.Take(key, value); !fault.empty()) {
            return fault;
        }
    }
    return reader.Read(out, names);
}

}  // namespace tarvex
