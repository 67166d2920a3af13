/// The parts of a page that are the same for every catalog.

#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarvex::page {

/// The files of src/page/web as the build has put them into the program.
extern const std::string_view kPageHtml;
extern const std::string_view kPageStyle;
extern const std::span<const std::string_view> kPageScripts;

/// Everything in front of the data. Scripts and styles of the page alone are allowed, by their hashes, and no
/// request at all. `title`: any text.
std::string PageHead(std::string_view title);

/// Everything behind the data: the script and the end.
std::string PageEnd();

}  // namespace tarvex::page
