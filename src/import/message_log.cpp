#include "import/message_log.h"

#include "import/files.h"
#include "import/format_text.h"

namespace tarvex {
namespace {

void Write(std::FILE* file, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), file);
}

}  // namespace

bool ZMostFCatLog::TakeRoom(std::size_t bytes) {
    isFull_ = isFull_ || bytes > room_;
    room_ -= isFull_ ? 0 : bytes;
    return !isFull_;
}

void ZMostFCatLog::WriteEntry(Text entry, unsigned number, const std::string& text,
                              const std::string& objectName) {
    if (!TakeRoom(text.size() + objectName.size())) {
        return;
    }
    TextHolder holder;
    std::fprintf(importLog_.get(), LoadText(holder, entry).Get(), number, objectName.c_str(), text.c_str());
}

void ZMostFCatLog::Fatal(const std::string& text, const std::string& objectName) {
    ++fatalCount_;
    if (importLog_) {
        TextHolder holder;
        std::fprintf(importLog_.get(), LoadText(holder, Text::FatalEntry).Get(), objectName.c_str(),
                     text.c_str());
    }
}

void ZMostFCatLog::Error(unsigned number, const std::string& text, const std::string& objectName) {
    if (CountError(number) && IsLogOpen()) {
        WriteEntry(Text::ErrorEntry, number, text, objectName);
    }
}

void ZMostFCatLog::Warning(unsigned number, const std::string& text, const std::string& objectName,
                           int /*level*/) {
    if (CountWarning(number) && IsLogOpen()) {
        WriteEntry(Text::WarningEntry, number, text, objectName);
    }
}

bool ZMostFCatLog::CountError(unsigned number) {
    ++errorCount_;
    const bool isLogged = IsLogged(number);
    loggedErrorCount_ += isLogged ? 1 : 0;
    return isLogged;
}

bool ZMostFCatLog::CountWarning(unsigned number) {
    ++warningCount_;
    const bool isLogged = IsLogged(number);
    loggedWarningCount_ += isLogged ? 1 : 0;
    return isLogged;
}

bool ZMostFCatLog::OpenLog(const std::string& path) {
    if (importLog_) {
        return false;
    }
    importLog_ = OpenForWriting(path, WriteMode::Truncate);
    return importLog_ != nullptr;
}

void ZMostFCatLog::WriteLine(std::string_view text) {
    if (importLog_) {
        Write(importLog_.get(), text);
        Write(importLog_.get(), "\n");
    }
}

void ZMostFCatLog::WriteSummary() {
    if (isFull_) {
        WriteLine("The log would become too large, further messages are left out!");
    }
    TextHolder holder;
    WriteLine("");
    WriteLine(
        FormatText(LoadText(holder, Text::SummaryFatal).Get(), fatalCount_, errorCount_, warningCount_));
}

std::string ZMostFCatLog::SummaryText() const {
    TextHolder holder;
    if (fatalCount_ > 0) {
        return FormatText(LoadText(holder, Text::SummaryFatal).Get(), fatalCount_, errorCount_,
                          warningCount_);
    }
    if (errorCount_ > 0) {
        return FormatText(LoadText(holder, Text::SummaryErrors).Get(), errorCount_, warningCount_);
    }
    if (warningCount_ > 0) {
        return FormatText(LoadText(holder, Text::SummaryWarnings).Get(), warningCount_);
    }
    return LoadText(holder, Text::SummaryClean).Get();
}

bool ZMostFCatLog::OpenTreeLog(const std::string& path) {
    if (treeLog_) {
        return false;
    }
    treeLog_ = OpenForWriting(path, WriteMode::Append);
    return treeLog_ != nullptr;
}

bool ZMostFCatLog::CloseTreeLog() {
    if (treeLog_ && isFull_) {
        Write(treeLog_.get(), "The log would become too large, further lines are left out!\n");
    }
    return CloseWritten(std::move(treeLog_));
}

void ZMostFCatLog::WriteTreeLine(std::string_view text, unsigned depth) {
    if (!treeLog_ || isFull_) {
        return;
    }
    treeLine_.assign(depth, '\t');
    // A line without a percent sign renders as itself.
    if (text.find('%') == std::string_view::npos) {
        treeLine_ += text;
    } else {
        treeLine_ += RenderAsFormat(text);
    }
    treeLine_ += '\n';
    if (TakeRoom(treeLine_.size())) {
        Write(treeLog_.get(), treeLine_);
    }
}

}  // namespace tarvex
