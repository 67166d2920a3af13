/// From the bytes of a message to names and values, with a catalog.

#pragma once

#include <string>
#include <vector>

#include "capture/captured_message.h"
#include "catalog/catalog.h"
#include "disasm/item_list.h"

namespace tarvex {

/// What a catalog makes of one message.
struct DecodedMessage {
    /// Null where the catalog does not know the identifier.
    const ZMTFBlock* block = nullptr;
    const ZMTFunction* function = nullptr;
    const ZMTOperation* operation = nullptr;
    /// A copy of the bytes, which the items point into.
    std::vector<std::uint8_t> data;
    /// The parameters as far as they could be read.
    ZMostParameterListBaseInfo items;
    /// What does not fit, in words; empty for a message as described.
    std::vector<std::string> faults;
};

/// Decodes a message with the catalog's description of its operation. `out` is a fresh object.
void DecodeMessage(const ZMTCatalog& catalog, const CapturedMessage& message, DecodedMessage& out);

}  // namespace tarvex
