/// Messages that a capture has in segments.

#pragma once

#include <deque>
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
/// the time and the line of its first. A message that can't be joined is told once; a segment that comes
/// again is told and left out.
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
    /// When something was met: counted in messages of the capture, and its time.
    struct Moment {
        std::uint64_t taken = 0;
        std::optional<double> time;
    };
    /// A segment of an open message: where its bytes are.
    struct Part {
        std::uint8_t number = 0;
        std::size_t begin = 0;
        std::size_t size = 0;
        std::uint64_t line = 0;
    };
    struct Open {
        CapturedMessage message;
        Part first;
        std::deque<Part> parts;  // the last few
        Moment last;
        /// A segment like the first, that came behind others: it comes again, or begins the next message.
        std::optional<CapturedMessage> again;
    };
    /// A message that was told, or joined, for what may still come of it.
    struct Past {
        bool isJoined = false;
        bool isEnded = false;
        std::uint8_t number = 0;         // of its last segment
        std::vector<std::uint8_t> data;  // of that segment
        std::uint64_t line = 0;
        Moment last;
    };
    using OpenMessages = std::map<Key, Open>;

    Moment MomentOf(const CapturedMessage& message) const;
    bool IsOld(const Moment& last, const Moment& now) const;
    void Begin(const Key& key, const CapturedMessage& segment);
    void TakeFirst(const Key& key, const CapturedMessage& segment);
    void GoOn(OpenMessages::iterator found, const CapturedMessage& segment);
    void GoOnBehind(const Key& key, Past& past, const CapturedMessage& segment);
    static bool IsPart(const Open& open, const Part& part, const CapturedMessage& segment);
    static const Part* FindPart(const Open& open, const CapturedMessage& segment);
    void Append(Open& open, const CapturedMessage& segment);
    void TellTwice(const CapturedMessage& segment, std::uint64_t line);
    void TellForeign(const Key& key, const CapturedMessage& segment);
    void GiveUp(OpenMessages::iterator found, const std::string& why);
    void GiveUpOld(const CapturedMessage& now);
    void GiveUpOldest();
    void Remember(const Key& key, const CapturedMessage& segment, bool isJoined);
    Past& MakePast(const Key& key);

    MessageSink& sink_;
    SegmentBounds bounds_;
    OpenMessages open_;
    std::map<Key, Past> past_;
    std::size_t bytes_ = 0;  // of all that is open
    std::uint64_t taken_ = 0;
};

}  // namespace tarvex
