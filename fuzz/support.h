#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarvex::fuzz {

/// Ends the process when something does not hold, so that libFuzzer keeps the input as a finding.
void Require(bool holds, std::string_view what);

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// The path of a file in a directory of the process, which is deleted at the end of the run.
std::string ScratchFile(std::string_view name);

void WriteFile(const std::string& path, std::string_view content);
/// The bytes of a file that has to be there.
std::string ReadFile(const std::string& path);

/// Settings that an input chooses by its own bytes, so that it does the same in every run.
class Draw {
  public:
    explicit Draw(std::string_view input);
    /// From 0 to `end` - 1.
    unsigned Below(unsigned end);
    bool Flag() { return Below(2) == 1; }

  private:
    std::uint64_t state_;
};

}  // namespace tarvex::fuzz
