/// Texts between the XML parser, which has UTF-16, and the rest of the program, which has UTF-8.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

namespace tarvex {

/// A text of the parser.
using DomText = std::basic_string<XMLCh>;

/// A text of the parser in UTF-8, whatever the locale; empty for null. Halves of surrogate pairs become
/// U+FFFD.
std::string Transcode(const XMLCh* text);
/// The same for a text that need not end with a zero, appended to another one.
void AppendTranscoded(std::basic_string_view<XMLCh> text, std::string& out);

/// A UTF-8 text for the parser; bytes that are no UTF-8 become U+FFFD.
DomText ToDomText(std::string_view text);

/// The text consists of white space, or of nothing.
bool IsWhiteSpace(std::basic_string_view<XMLCh> text);

}  // namespace tarvex
