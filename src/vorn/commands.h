/// The commands of the program `vorn`.

#pragma once

#include <stdexcept>
#include <string>

#include "drawing/style.h"
#include "vorn/selection.h"

namespace vorn {

/// The exit status: as other programs that compare have it.
enum Status : int { kSame = 0, kDifferent = 1, kTrouble = 2 };

/// Ends the program with a text on standard error.
class Trouble : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What the command line asks for. A command looks at what belongs to it.
struct Arguments {
    std::string database;
    std::string other;
    std::string output;
    Selection selection;
    std::string format = "text";
    Colouring colouring = Colouring::Auto;
    bool withNames = false;
    bool isForced = false;
    bool isExcept = false;
    /// "first", "second" or empty.
    std::string preferred;
};

/// Each command writes to standard output, tells on standard error why it found nothing, and throws `Trouble`
/// where something cannot be done.
Status Show(const Arguments& arguments);
Status List(const Arguments& arguments);
Status Convert(const Arguments& arguments);
Status Diff(const Arguments& arguments);
Status Check(const Arguments& arguments);
Status Subset(const Arguments& arguments);
Status Merge(const Arguments& arguments);

}  // namespace vorn
