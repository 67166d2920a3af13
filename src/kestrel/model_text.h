/// How writers put the parts of a database into words, whatever the format.

#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kestrel/database.h"

namespace kestrel {

/// "database", "node" or "message".
std::string_view ObjectName(AttrObject object);
/// "integer", "string" or "enumeration".
std::string_view TypeName(AttrType type);
/// "big_endian" or "little_endian".
std::string_view ByteOrderName(const sigblk& signal);

/// The text of a name array as valid UTF-8 of at most 32 bytes: bytes that are not UTF-8 become U+FFFD, and a
/// character that is cut at the end is left out.
std::string NameText(const char (&name)[kNameSize]);
/// A text of the caller's as valid UTF-8; empty for null.
std::string Text(const char* text);
std::string Text(std::string_view text);

/// The names of an enumeration's values, by index.
std::vector<std::string> ChoiceNames(const AttrDef& definition);

/// The nearest number that a file can hold: 0 for no number at all, the largest one for an infinite one.
double Finite(double number);

/// A value as a text: numbers in their shortest form, an enumeration value as its name. An index that the
/// definition has no name for is written as the default. `choices` are the definition's.
std::string ValueText(const AttrDef& definition, const std::vector<std::string>& choices,
                      kestrel_attr_value_t value);

/// Values in words, as above. The names of an enumeration's values are made once, however many values there
/// are.
class ValueTexts {
  public:
    std::string Of(const AttrValues::Value& entry);

  private:
    std::unordered_map<const AttrDef*, std::vector<std::string>> choices_;
};

}  // namespace kestrel
