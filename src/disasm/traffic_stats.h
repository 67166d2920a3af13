/// How much of what a capture has.

#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "disasm/decoded_message.h"

namespace tarvex {

/// How tables are written.
enum class StatsFormat : unsigned { Text, Json, Csv };

/// Counts messages by their address.
class TrafficStats {
  public:
    /// So many addresses are told apart; the messages of all others are counted together.
    static constexpr std::size_t kMaxAddresses = 65536;

    void Add(const CapturedMessage& message, const DecodedMessage& decoded);
    /// Appends a line for each address in their order, with the time of its first and of its last message.
    void Append(StatsFormat format, std::string& out) const;

  private:
    struct Row {
        std::uint64_t messages = 0;
        std::uint64_t faulty = 0;
        std::string first = {};
        std::string last = {};
        const ZMTFBlock* block = nullptr;
        const ZMTFunction* function = nullptr;
        const ZMTOperation* operation = nullptr;
    };
    using Address = std::array<std::uint32_t, 4>;

    static void AppendRow(StatsFormat format, const std::string& address, const Row& row, std::string& out);

    std::map<Address, Row> rows_;
    Row others_;
};

}  // namespace tarvex
