/// The types that a number is made of.

#pragma once

#include <iterator>

namespace tarvex {

/// The elements that name the basis type of a number, in the order in which they are looked for.
inline constexpr const char* kBasisTypes[] = {"TVoid",  "TUByte", "TSByte", "TUWord",
                                              "TSWord", "TULong", "TSLong"};
static_assert(std::size(kBasisTypes) == 7);

}  // namespace tarvex
