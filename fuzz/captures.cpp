#include "captures.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "disasm/csv_report.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"

namespace tarvex::fuzz {

CaptureCheck::CaptureCheck() : names_(&FixedCatalog()), joiner_(sink_), reader_(names_, nullptr, joiner_) {}

void CaptureCheck::TakeLine(std::string_view line, bool isCut) {
    ++sink_.lines;
    reader_.TakeLine(line, isCut);
}

void CaptureCheck::Finish() {
    reader_.Finish();
    joiner_.Finish();
}

void CaptureCheck::Sink::TakeMessage(const CapturedMessage& message) {
    Require(message.line >= 1 && message.line <= lines, "a message has one of the lines read");
    Require(message.telegram == Telegram::Whole, "messages are whole");
    RequireSameLine(message);
    RequireDecoding(FixedCatalog(), message);
    DecodedMessage decoded;
    DecodeMessage(FixedCatalog(), message, decoded);
    std::string csv;
    CsvReport().Message({.file = "", .number = message.line}, message, decoded, csv);
    Require(csv.ends_with('\n'), "a message makes rows");
}

void CaptureCheck::Sink::TakeBroken(const CapturedMessage& message, std::string_view fault) {
    Require(message.line >= 1 && message.line <= lines && !fault.empty(),
            "a broken message has a line and a fault");
}

void CaptureCheck::Sink::TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) {
    Require(line >= 1 && line <= lines && !fault.empty(), "an unreadable line has a number and a fault");
    std::string shown;
    TextReport().BadLine({.file = "capture", .number = line}, text, fault, shown);
    Require(std::ranges::count(shown, '\n') == 2, "a bad line makes two lines");
    std::string json;
    JsonReport().BadLine({.file = "", .number = line}, text, fault, json);
    Require(nlohmann::json::accept(json), "a bad line makes JSON");
    Require(json.find('\n') == json.size() - 1, "a bad line makes one line");
}

}  // namespace tarvex::fuzz
