/// Lines that become messages.

#pragma once

#include <string>
#include <string_view>

#include "asm/assembler.h"
#include "disasm/decoding.h"

namespace tarvex::test {

/// What lines come to: "22.01.400.C (01 02)" and the like, with a line feed each; of a line that is wrong
/// "!LINE:COLUMN: what".
std::string Assembled(const ZMTCatalog& catalog, std::string_view lines, bool isForced = false);

}  // namespace tarvex::test
