/// Names of signals, each given once.

#pragma once

#include <cstddef>
#include <string>

#include "kestrel/kestrel.h"
#include "kestrel/keyed_hash.h"

namespace tarvex {

/// Names for the signals of one database. A name that is taken gets letters that count upwards: "Temp",
/// "TempB", "TempC", ..., "TempZ", "TempBA". Time for a name does not grow with the number of equal ones.
class SignalNames {
  public:
    /// `areUnique`: a name is given once in the whole database, else once in each message. The writer
    /// outlives this object. `expected`: room is made for so many names that have to be unique.
    SignalNames(KestrelWriteManager& writer, bool areUnique, std::size_t expected = 0);

    /// To be called before the first name of each message.
    void StartMessage();

    /// A name for a new signal of the message: the base, which has letters, digits and "_" only, then the
    /// letters that make it free, if it needs any, then the suffix. Base and suffix together are cut to
    /// `maxLength` (at least 8) characters, unique names to three less, so that their letters find room. The
    /// letters of other names come on top of `maxLength`. To be called when the signal is in the message and
    /// has no name yet.
    std::string Make(const msgblk& message, std::string base, std::string suffix, std::size_t maxLength);

  private:
    /// Of a name that is not free: whether another message may have it, or nobody ever again (in the message,
    /// where names are not unique).
    enum class Taking { Done, NotFree, NeverFree };

    Taking Take(const msgblk& message, const std::string& name);
    std::string NumberedName(const msgblk& message, const std::string& base, const std::string& suffix);

    KestrelWriteManager& writer_;
    bool areUnique_;
    kestrel::KeyedSet<std::string> usedNames_;  // if they have to be unique
    bool haveBeenCut_ = false;                  // some of them, in their records
    /// By base and suffix: all lower numbers but 0 are taken for good. Only names that were asked for twice.
    kestrel::KeyedMap<std::string, unsigned> firstTries_;
};

}  // namespace tarvex
