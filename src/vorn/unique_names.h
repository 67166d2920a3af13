/// Letters and digits at the end of names that only make them unique.

#pragma once

#include <optional>
#include <string>

#include "kestrel/database.h"
#include "kestrel/keyed_hash.h"

namespace vorn {

/// Tells what names of one database are made of. A name that was taken got letters ("Temp", "TempB", "TempC",
/// ..., in front of "X" or "_M1" if the signal is a multiplexor or multiplexed), that of a message two
/// hexadecimal digits. They count as such where the database has the name that comes before them.
class UniqueNames {
  public:
    explicit UniqueNames(const kestrel::Database& database) : database_(database) {}

    /// The name of a signal of the database without its letters: equal texts are equal names.
    std::string StemOf(const kestrel::Signal& signal);
    /// The name of a message of the database, without its digits. Nothing if it has none.
    std::optional<std::string> StemOf(const kestrel::Message& message);

  private:
    void ReadSignalNames();
    void ReadMessageNames();

    const kestrel::Database& database_;
    /// Of the whole database, as soon as somebody asks.
    std::optional<kestrel::KeyedSet<std::string_view>> signalNames_;
    std::optional<kestrel::KeyedSet<std::string_view>> messageNames_;
    /// What names of messages begin with, as far as digits leave it.
    kestrel::KeyedSet<std::string_view> messageStems_;
};

/// Whether both signals have one name, apart from letters.
bool AreNamedAlike(const kestrel::Signal& before, UniqueNames& namesBefore, const kestrel::Signal& after,
                   UniqueNames& namesAfter);
/// Whether both messages have one name, apart from digits.
bool AreNamedAlike(const kestrel::Message& before, UniqueNames& namesBefore, const kestrel::Message& after,
                   UniqueNames& namesAfter);

}  // namespace vorn
