/// Colours for terminals.

#pragma once

#include <string>
#include <string_view>

namespace vorn {

enum class Colour { Added, Removed, Changed, Heading, Faint, Error, Warning };

/// When a program colours what it tells.
enum class Colouring { Auto, Always, Never };

/// Marks texts with colours, or leaves them as they are.
class Style {
  public:
    explicit Style(bool isColoured) : isColoured_(isColoured) {}
    /// If that is left to it, coloured if standard output is a terminal and the user has not asked for none
    /// (NO_COLOR, TERM=dumb).
    static Style OfStandardOutput(Colouring colouring = Colouring::Auto);

    std::string operator()(Colour colour, std::string_view text) const;

  private:
    bool isColoured_;
};

}  // namespace vorn
