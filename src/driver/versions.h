#pragma once

namespace tarvex {

inline constexpr const char* kProgramVersion = "1.0.4";

}  // namespace tarvex
