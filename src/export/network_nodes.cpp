#include "export/network_nodes.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

namespace tarvex {
namespace {

/// Reads a number at the start of the text, blanks and a sign before it allowed; none if there is no digit.
/// Values beyond 32 bits become the nearest one that fits.
std::optional<std::int32_t> ReadNumber(const char* text, int base) {
    char* end = nullptr;
    const long long value = std::strtoll(text, &end, base);
    if (end == text) {
        return std::nullopt;
    }
    // Hexadecimal numbers fill all 32 bits: 0xFFFFFFFF is -1.
    constexpr long long kMin = std::numeric_limits<std::int32_t>::min();
    const long long max = base == 16 ? static_cast<long long>(std::numeric_limits<std::uint32_t>::max())
                                     : std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::clamp(value, kMin, max)));
}

/// "0x" has to stand at the very start: behind a blank the text is decimal and reads as 0.
std::optional<std::int32_t> ReadAddress(const std::string& text) {
    if (text.starts_with("0x")) {
        if (const auto address = ReadNumber(text.c_str() + 2, 16)) {
            return address;
        }
    }
    return ReadNumber(text.c_str(), 10);
}

}  // namespace

ConfigFile ReadNodeAddresses(const std::string& path, NodeAddresses& nodes) {
    NodeAddresses read;
    bool isCut = false;
    const ConfigFile file = ReadConfigLines(path, [&](std::string_view name, std::string_view value) {
        const std::optional<std::int32_t> address = ReadAddress(std::string(value));
        if (address && (read.size() < kMaxNetworkNodes || read.contains(*address))) {
            read[*address] = name;
        } else {
            isCut = isCut || address.has_value();
        }
    });
    if (file != ConfigFile::Missing) {
        nodes = std::move(read);
    }
    return file == ConfigFile::Whole && isCut ? ConfigFile::Cut : file;
}

}  // namespace tarvex
