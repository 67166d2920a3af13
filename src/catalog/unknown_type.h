/// The element at fault where a parameter's type is not known.

#pragma once

namespace tarvex {

struct Element;

/// The element that should have given the type of a parameter, array, field or stream parameter and is none
/// that can be read; what should have held it where there is none.
const Element& FindUnknownType(const Element& element);

}  // namespace tarvex
