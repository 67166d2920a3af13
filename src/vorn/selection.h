/// Which messages of a database are meant.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

/// What a message has to be. Of several texts for one property one is enough; a property without any asks for
/// nothing. Texts are patterns as the shell has them ("*", "?" and "[abc]"), in any case.
struct Selection {
    /// Names, identifiers (hexadecimal with "0x", or decimal) or addresses: "22.402.C", or with an instance,
    /// which is ignored, "22.01.402.C". Each part of an address is a pattern, too.
    std::vector<std::string> messages = {};
    /// The names that attributes have, or the numbers in the address, hexadecimal with "0x".
    std::vector<std::string> fblocks = {};
    std::vector<std::string> functions = {};
    std::vector<std::string> opTypes = {};
    /// Names of nodes.
    std::vector<std::string> nodes = {};

    bool IsEmpty() const {
        return messages.empty() && fblocks.empty() && functions.empty() && opTypes.empty() && nodes.empty();
    }
};

/// The messages that are all of this, in the order of the database.
std::vector<const kestrel::Message*> Select(const kestrel::Database& database, const Selection& selection);

/// For each text of the selection that no message answers to, whatever the others ask for: that there is
/// none, and the three nearest that some have. Sentences without their ends.
std::vector<std::string> Unanswered(const kestrel::Database& database, const Selection& selection);

}  // namespace vorn
