#include "capture/segment_joiner.h"

#include <algorithm>
#include <span>

#include "capture/line_prefix.h"

namespace tarvex {
namespace {

/// Stands for a capture that tells no source.
constexpr std::uint32_t kNoSource = 0xFFFFFFFF;

std::string InLine(std::uint64_t line) {
    return "in line " + std::to_string(line);
}

}  // namespace

void SegmentJoiner::TakeBroken(const CapturedMessage& message, std::string_view fault) {
    sink_.TakeBroken(message, fault);
}

void SegmentJoiner::TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) {
    sink_.TakeUnreadable(line, text, fault);
}

void SegmentJoiner::TakeMessage(const CapturedMessage& message) {
    ++taken_;
    if (!open_.empty()) {
        GiveUpOld(message);
    }
    if (message.telegram == Telegram::Whole) {
        sink_.TakeMessage(message);
        return;
    }
    if (message.data.empty()) {
        sink_.TakeBroken(message, "the segment has no number");
        return;
    }
    const Key key = {message.source.value_or(kNoSource), message.fBlockID << 8 | message.instID,
                     message.fktID << 4 | message.opType};
    const auto open = open_.find(key);
    if (message.telegram == Telegram::First) {
        if (open == open_.end()) {
            Begin(key, message);
        } else if (open->second.isBroken) {
            Close(open);
            Begin(key, message);
        } else if (IsDoubled(open->second, message)) {
            sink_.TakeBroken(message, "the segment stands twice, first " + InLine(open->second.lastLine));
        } else {
            GiveUp(open, "has no last segment, another one begins " + InLine(message.line));
            Close(open_.find(key));
            Begin(key, message);
        }
    } else if (open == open_.end()) {
        TellForeign(key, message);
    } else {
        GoOn(open, message);
    }
    while (bytes_ > bounds_.bytes) {
        GiveUpOldest();
    }
}

void SegmentJoiner::Begin(const Key& key, const CapturedMessage& segment) {
    while (open_.size() >= bounds_.messages) {
        GiveUpOldest();
    }
    Open& open = open_[key];
    open.message = segment;
    open.message.telegram = Telegram::Whole;
    open.message.data.clear();
    Append(open, segment);
}

/// A middle or last segment of a message that is open.
void SegmentJoiner::GoOn(OpenMessages::iterator found, const CapturedMessage& segment) {
    Open& open = found->second;
    const bool isLast = segment.telegram == Telegram::Last;
    if (open.isBroken) {
        open.lastTaken = taken_;
        open.lastTime = SecondsOf(segment.time);
    } else if (IsDoubled(open, segment)) {
        sink_.TakeBroken(segment, "the segment stands twice, first " + InLine(open.lastLine));
        return;
    } else if (segment.data[0] != static_cast<std::uint8_t>(open.number + 1)) {
        GiveUp(found, "lacks segments: " + std::to_string(segment.data[0]) + " comes " +
                          InLine(segment.line) + ", behind " + std::to_string(open.number));
    } else if (open.message.data.size() + segment.data.size() - 1 > kMaxMessageBytes) {
        GiveUp(found, "is too long");
    } else {
        Append(open, segment);
        if (isLast) {
            const CapturedMessage whole = std::move(open.message);
            bytes_ -= whole.data.size();
            open_.erase(found);
            sink_.TakeMessage(whole);
            return;
        }
    }
    if (isLast) {
        Close(found);
    }
}

/// A segment that comes again as it was.
bool SegmentJoiner::IsDoubled(const Open& open, const CapturedMessage& segment) const {
    const auto last = std::span(open.message.data).last(open.lastBytes);
    return segment.data[0] == open.number && std::ranges::equal(std::span(segment.data).subspan(1), last);
}

void SegmentJoiner::Append(Open& open, const CapturedMessage& segment) {
    open.message.data.insert(open.message.data.end(), segment.data.begin() + 1, segment.data.end());
    open.number = segment.data[0];
    open.lastBytes = segment.data.size() - 1;
    open.lastLine = segment.line;
    open.lastTaken = taken_;
    open.lastTime = SecondsOf(segment.time);
    bytes_ += open.lastBytes;
}

/// Tells that a message can't be joined. What else comes of it is passed over.
void SegmentJoiner::GiveUp(OpenMessages::iterator found, const std::string& why) {
    Open& open = found->second;
    sink_.TakeBroken(open.message, "the message " + why);
    bytes_ -= open.message.data.size();
    open.message.data = {};
    open.lastBytes = 0;
    open.isBroken = true;
}

void SegmentJoiner::Close(OpenMessages::iterator open) {
    bytes_ -= open->second.message.data.size();
    open_.erase(open);
}

void SegmentJoiner::TellForeign(const Key& key, const CapturedMessage& segment) {
    sink_.TakeBroken(segment, "the segment belongs to no message: none of its source and operation is open");
    if (segment.telegram == Telegram::Middle) {
        Begin(key, segment);
        Open& open = open_[key];
        bytes_ -= open.message.data.size();
        open.message.data = {};
        open.lastBytes = 0;
        open.isBroken = true;
    }
}

void SegmentJoiner::GiveUpOld(const CapturedMessage& now) {
    const auto time = SecondsOf(now.time);
    for (auto open = open_.begin(); open != open_.end();) {
        const Open& one = open->second;
        const bool hasTimes = time && one.lastTime;
        const bool isOld =
            hasTimes ? *time - *one.lastTime > bounds_.seconds : taken_ - one.lastTaken > bounds_.age;
        const auto next = std::next(open);
        if (isOld) {
            if (!one.isBroken) {
                GiveUp(open, "has no last segment within the time for it");
            }
            Close(open);
        }
        open = next;
    }
}

void SegmentJoiner::GiveUpOldest() {
    const auto oldest =
        std::ranges::min_element(open_, {}, [](const auto& open) { return open.second.lastTaken; });
    if (!oldest->second.isBroken) {
        GiveUp(oldest, "is given up, as too many are open");
    }
    Close(oldest);
}

void SegmentJoiner::Finish() {
    while (!open_.empty()) {
        const auto first =
            std::ranges::min_element(open_, {}, [](const auto& open) { return open.second.message.line; });
        if (!first->second.isBroken) {
            GiveUp(first, "has no last segment");
        }
        Close(first);
    }
}

}  // namespace tarvex
