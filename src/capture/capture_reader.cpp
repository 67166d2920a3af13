#include "capture/capture_reader.h"

#include <algorithm>
#include <utility>

#include "capture/json_message.h"
#include "capture/message_line.h"
#include "import/text/names.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

/// What stands in the lines of an object: keys, ends, and the numbers of a list.
bool MayBelongToJson(std::string_view line) {
    const std::string_view text = TrimBlanks(line);
    constexpr std::string_view kBegins = "\"}],";
    constexpr std::string_view kNumbers = "0123456789, ";
    return text.empty() || kBegins.find(text.front()) != std::string_view::npos ||
           text.find_first_not_of(kNumbers) == std::string_view::npos;
}

}  // namespace

CaptureReader::CaptureReader(const AddressNames& names, const TableColumns* columns, MessageSink& sink,
                             LineTaker* taker)
    : names_(names), sink_(sink), taker_(taker) {
    if (columns != nullptr) {
        table_ = *columns;
    }
}

void CaptureReader::TakeLine(std::string_view line, bool isCut) {
    if (++number_ == 1) {
        TakeByteOrderMark(line);
    }
    ReadLine(line, number_, isCut);
    ReadAgain();
}

void CaptureReader::TakeMore(std::string_view more, bool isCut) {
    if (std::exchange(isMoreWanted_, isMoreWanted_ && isCut)) {
        json_.TakeMore(more, isCut);
        TakeJson();
        ReadAgain();
    }
}

void CaptureReader::Finish() {
    do {
        json_.Finish();
        TakeJson();
        ReadAgain();
    } while (json_.IsOpen());
}

void CaptureReader::ReadLine(std::string_view line, std::uint64_t number, bool isCut) {
    isMoreWanted_ = false;
    if (!json_.IsOpen() && !isCut && taker_ != nullptr && taker_->TakeOwnLine(line, number)) {
        return;
    }
    if (json_.Wants(line)) {
        isMoreWanted_ = isCut;
        json_.Take(line, number, isCut);
        TakeJson();
    } else if (isCut) {
        sink_.TakeUnreadable(number, line, "the line is too long");
    } else if (!table_ || !TakeRow(line, number)) {
        TakeMessageLine(line, number);
    }
}

/// Lines of objects that have shown to be none.
void CaptureReader::ReadAgain() {
    while (!others_.empty()) {
        const CaptureLine line = std::move(others_.back());
        others_.pop_back();
        ReadLine(line.text, line.number, line.isCut);
    }
}

void CaptureReader::TakeJson() {
    JsonSplitter::Piece piece;
    while (json_.Next(piece)) {
        if (!piece.fault.empty()) {
            TakeBroken(piece);
        } else if (taker_ == nullptr || !taker_->TakeOwnObject(piece.text, piece.line)) {
            Tell(ParseJsonMessage(piece.text, message_, names_), piece.text, piece.line);
        }
    }
}

void CaptureReader::TakeBroken(JsonSplitter::Piece& piece) {
    Tell(std::string(piece.fault), piece.text, piece.line);
    isMoreWanted_ = false;
    isBehindBroken_ = !piece.others.empty();
    std::ranges::move(piece.others.rbegin(), piece.others.rend(), std::back_inserter(others_));
}

/// False for a line of another style.
bool CaptureReader::TakeRow(std::string_view line, std::uint64_t number) {
    if (!table_->Holds(line)) {
        return false;
    }
    const std::string fault = table_->Read(line, message_, names_);
    if (!fault.empty()) {
        if (TakeHeader(line)) {
            return true;
        }
        if (!table_->HasAddress(line, names_)) {  // comments and messages may have the table's mark, too
            CapturedMessage other;
            if (IsCommentLine(line) || ParseMessageLine(line, other, names_).empty()) {
                return false;
            }
        }
    }
    Tell(fault, line, number);
    return true;
}

/// A line that names the columns of those below it.
bool CaptureReader::TakeHeader(std::string_view line) {
    auto table = TableColumns::FromHeader(line);
    if (!table) {
        return false;
    }
    table_ = std::move(table);
    return true;
}

void CaptureReader::TakeMessageLine(std::string_view line, std::uint64_t number) {
    if (IsCommentLine(line)) {
        TakeHeader(line);
        return;
    }
    std::string fault = ParseMessageLine(line, message_, names_);
    if (!fault.empty()) {
        if (TakeHeader(line) || (isBehindBroken_ && MayBelongToJson(line))) {
            return;
        }
        const std::string shortness = table_ ? table_->Shortness(line) : std::string();
        fault = shortness.empty() ? fault : shortness;
    }
    isBehindBroken_ = false;  // something else begins
    Tell(fault, line, number);
}

void CaptureReader::Tell(const std::string& fault, std::string_view text, std::uint64_t line) {
    if (fault.empty()) {
        isBehindBroken_ = false;
        message_.line = line;
        sink_.TakeMessage(message_);
    } else {
        sink_.TakeUnreadable(line, text, fault);
    }
}

}  // namespace tarvex
