/// What a capture says of one message.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// A message has at most so many data bytes.
inline constexpr std::size_t kMaxMessageBytes = 65535;

/// What a telegram carries of a message. The first data byte of a segment is its number.
enum class Telegram : unsigned { Whole = 0, First = 1, Middle = 2, Last = 3 };
inline constexpr unsigned kTelegramEnd = 4;

/// A MOST message as it was captured.
struct CapturedMessage {
    std::uint32_t fBlockID = 0;
    std::uint32_t instID = 0;
    std::uint32_t fktID = 0;
    std::uint32_t opType = 0;
    std::vector<std::uint8_t> data = {};
    /// As the capture writes them; empty where it does not.
    std::string time = {};
    /// The seconds that a time counts in which is a plain number; 0 where the capture does not say.
    double timeUnit = 0;
    std::string direction = {};
    /// Time and direction come from a table or an object, or from quotes, so they may look like anything.
    bool hasFreeTexts = false;
    /// Addresses of devices, of 16 bits.
    std::optional<std::uint32_t> source = {};
    std::optional<std::uint32_t> destination = {};
    Telegram telegram = Telegram::Whole;
    /// Where it begins in the capture, counted from 1; 0 outside of captures.
    std::uint64_t line = 0;
};

/// "22.01.200.C", as messages are written everywhere.
std::string AddressText(const CapturedMessage& message);
/// The same, appended.
void AppendAddress(const CapturedMessage& message, std::string& out);

/// Takes what is read of a capture, in its order.
class MessageSink {
  public:
    MessageSink() = default;
    MessageSink(const MessageSink&) = delete;
    MessageSink& operator=(const MessageSink&) = delete;
    virtual ~MessageSink() = default;

    virtual void TakeMessage(const CapturedMessage& message) = 0;
    /// A message that can't be put together.
    virtual void TakeBroken(const CapturedMessage& message, std::string_view fault) = 0;
    /// A line, or lines from there on, that is no message.
    virtual void TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) = 0;
};

}  // namespace tarvex
