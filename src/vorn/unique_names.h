/// Letters and digits at the end of names that only make them unique.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kestrel/database.h"
#include "kestrel/keyed_hash.h"

namespace vorn {

/// Tells what names of one database may be made of. A name that was taken got letters ("Temp", "TempB" and so
/// on, in front of "X" or "_M1" if the signal is a multiplexor or multiplexed), that of a message two
/// hexadecimal digits. They count as such where the database has all names that come before them, from the
/// one without any.
class UniqueNames {
  public:
    explicit UniqueNames(const kestrel::Database& database) : database_(database) {}

    /// What the name of a signal of the database may be without letters: itself, in front, and all that it
    /// has letters behind. "DeviceIDC" is the third "DeviceID", and the "Device" behind "DeviceIDB" if there
    /// are so many. Equal texts are equal names.
    std::vector<std::string> StemsOf(const kestrel::Signal& signal);
    /// The name of a message of the database, without its digits. Nothing if it has none.
    std::optional<std::string> StemOf(const kestrel::Message& message);

  private:
    void ReadSignalNames();
    void ReadMessageNames();
    unsigned LettersBehind(const std::string& stem, const std::string& suffix);
    unsigned DigitsBehind(std::string_view stem);

    const kestrel::Database& database_;
    /// Of the whole database, as soon as somebody asks.
    std::optional<kestrel::KeyedSet<std::string_view>> signalNames_;
    std::optional<kestrel::KeyedSet<std::string_view>> messageNames_;
    /// What names of messages begin with, as far as digits leave it.
    kestrel::KeyedSet<std::string_view> messageStems_;
    /// How many names there are in a row, by the first of them.
    kestrel::KeyedMap<std::string, unsigned> signalRows_;
    kestrel::KeyedMap<std::string, unsigned> messageRows_;
};

/// Whether both signals may have one name, apart from letters.
bool AreNamedAlike(const kestrel::Signal& before, UniqueNames& namesBefore, const kestrel::Signal& after,
                   UniqueNames& namesAfter);
/// Whether both messages have one name, apart from digits.
bool AreNamedAlike(const kestrel::Message& before, UniqueNames& namesBefore, const kestrel::Message& after,
                   UniqueNames& namesAfter);

}  // namespace vorn
