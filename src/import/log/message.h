/// One message of the importer.

#pragma once

#include <string_view>

namespace tarvex {

/// What becomes of an import: fatal errors end it, errors and warnings do not.
enum class Kind { Fatal, Error, Warning };

/// A fault of a catalog that the importer tells. Declared in messages.def.
struct Message {
    unsigned number;  ///< 0 for fatal errors.
    Kind kind;
    std::string_view text;  ///< A printf format; ends with a zero.
};

}  // namespace tarvex
