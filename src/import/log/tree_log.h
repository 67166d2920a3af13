/// The tree log: the finished catalog, node by node.

#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "import/log/message_log.h"

namespace tarvex {

/// Writes lines to a tree log. A write that fails shows when the file is closed.
class ZMostTreeLog {
  public:
    /// `room` is how many bytes the lines may take; those beyond it are left out, and a line says so.
    explicit ZMostTreeLog(const Allowance& room = Allowance(kLogBytes, 0)) : room_(room) {}

    /// Opens the tree log for appending. False when one is open already, or when the path cannot be created
    /// or is something other than a regular file.
    bool OpenTreeLog(const std::string& path);
    /// False when anything of an open tree log could not be written.
    bool CloseTreeLog();
    /// There is no room for lines any more, so they need not be made.
    bool IsFull() const { return room_.IsSpent(); }
    const Allowance& Room() const { return room_; }
    /// Writes `depth` tabs, the text and a line feed to an open tree log. The text is used as a format, and
    /// control characters of the catalog become ".".
    void WriteTreeLine(std::string_view text, unsigned depth);

  private:
    File file_;
    Allowance room_;
    std::string line_;  // the last one, kept for its memory
};

}  // namespace tarvex
