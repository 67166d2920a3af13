#include "asm/assembler.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "asm/report_items.h"
#include "capture/hexadecimal.h"
#include "capture/json_message.h"
#include "capture/line_prefix.h"
#include "capture/message_line.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"
#include "import/text/names.h"
#include "import/text/utf8.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

using Json = nlohmann::json;

constexpr std::string_view kError = "  error: ";

/// The lines of a report may say more than a message can have items.
constexpr std::size_t kMostLines = 2 * kMaxItems;

/// An address in numbers alone: what follows may be bytes.
bool IsNumeric(std::string_view address) {
    return std::ranges::all_of(SplitTokens(address, "."),
                               [](std::string_view field) { return HexOf(field).has_value(); });
}

/// A segment has a number in front of its data, and no parameters.
AsmFault SegmentFault(const CapturedMessage& message) {
    return {"a segment of a message (telegram identifier " +
            std::to_string(static_cast<unsigned>(message.telegram)) + "), expected whole messages"};
}

/// The column, counted in characters from 1, of a byte.
std::size_t ColumnAt(std::string_view line, std::size_t byte) {
    const std::size_t within = std::min(byte, line.size());
    return CountCharacters(line.substr(0, within)) + (byte - within) + 1;
}

/// The lines of the report below its first one, without its errors.
std::vector<std::string> LinesOf(std::string_view report) {
    std::vector<std::string> lines;
    for (const std::string_view line : SplitTokens(report, "\n")) {
        if (!line.starts_with(kError)) {
            lines.emplace_back(line);
        }
    }
    lines.erase(lines.begin());
    return lines;
}

}  // namespace

Assembler::Assembler(const ZMTCatalog& catalog, bool isForced, AsmSink& sink)
    : catalog_(catalog),
      names_(&catalog),
      encoder_(isForced),
      sink_(sink),
      reader_(names_, nullptr, *this, this) {}

void Assembler::Finish() {
    reader_.Finish();
    FinishReport();
}

bool Assembler::TakeOwnLine(std::string_view line, std::uint64_t number) {
    line = line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
    if (isReportOpen_ && line.starts_with("  ")) {
        if (!line.starts_with(kError) && items_.size() < kMostLines) {
            items_.emplace_back(line);
        }
        return true;
    }
    FinishReport();
    if (line.starts_with(kError)) {
        return true;
    }
    message_ = {};
    message_.line = number;
    return !IsCommentLine(line) && TakeValues(line);
}

/// A line with an address in front of values; false for any other.
bool Assembler::TakeValues(std::string_view line) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    std::string_view rest = line.substr(begin);
    TakePrefix(rest, message_);
    const std::string_view address = rest.substr(0, AddressEnd(rest));
    rest.remove_prefix(address.size());
    std::optional<std::string_view> length;
    const std::string fault = names_.Read(address, message_, length);
    if (!BeginsWithField(rest)) {
        // Behind names stand bytes as well, but nothing else.
        CapturedMessage bytes;
        if (!fault.empty() || IsNumeric(address) || TrimBlanks(rest).starts_with('(') ||
            (!IsCommentLine(rest) && ParseMessageLine(line, bytes, names_).empty())) {
            return false;
        }
    }
    if (!fault.empty()) {
        Tell(AsmFault{fault, {0, static_cast<std::size_t>(address.data() - line.data()) + 1}}, line);
        return true;
    }
    std::vector<AsmField> values;
    auto wrong = ParseFields(rest, static_cast<std::size_t>(rest.data() - line.data()) + 1, values);
    Tell(wrong ? wrong : Encode(values, {0, line.size() + 1}), line);
    return true;
}

bool Assembler::TakeOwnObject(std::string_view object, std::uint64_t number) {
    message_ = {};
    message_.line = number;
    const Json json = Json::parse(object, nullptr, false);
    Tell(json.is_object() ? ReadJson(json) : AsmFault{std::string(kNoJsonObject)});
    return true;
}

/// A message of a capture, or the first line of one in a report.
void Assembler::TakeMessage(const CapturedMessage& message) {
    message_ = message;
    if (message.telegram != Telegram::Whole) {
        Tell(SegmentFault(message));
        return;
    }
    isReportOpen_ = true;
    items_.clear();
}

void Assembler::TakeBroken(const CapturedMessage& message, std::string_view fault) {
    sink_.TakeFault(message.line, {std::string(fault)});
}

void Assembler::TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) {
    CapturedMessage message;
    std::size_t at = 0;
    const bool isMessage = ParseMessageLine(text, message, names_, at) == fault;
    sink_.TakeFault(line, {std::string(fault), {0, isMessage ? ColumnAt(text, at) : 1}});
}

/// What has become of a message. `line`: where a fault of its first line is.
void Assembler::Tell(std::optional<AsmFault> fault, std::string_view line) {
    if (fault) {
        const std::size_t below = fault->place.line;
        const std::string_view at = below == 0               ? line
                                    : below <= items_.size() ? std::string_view(items_[below - 1])
                                                             : std::string_view();
        fault->place.column = ColumnAt(at, fault->place.column - 1);
        sink_.TakeFault(message_.line, *fault);
    } else {
        sink_.TakeMessage(message_);
    }
}

/// The message of a report ends where something stands that is not indented.
void Assembler::FinishReport() {
    if (!isReportOpen_) {
        return;
    }
    isReportOpen_ = false;
    Tell(items_.empty() ? std::nullopt : ReadReport());
}

/// The values of a text report.
std::optional<AsmFault> Assembler::ReadReport() {
    DecodedMessage decoded;
    DecodeMessage(catalog_, message_, decoded);
    std::string report;
    TextReport().Message({.file = "", .number = message_.line}, message_, decoded, report);
    const std::vector<std::string> said = LinesOf(report);
    if (said == items_) {
        return std::nullopt;
    }
    std::vector<AsmField> values = ItemsOfText(items_);
    CompareWithItems(values, ItemsOfText(said), decoded.items);
    return Encode(values, {items_.size(), 1});
}

std::optional<AsmFault> Assembler::ReadJson(const Json& json) {
    Json head = json;
    head.erase("items");
    const bool hasData = json.contains("data");
    if (!hasData) {
        head["data"] = "";
    }
    const std::uint64_t line = message_.line;
    const std::string fault = ParseJsonMessage(head.dump(), message_, names_);
    message_.line = line;
    if (!fault.empty()) {
        return AsmFault{fault};
    }
    if (message_.telegram != Telegram::Whole) {
        return SegmentFault(message_);
    }
    const auto items = json.find("items");
    return items == json.end() ? std::nullopt : ReadItems(*items, hasData);
}

/// The values of a JSON report; `hasData`: with the bytes that they were.
std::optional<AsmFault> Assembler::ReadItems(const Json& items, bool hasData) {
    DecodedMessage decoded;
    std::vector<AsmField> values;
    std::vector<AsmField> said;
    if (hasData) {
        DecodeMessage(catalog_, message_, decoded);
        std::string report;
        JsonReport().Message({.file = "", .number = message_.line}, message_, decoded, report);
        const Json json = Json::parse(report, nullptr, false);
        if (json.is_object() && json.value("items", Json()) == items) {
            return std::nullopt;
        }
        ItemsOfJson(json.is_object() ? json.value("items", Json()) : Json(), said);
    }
    if (!ItemsOfJson(items, values)) {
        return AsmFault{"no valid 'items', expected those of a report"};
    }
    CompareWithItems(values, said, decoded.items);
    return Encode(values, {});
}

const ZMTOperation* Assembler::OperationOf(const CapturedMessage& message, std::string& fault) const {
    DecodedMessage decoded;
    DecodeMessage(catalog_, message, decoded);
    if (decoded.operation == nullptr) {
        fault = decoded.faults.front();
    }
    return decoded.operation;
}

/// Puts the values into the data of the message.
std::optional<AsmFault> Assembler::Encode(const std::vector<AsmField>& values, const AsmPlace& end) {
    message_.data.clear();
    std::string fault;
    const ZMTOperation* operation = OperationOf(message_, fault);
    if (operation == nullptr) {
        return AsmFault{fault};
    }
    if (auto wrong = encoder_.Encode(*operation, values, end, message_.data)) {
        return wrong;
    }
    DecodedMessage decoded;
    DecodeMessage(catalog_, message_, decoded);
    if (!decoded.faults.empty()) {
        return AsmFault{"the values make no message of the operation: " + decoded.faults.front()};
    }
    return std::nullopt;
}

}  // namespace tarvex
