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
    : catalog_(catalog), names_(&catalog), encoder_(isForced), sink_(sink) {}

void Assembler::TakeLine(std::string_view line) {
    if (++number_ == 1) {
        TakeByteOrderMark(line);
    }
    line = line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
    if (isReportOpen_ && line.starts_with("  ")) {
        if (!line.starts_with(kError) && items_.size() < kMostLines) {
            items_.emplace_back(line);
        }
        return;
    }
    FinishReport();
    if (IsCommentLine(line) || line.starts_with(kError)) {
        return;
    }
    if (TrimBlanks(line).starts_with('{')) {
        TakeJson(TrimBlanks(line));
    } else {
        TakeHeader(line);
    }
}

void Assembler::Finish() {
    FinishReport();
}

/// A line with an address: values, bytes, or the first of a report.
void Assembler::TakeHeader(std::string_view line) {
    message_ = {};
    message_.line = number_;
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    std::string_view rest = line.substr(begin);
    TakePrefix(rest, message_);
    const std::string_view address = rest.substr(0, AddressEnd(rest));
    const auto column = static_cast<std::size_t>(address.data() - line.data()) + 1;
    std::optional<std::string_view> length;
    std::string fault = names_.Read(address, message_, length);
    rest.remove_prefix(address.size());
    const std::string_view behind = TrimBlanks(rest);
    const bool hasValues =
        rest.find('=') < rest.find('(') || (!IsNumeric(address) && !behind.starts_with('('));
    if (fault.empty() && !hasValues) {
        fault = ParseMessageLine(line, message_, names_);
        message_.line = number_;
    }
    if (!fault.empty()) {
        sink_.TakeFault(number_, {fault, {0, column}});
    } else if (hasValues) {
        std::vector<AsmField> values;
        const auto place = static_cast<std::size_t>(rest.data() - line.data()) + 1;
        auto wrong = ParseFields(rest, place, values);
        if (!wrong) {
            wrong = Encode(values, {0, line.size() + 1});
        }
        if (wrong) {
            sink_.TakeFault(number_, *wrong);
        } else {
            sink_.TakeMessage(message_);
        }
    } else {
        isReportOpen_ = true;
        items_.clear();
    }
}

/// The message of a report ends where something stands that is not indented.
void Assembler::FinishReport() {
    if (!isReportOpen_) {
        return;
    }
    isReportOpen_ = false;
    if (!items_.empty() && !SaysTheSame(items_)) {
        if (const auto fault = Encode(ItemsOfText(items_), {items_.size(), 1})) {
            sink_.TakeFault(message_.line, *fault);
            return;
        }
    }
    sink_.TakeMessage(message_);
}

bool Assembler::SaysTheSame(const std::vector<std::string>& items) const {
    DecodedMessage decoded;
    DecodeMessage(catalog_, message_, decoded);
    std::string report;
    TextReport().Message({.file = "", .number = message_.line}, message_, decoded, report);
    return LinesOf(report) == items;
}

bool Assembler::SaysTheSame(const Json& items) const {
    DecodedMessage decoded;
    DecodeMessage(catalog_, message_, decoded);
    std::string report;
    JsonReport().Message({.file = "", .number = message_.line}, message_, decoded, report);
    const Json json = Json::parse(report, nullptr, false);
    return json.is_object() && json.value("items", Json()) == items;
}

void Assembler::TakeJson(std::string_view line) {
    const Json json = Json::parse(line, nullptr, false);
    const auto fault = json.is_object() ? ReadJson(json) : AsmFault{"no valid JSON, expected an object"};
    if (fault) {
        sink_.TakeFault(number_, *fault);
    } else {
        sink_.TakeMessage(message_);
    }
}

std::optional<AsmFault> Assembler::ReadJson(const Json& json) {
    Json head = json;
    head.erase("items");
    if (!head.contains("data")) {
        head["data"] = "";
    }
    const std::string fault = ParseJsonMessage(head.dump(), message_, names_);
    message_.line = number_;
    if (!fault.empty()) {
        return AsmFault{fault};
    }
    const auto items = json.find("items");
    if (items == json.end() || (json.contains("data") && SaysTheSame(*items))) {
        return std::nullopt;
    }
    std::vector<AsmField> values;
    if (!ItemsOfJson(*items, values)) {
        return AsmFault{"no valid 'items', expected those of a report"};
    }
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
