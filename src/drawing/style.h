/// Colours for terminals.

#pragma once

#include <string>
#include <string_view>

namespace vorn {

enum class Colour { Added, Removed, Changed, Heading, Faint };

/// Marks texts with colours, or leaves them as they are.
class Style {
  public:
    explicit Style(bool isColoured) : isColoured_(isColoured) {}
    /// Coloured if standard output is a terminal and the user has not asked for none (NO_COLOR, TERM=dumb).
    static Style OfStandardOutput();

    std::string operator()(Colour colour, std::string_view text) const;

  private:
    bool isColoured_;
};

}  // namespace vorn
