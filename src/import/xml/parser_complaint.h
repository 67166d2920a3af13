/// What the XML parser holds against a document, counted.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tarvex {

/// The errors of a document that can be read on: it is not valid. All texts are UTF-8, as the document has
/// them.
struct ParserComplaints {
    std::size_t errors = 0;
    /// Of the first error.
    std::string file;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    std::string text;
    /// The document can't be read, valid or not.
    bool isFatal = false;
};

}  // namespace tarvex
