/// Messages that a capture has in segments.

#pragma once

#include <map>
#include <optional>
#include <tuple>

#include "capture/captured_message.h"

namespace tarvex {

/// What may be open at once. Messages beyond it, the oldest first, are given up.
struct SegmentBounds {
    std::size_t messages = 256;
    std::size_t bytes = std::size_t{4} << 20;
    /// In seconds, between one segment and the next, where the capture has times ...
    double seconds = 5;
    /// ... and in messages of the capture where it has none.
    std::uint64_t age = 100'000;
};

/// Joins the segments of each message, which have its source, address and operation in common and are
/// numbered by their first byte. Whole messages go through. A message comes when its last segment does, with
/// the time and the line of its first. A message that can't be joined is told once.
class SegmentJoiner : public MessageSink {
  public:
    /// The sink outlives this object.
    explicit SegmentJoiner(MessageSink& sink, const SegmentBounds& bounds = {})
        : sink_(sink), bounds_(bounds) {}

    void TakeMessage(const CapturedMessage& message) override;
    void TakeBroken(const CapturedMessage& message, std::string_view fault) override;
    void TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) override;
    /// The capture ends: what is open is given up.
    void Finish();

  private:
    /// Source, block with instance, function with operation.
    using Key = std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>;
    struct Open {
        CapturedMessage message;
        std::uint8_t number = 0;    // of the last segment
        std::size_t lastBytes = 0;  // that it has brought
        std::uint64_t lastLine = 0;
        std::uint64_t lastTaken = 0;  // counted in messages of the capture
        std::optional<double> lastTime;
        bool isBroken = false;  // it was told, and what else comes of it is not
    };
    using OpenMessages = std::map<Key, Open>;

    void Begin(const Key& key, const CapturedMessage& segment);
    void GoOn(OpenMessages::iterator found, const CapturedMessage& segment);
    bool IsDoubled(const Open& open, const CapturedMessage& segment) const;
    void Append(Open& open, const CapturedMessage& segment);
    void GiveUp(OpenMessages::iterator found, const std::string& why);
    void GiveUpOld(const CapturedMessage& now);
    void GiveUpOldest();
    void Close(OpenMessages::iterator open);
    void TellForeign(const Key& key, const CapturedMessage& segment);

    MessageSink& sink_;
    SegmentBounds bounds_;
    OpenMessages open_;
    std::size_t bytes_ = 0;  // of all that is open
    std::uint64_t taken_ = 0;
};

}  // namespace tarvex
