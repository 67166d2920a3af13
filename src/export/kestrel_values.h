/// Texts, numbers and names as the library of databases takes them.

#pragma once

#include <string_view>

#include "kestrel/kestrel.h"

namespace tarvex {

/// A copy of the text that the writer library takes over.
char* GiveToKestrel(std::string_view text);

/// A value for an integer or enumeration attribute, and one for a string attribute.
kestrel_attr_value_t NumberValue(double number);
kestrel_attr_value_t TextValue(std::string_view text);

/// Copies a name into a record, cut at the size of its array.
void CopyName(char (&name)[kNameSize], std::string_view text);

}  // namespace tarvex
