/// The bound that short and classified streams may have.

#pragma once

#include <cstdint>
#include <string>

#include "catalog/import_context.h"
#include "catalog/param.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

/// The stream is as long as its length bytes say.
inline constexpr std::uint32_t kNoMaxLength = 0xFFFFFFFF;

/// The "MaxLength" of a stream element, in bytes; kNoMaxLength where it is missing, empty or not positive,
/// and, with kUnreadable raised by the parameter, where it is no number.
template <const Message& kUnreadable>
std::uint32_t ReadMaxLength(const ZMTParam& param, const Element& stream, ImportContext& context) {
    std::string text;
    GetAttribute(stream, "MaxLength", text);
    std::int32_t value = 0;
    if (!ParseInteger(text, value)) {
        param.Raise<kUnreadable>(context.log, text);
    }
    return value > 0 ? static_cast<std::uint32_t>(value) : kNoMaxLength;
}

}  // namespace tarvex
