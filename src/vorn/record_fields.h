/// The properties of records as they are compared.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kestrel/database.h"
#include "kestrel/model_text.h"
#include "vorn/compare.h"

namespace vorn {

/// The properties of a record by their names.
using Fields = std::vector<std::pair<std::string, FieldValue>>;

Fields FieldsOf(const kestrel::AttrDef& definition);
/// All but the name and the value descriptions.
Fields FieldsOf(const kestrel::Signal& signal);
/// The values that were set.
Fields FieldsOf(const kestrel::AttrValues& attributes, kestrel::ValueTexts& values);

/// The fields of which one record has another value than the other, or none, in the order of the second.
std::vector<FieldChange> CompareFields(const Fields& before, const Fields& after);

/// Whether the fields of both signals are equal, and their value descriptions up to the order. May say no
/// where they are.
bool AreSurelyEqual(const kestrel::Signal& before, const kestrel::Signal& after);

}  // namespace vorn
