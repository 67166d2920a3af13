/// The messages of the importer, by name. For those who raise them; who only handles messages includes
/// message.h.

#pragma once

#include "import/log/message.h"
#include "import/log/texts.h"

namespace tarvex {

#define MESSAGE(name, number, kind, text) \
    inline constexpr Message name{number, Kind::kind, TextOf(Text::text)};
#include "import/log/messages.def"
#undef MESSAGE

/// All of them, in the order of their declaration.
inline constexpr const Message* kMessages[] = {
#define MESSAGE(name, number, kind, text) &(name),
#include "import/log/messages.def"
#undef MESSAGE
};

}  // namespace tarvex
