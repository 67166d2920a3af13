/// Texts from files as they are shown to people.

#pragma once

#include <string>
#include <string_view>

namespace tarvex {

/// A text for a terminal: control characters, which a terminal might obey, marks that turn text around, and
/// bytes that are no UTF-8 become ".".
std::string Shown(std::string_view text);

/// The same for texts of several lines, in place: tabs and line feeds stay, and so do bytes that are no
/// UTF-8.
void HideControls(std::string& text);

}  // namespace tarvex
