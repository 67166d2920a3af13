#include "import/log/message_log.h"

#include "import/log/texts.h"
#include "import/text/format_text.h"
#include "import/text/shown_text.h"

namespace tarvex {
namespace {

std::string Plain(std::string text) {
    HideControls(text);
    return text;
}

}  // namespace

void ZMostFCatLog::WriteEntry(Text entry, unsigned number, const std::string& text,
                              const std::string& objectName) {
    if (room_.Take(text.size() + objectName.size())) {
        std::fprintf(importLog_.get(), LoadText(entry), number, Plain(objectName).c_str(),
                     Plain(text).c_str());
    }
}

void ZMostFCatLog::NoteFault(Kind kind, unsigned number, const std::string& text,
                             const std::string& objectName, const ElementPlace& place) {
    if (faults_ != nullptr && faults_->HasRoom()) {
        faults_->Add(
            {kind, false, number, text, objectName, std::string(place.name), {}, place.line, place.column});
    }
}

void ZMostFCatLog::Fatal(const std::string& text, const std::string& objectName, const ElementPlace& place) {
    ++fatalCount_;
    NoteFault(Kind::Fatal, 0, text, objectName, place);
    if (importLog_) {
        std::fprintf(importLog_.get(), LoadText(Text::FatalEntry), Plain(objectName).c_str(),
                     Plain(text).c_str());
    }
}

void ZMostFCatLog::Error(unsigned number, const std::string& text, const std::string& objectName,
                         const ElementPlace& place) {
    NoteFault(Kind::Error, number, text, objectName, place);
    if (CountError(number) && IsLogOpen()) {
        WriteEntry(Text::ErrorEntry, number, text, objectName);
    }
}

void ZMostFCatLog::Warning(unsigned number, const std::string& text, const std::string& objectName,
                           const ElementPlace& place) {
    NoteFault(Kind::Warning, number, text, objectName, place);
    if (CountWarning(number) && IsLogOpen()) {
        WriteEntry(Text::WarningEntry, number, text, objectName);
    }
}

bool ZMostFCatLog::CountError(unsigned number) {
    lastError_ = number;
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
        WriteText(importLog_.get(), text);
        WriteText(importLog_.get(), "\n");
    }
}

void ZMostFCatLog::WriteSummary() {
    if (room_.IsSpent()) {
        WriteLine("The log would become too large, further messages are left out!");
    }
    WriteLine("");
    WriteLine(FormatText(LoadText(Text::SummaryFatal), fatalCount_, errorCount_, warningCount_));
}

std::string ZMostFCatLog::SummaryText() const {
    if (fatalCount_ > 0) {
        return FormatText(LoadText(Text::SummaryFatal), fatalCount_, errorCount_, warningCount_);
    }
    if (errorCount_ > 0) {
        return FormatText(LoadText(Text::SummaryErrors), errorCount_, warningCount_);
    }
    if (warningCount_ > 0) {
        return FormatText(LoadText(Text::SummaryWarnings), warningCount_);
    }
    return LoadText(Text::SummaryClean);
}

}  // namespace tarvex
