/// The importer's messages: how many there were, and the import log.

#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "import/log/fault_list.h"
#include "import/text/allowance.h"
#include "import/text/files.h"

namespace tarvex {

enum class Text : unsigned;

/// The messages of an import log, and likewise the lines of a tree log, take up so many bytes. In a real
/// catalog they don't reach a fourth of that; but a path may be long, and thousands of nodes may have it.
inline constexpr Bound kLogBytes{std::size_t{64} << 20, 64};

/// Counts the messages of one import and writes them to the import log, if one is open. Lives for one import;
/// its counts are never reset. A write that fails shows when the file is closed. Control characters of the
/// catalog become ".".
class ZMostFCatLog {
  public:
    ZMostFCatLog() = default;
    ZMostFCatLog(const ZMostFCatLog&) = delete;
    ZMostFCatLog& operator=(const ZMostFCatLog&) = delete;
    ~ZMostFCatLog() = default;

    /// Counts a fatal error and writes it to an open import log. `objectName` is the path of the node at
    /// fault.
    void Fatal(const std::string& text, const std::string& objectName, const ElementPlace& place = {});
    /// Counts an error; one whose number is not excluded is also written to an open import log.
    void Error(unsigned number, const std::string& text, const std::string& objectName,
               const ElementPlace& place = {});
    /// The same for a warning.
    void Warning(unsigned number, const std::string& text, const std::string& objectName,
                 const ElementPlace& place = {});

    /// Counting alone, for messages that nobody will read; true when the number is not excluded.
    bool CountError(unsigned number);
    bool CountWarning(unsigned number);

    /// The number is not in the exclusion set.
    bool IsLogged(unsigned number) const { return !exclusions_.contains(number); }
    /// Somebody reads messages of that number: an import log, or a list of faults.
    bool IsRead(unsigned number) const {
        return (IsLogOpen() && IsLogged(number)) || (faults_ != nullptr && faults_->HasRoom());
    }
    /// An import log is open and has room for messages.
    bool IsLogOpen() const { return importLog_ != nullptr && !room_.IsSpent(); }

    /// How much room there is for errors and warnings. Those beyond it are counted and not written, and a
    /// line says so.
    void SetRoom(const Allowance& room) { room_ = room; }
    const Allowance& Room() const { return room_; }

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

    /// From here on all messages also go into the list, excluded ones too. It is not owned; null for none.
    void SetFaults(FaultList* faults) { faults_ = faults; }

    void SetExclusions(std::set<std::uint32_t> numbers) { exclusions_ = std::move(numbers); }

    /// Number of the error that came last; 0 when there was none.
    unsigned LastError() const { return lastError_; }

    std::uint32_t FatalCount() const { return fatalCount_; }
    std::uint32_t ErrorCount() const { return errorCount_; }
    std::uint32_t WarningCount() const { return warningCount_; }
    /// Errors and warnings whose number is not excluded.
    std::uint32_t LoggedErrorCount() const { return loggedErrorCount_; }
    std::uint32_t LoggedWarningCount() const { return loggedWarningCount_; }

  private:
    void WriteEntry(Text entry, unsigned number, const std::string& text, const std::string& objectName);
    void NoteFault(Kind kind, unsigned number, const std::string& text, const std::string& objectName,
                   const ElementPlace& place);

    unsigned lastError_ = 0;
    std::uint32_t fatalCount_ = 0;
    std::uint32_t errorCount_ = 0;
    std::uint32_t warningCount_ = 0;
    std::uint32_t loggedErrorCount_ = 0;
    std::uint32_t loggedWarningCount_ = 0;
    File importLog_;
    Allowance room_{kLogBytes, 0};
    std::set<std::uint32_t> exclusions_;
    FaultList* faults_ = nullptr;
};

/// Where a message goes, and the element that it is about.
struct FaultSite {
    ZMostFCatLog& log;
    ElementPlace place;
};

}  // namespace tarvex
