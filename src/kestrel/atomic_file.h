/// Replaces a file in one step. The new content goes to a temporary file `.kestrel-XXXXXX` in the directory
/// of the target, which is renamed over the target when it is complete and flushed to disk. Whatever fails,
/// and whenever the program dies, the target is either the old file or the complete new one.
///
/// A signal that would end the process makes the write fail first, so that no temporary file is left behind.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "kestrel/termination_signals.h"

namespace kestrel {

class AtomicFile {
  public:
    AtomicFile() = default;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile(AtomicFile&&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    AtomicFile& operator=(AtomicFile&&) = delete;
    /// Removes the temporary file if it was not renamed. A signal that waits for this ends the process here.
    ~AtomicFile();

    /// Creates the temporary file for the target at `path`; called once. When the path is a symbolic link,
    /// the target is what it points to. False when the target exists and is not a regular file or has no
    /// write permission (also for root), or when nothing can be created in its directory.
    bool Open(std::string_view path);

    /// Adds text, which reaches the disk in large blocks. After a failure it does nothing.
    void Append(std::string_view text);

    /// The file that is replaced, all links resolved.
    const std::string& Target() const { return target_; }
    /// Path of the temporary file, for content that another library writes there; then nothing is appended.
    /// It never looks like an option or an address.
    std::string TemporaryPath() const;
    /// Notes that such a library failed.
    void Fail() { failed_ = true; }

    /// Whether a write failed; `Commit` will then fail too.
    bool Failed() const { return failed_; }
    /// A signal waits to end the process; `Commit` will fail. Asked by whoever writes for long without
    /// appending.
    bool Interrupted() const { return signals_ && signals_->HaveCome(); }

    /// Puts the new file in the target's place, with the mode and, where permitted, the owner of the old one.
    /// False when this or any write before failed; the target is then unchanged.
    bool Commit();

  private:
    /// What a new file takes over from the one it replaces.
    struct OldFile {
        mode_t mode;
        uid_t user;
        gid_t group;
    };

    void WriteOut(std::string_view text);
    /// Gives the temporary file its final owner and mode.
    bool SetOwnerAndMode() const;
    /// Closes the temporary file. False when that reports a failed write.
    bool Close();

    /// The file to replace, all links resolved.
    std::string target_;
    /// The file that exists there, if one does.
    std::optional<OldFile> oldFile_;
    /// Held back while there is a temporary file.
    std::optional<TerminationSignals> signals_;
    /// Path of the temporary file; empty while there is none.
    std::string temporary_;
    /// Descriptor of the temporary file, or -1.
    int descriptor_ = -1;
    /// Text that is not yet written.
    std::string buffer_;
    bool failed_ = false;
};

}  // namespace kestrel
