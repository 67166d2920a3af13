#include "import/log/tree_log.h"

#include "import/text/format_text.h"
#include "import/text/shown_text.h"

namespace tarvex {

bool ZMostTreeLog::OpenTreeLog(const std::string& path) {
    if (file_) {
        return false;
    }
    file_ = OpenForWriting(path, WriteMode::Append);
    return file_ != nullptr;
}

bool ZMostTreeLog::CloseTreeLog() {
    if (file_ && room_.IsSpent()) {
        WriteText(file_.get(), "The log would become too large, further lines are left out!\n");
    }
    return CloseWritten(std::move(file_));
}

void ZMostTreeLog::WriteTreeLine(std::string_view text, unsigned depth) {
    if (!file_ || IsFull()) {
        return;
    }
    line_.assign(depth, '\t');
    // A line without a percent sign renders as itself.
    if (text.find('%') == std::string_view::npos) {
        line_ += text;
    } else {
        line_ += RenderAsFormat(text);
    }
    HideControls(line_);
    line_ += '\n';
    if (room_.Take(line_.size())) {
        WriteText(file_.get(), line_);
    }
}

}  // namespace tarvex
