/// Names of messages, short enough for the database.

#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "kestrel/keyed_hash.h"

namespace tarvex {

/// An ASCII letter or digit.
constexpr bool IsLetterOrDigit(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

/// Only the ASCII letters and digits of a name.
std::string CleanName(std::string_view name);

/// Drops the small vowels from the fourth character on; returns how many were dropped.
std::size_t ShortenName(std::string& name);

/// The name of a block, function or operation as a part of message names, which many messages share.
struct NamePart {
    explicit NamePart(std::string_view name);

    std::size_t length;     ///< Of the name as it is.
    std::size_t vowels;     ///< How many ShortenName drops.
    std::string clean;      ///< What CleanName leaves, as far as a message's name can show it.
    std::string shortened;  ///< The same of the name without the vowels.
};

/// Gives the messages of one database their names.
class MessageNames {
  public:
    /// `used`: names that are taken already.
    explicit MessageNames(kestrel::KeyedSet<std::string> used = {}) : used_(std::move(used)) {}

    /// The name made of those of block, function and operation, shortened to fit the record, and made unique
    /// by two hexadecimal digits. After 100 tries a name may repeat. Time for a name does not grow with the
    /// number of equal ones.
    std::string Make(const NamePart& block, const NamePart& function, const NamePart& operation);

    /// The names that are taken.
    const kestrel::KeyedSet<std::string>& Used() const { return used_; }

  private:
    std::string NumberedName(const std::string& stem);

    kestrel::KeyedSet<std::string> used_;
    kestrel::KeyedMap<std::string, unsigned> firstTries_;  // by stem: all lower numbers are taken
};

}  // namespace tarvex
