#include "capture/capture_reader.h"

#include "capture/json_message.h"
#include "capture/message_line.h"
#include "import/text/utf8.h"

namespace tarvex {

CaptureReader::CaptureReader(const AddressNames& names, const TableColumns* columns, MessageSink& sink)
    : names_(names), sink_(sink) {
    if (columns != nullptr) {
        table_ = *columns;
    }
}

void CaptureReader::TakeLine(std::string_view line, bool isCut) {
    if (++number_ == 1) {
        TakeByteOrderMark(line);
    }
    if (isCut) {
        sink_.TakeUnreadable(number_, line, "the line is too long");
        return;
    }
    if (json_.Wants(line)) {
        json_.Take(line, number_);
        TakeJson();
        return;
    }
    if (IsCommentLine(line) || (table_ && TakeRow(line))) {
        return;
    }
    const std::string fault = ParseMessageLine(line, message_, names_);
    if (!fault.empty()) {
        if (auto table = TableColumns::FromHeader(line)) {
            table_ = std::move(table);
            return;
        }
    }
    Tell(fault, line, number_);
}

void CaptureReader::Finish() {
    json_.Take({}, number_);
    json_.Finish();
    TakeJson();
}

void CaptureReader::TakeJson() {
    JsonSplitter::Piece piece;
    while (json_.Next(piece)) {
        Tell(piece.fault.empty() ? ParseJsonMessage(piece.text, message_, names_) : std::string(piece.fault),
             piece.text, piece.line);
    }
}

/// False for a line of another style.
bool CaptureReader::TakeRow(std::string_view line) {
    if (!table_->Holds(line)) {
        return false;
    }
    const std::string fault = table_->Read(line, message_, names_);
    if (!fault.empty()) {
        if (auto table = TableColumns::FromHeader(line)) {
            table_ = std::move(table);
            return true;
        }
    }
    Tell(fault, line, number_);
    return true;
}

void CaptureReader::Tell(const std::string& fault, std::string_view text, std::uint64_t line) {
    if (fault.empty()) {
        message_.line = line;
        sink_.TakeMessage(message_);
    } else {
        sink_.TakeUnreadable(line, text, fault);
    }
}

}  // namespace tarvex
