#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "import/files.h"
#include "import/texts.h"

namespace tarvex {

/// Counts the messages of one import and writes them to the import log, if one is open; also writes the tree
/// log. Lives for one import; its counts are never reset. A write that
/// fails shows when the file is closed.
class ZMostFCatLog {
  public:
    ZMostFCatLog() = default;
    ZMostFCatLog(const ZMostFCatLog&) = delete;
    ZMostFCatLog& operator=(const ZMostFCatLog&) = delete;
    ~ZMostFCatLog() = default;

    /// Counts a fatal error and writes it to an open import log. `objectName` is the path of the node at
    /// fault.
    void Fatal(const std::string& text, const std::string& objectName);
    /// Counts an error; one whose number is not excluded is also written to an open import log.
    void Error(unsigned number, const std::string& text, const std::string& objectName);
    /// The same for a warning. The level is accepted and not used.
    void Warning(unsigned number, const std::string& text, const std::string& objectName, int level = 0);

    /// Counting alone, for messages that nobody will read; true when the number is not excluded.
    bool CountError(unsigned number);
    bool CountWarning(unsigned number);

    /// The number is not in the exclusion set.
    bool IsLogged(unsigned number) const { return !exclusions_.contains(number); }
    /// An import log is open and has room for messages.
    bool IsLogOpen() const { return importLog_ != nullptr && !isFull_; }

    /// The messages of an import log, and the lines of a tree log, take up so many bytes, and so many more
    /// for each byte of the catalog. In a real catalog they don't reach a fourth of that; but a path may be
    /// long, and thousands may have it. What is further is counted and not written, and a line says so.
    static constexpr std::size_t kLeastBytes = std::size_t{64} << 20;
    static constexpr std::size_t kBytesPerByte = 64;
    void SetInputSize(std::size_t bytes) { room_ = kLeastBytes + kBytesPerByte * bytes; }

    /// Creates or truncates the import log. False when one is open already, or when the path cannot be
    /// created or is something other than a regular file.
    bool OpenLog(const std::string& path);
    /// False when anything of an open import log could not be written.
    bool CloseLog() { return CloseWritten(std::move(importLog_)); }
    /// Writes the text and a line feed to an open import log.
    void WriteLine(std::string_view text);
    /// Writes an empty line and the three totals, excluded messages included, to an open import log.
    void WriteSummary();
    /// The totals in one line, from the gravest kind that occurred on.
    std::string SummaryText() const;

    /// Opens the tree log for appending; fails as OpenLog does.
    bool OpenTreeLog(const std::string& path);
    /// False when anything of an open tree log could not be written.
    bool CloseTreeLog();
    /// Writes `depth` tabs, the text and a line feed to an open tree log. The text is used as a format.
    void WriteTreeLine(std::string_view text, unsigned depth);

    void SetExclusions(std::set<std::uint32_t> numbers) { exclusions_ = std::move(numbers); }

    std::uint32_t FatalCount() const { return fatalCount_; }
    std::uint32_t ErrorCount() const { return errorCount_; }
    std::uint32_t WarningCount() const { return warningCount_; }
    /// Errors and warnings whose number is not excluded.
    std::uint32_t LoggedErrorCount() const { return loggedErrorCount_; }
    std::uint32_t LoggedWarningCount() const { return loggedWarningCount_; }

  private:
    bool TakeRoom(std::size_t bytes);
    void WriteEntry(Text entry, unsigned number, const std::string& text, const std::string& objectName);

    std::uint32_t fatalCount_ = 0;
    std::uint32_t errorCount_ = 0;
    std::uint32_t warningCount_ = 0;
    std::uint32_t loggedErrorCount_ = 0;
    std::uint32_t loggedWarningCount_ = 0;
    File importLog_;
    File treeLog_;
    std::size_t room_ = kLeastBytes;  // for messages and lines yet to come
    bool isFull_ = false;
    std::string treeLine_;  // the last one, kept for its memory
    std::set<std::uint32_t> exclusions_;
};

}  // namespace tarvex
