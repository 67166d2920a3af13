/// The bound that short and classified streams may have.

#pragma once

#include <cstdint>

namespace tarvex {

class ZMTParam;
struct Element;
struct ImportContext;

/// The stream is as long as its length bytes say.
inline constexpr std::uint32_t kNoMaxLength = 0xFFFFFFFF;

/// The "MaxLength" of a stream element, in bytes; kNoMaxLength where it is missing, empty or not positive,
/// and, with 203 raised by the parameter, where it is no number.
std::uint32_t ReadMaxLength(const ZMTParam& param, const Element& stream, ImportContext& context);

}  // namespace tarvex
