#include "capture/loose_fields.h"

#include "capture/data_bytes.h"
#include "capture/hexadecimal.h"
#include "import/text/names.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

std::string ReadDevice(const std::string& text, const char* what, std::optional<std::uint32_t>& out) {
    constexpr std::uint32_t kMaxDevice = 0xFFFF;
    out = text.empty() ? std::nullopt : HexOf(text);
    if (!text.empty() && (!out || *out > kMaxDevice)) {
        return "no valid " + std::string(what) + " address '" + ShownText(text) +
               "', expected up to four hexadecimal digits";
    }
    return {};
}

}  // namespace

std::string PlainKey(std::string_view name) {
    std::string plain;
    for (const char c : name) {
        const char folded = FoldCase(c);
        if ((folded >= 'a' && folded <= 'z') || (folded >= '0' && folded <= '9')) {
            plain += folded;
        }
    }
    return plain;
}

void LooseFields::Set(Column column, std::string_view text) {
    std::string& out = texts_[static_cast<std::size_t>(column)];
    if (column == Column::Data) {
        (out += ' ') += text;
    } else {
        out = text;
    }
}

std::string LooseFields::Read(CapturedMessage& out, const AddressNames& names) const {
    out = {};
    std::string fault = ReadAddress(out, names);
    if (fault.empty()) {
        fault = ReadOrigin(out);
    }
    if (fault.empty()) {
        fault = ReadDataBytes(Text(Column::Data), out.data);
    }
    const std::string& length = Text(Column::Length);
    if (!fault.empty() || length.empty()) {
        return fault;
    }
    return CheckLength(length, out.data.size());
}

std::string LooseFields::ReadAddress(CapturedMessage& out, const AddressNames& names) const {
    if (const std::string& message = Text(Column::Message); !message.empty()) {
        std::optional<std::string_view> length;
        const std::string fault = names.Read(message, out, length);
        return fault.empty() && length ? "no valid OPType, expected FBlockID.InstID.FktID.OPType" : fault;
    }
    return names.Read(
        {Text(Column::FBlock), Text(Column::Inst), Text(Column::Function), Text(Column::OpType)}, out);
}

std::string LooseFields::ReadOrigin(CapturedMessage& out) const {
    const std::string& date = Text(Column::Date);
    const std::string& time = Text(Column::Time);
    out.time = ShownText(date.empty() || time.empty() ? date + time : date + " " + time);
    out.timeUnit = timeUnit_;
    out.direction = ShownText(Text(Column::Direction));
    out.hasFreeTexts = true;
    std::string fault = ReadDevice(Text(Column::Source), "source", out.source);
    if (fault.empty()) {
        fault = ReadDevice(Text(Column::Destination), "destination", out.destination);
    }
    const std::string& telegram = Text(Column::Telegram);
    if (!fault.empty() || telegram.empty()) {
        return fault;
    }
    const auto value = HexOf(telegram);
    if (!value || *value >= kTelegramEnd) {
        return "no valid telegram identifier '" + ShownText(telegram) + "', expected 0, 1, 2 or 3";
    }
    out.telegram = static_cast<Telegram>(*value);
    return {};
}

}  // namespace tarvex
