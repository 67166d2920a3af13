#include "capture/segment_joiner.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

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
    if (message.telegram == Telegram::First) {
        TakeFirst(key, message);
    } else if (const auto open = open_.find(key); open != open_.end()) {
        GoOn(open, message);
    } else if (const auto past = past_.find(key); past != past_.end()) {
        GoOnBehind(key, past->second, message);
    } else {
        TellForeign(key, message);
    }
    while (bytes_ > bounds_.bytes) {
        GiveUpOldest();
    }
}

SegmentJoiner::Moment SegmentJoiner::MomentOf(const CapturedMessage& message) const {
    return {taken_, SecondsOf(message.time, message.timeUnit)};
}

bool SegmentJoiner::IsOld(const Moment& last, const Moment& now) const {
    return now.time && last.time ? *now.time - *last.time > bounds_.seconds
                                 : now.taken - last.taken > bounds_.age;
}

void SegmentJoiner::TakeFirst(const Key& key, const CapturedMessage& segment) {
    const auto found = open_.find(key);
    if (found == open_.end()) {
        Begin(key, segment);
        return;
    }
    Open& open = found->second;
    if (!IsPart(open, open.first, segment) || open.again) {
        GiveUp(found, "has no last segment, another one begins " + InLine(segment.line));
        Begin(key, segment);
    } else if (open.parts.size() == 1) {
        TellTwice(segment, open.first.line);
    } else {
        open.again = segment;
    }
}

void SegmentJoiner::Begin(const Key& key, const CapturedMessage& segment) {
    while (open_.size() >= bounds_.messages) {
        GiveUpOldest();
    }
    past_.erase(key);
    Open& open = open_[key];
    open.message = segment;
    open.message.telegram = Telegram::Whole;
    open.message.data.clear();
    Append(open, segment);
    open.first = open.parts.front();
}

/// A middle or last segment of a message that is open.
void SegmentJoiner::GoOn(OpenMessages::iterator found, const CapturedMessage& segment) {
    Open& open = found->second;
    const Key key = found->first;
    const std::uint8_t number = open.parts.back().number;
    const auto step = static_cast<std::uint8_t>(segment.data[0] - number);
    if (open.again) {
        const CapturedMessage again = *std::exchange(open.again, std::nullopt);
        if (step == 1) {
            TellTwice(again, open.first.line);
        } else {
            GiveUp(found, "has no last segment, another one begins " + InLine(again.line));
            Begin(key, again);
            GoOn(open_.find(key), segment);
            return;
        }
    }
    if (const Part* part = FindPart(open, segment)) {
        TellTwice(segment, part->line);
    } else if (step != 1) {
        GiveUp(found, "lacks segments: " + std::to_string(segment.data[0]) + " comes " +
                          InLine(segment.line) + ", behind " + std::to_string(number));
        GoOnBehind(key, past_[key], segment);
    } else if (open.message.data.size() + segment.data.size() - 1 > kMaxMessageBytes) {
        GiveUp(found, "is too long");
        Remember(key, segment, false);
    } else {
        Append(open, segment);
        if (segment.telegram == Telegram::Last) {
            const CapturedMessage whole = std::move(open.message);
            bytes_ -= whole.data.size();
            open_.erase(found);
            Remember(key, segment, true);
            sink_.TakeMessage(whole);
        }
    }
}

/// A middle or last segment where no message is open, but one has been.
void SegmentJoiner::GoOnBehind(const Key& key, Past& past, const CapturedMessage& segment) {
    constexpr std::uint8_t kHalf = 0x80;
    const auto step = static_cast<std::uint8_t>(segment.data[0] - past.number);
    const bool isAgain = step == 0 && segment.data == past.data;
    const bool goesOn = !past.isEnded && step != 0 && step < kHalf;
    if (IsOld(past.last, MomentOf(segment)) || (!isAgain && !goesOn)) {  // of another message
        TellForeign(key, segment);
    } else if (goesOn) {
        Remember(key, segment, false);
    } else if (past.isJoined) {
        TellTwice(segment, past.line);
    }
}

bool SegmentJoiner::IsPart(const Open& open, const Part& part, const CapturedMessage& segment) {
    return segment.data[0] == part.number &&
           std::ranges::equal(std::span(segment.data).subspan(1),
                              std::span(open.message.data).subspan(part.begin, part.size));
}

/// The segment that came as this one does; null if there is none among the last ones.
const SegmentJoiner::Part* SegmentJoiner::FindPart(const Open& open, const CapturedMessage& segment) {
    const auto found =
        std::ranges::find_if(open.parts, [&](const Part& part) { return IsPart(open, part, segment); });
    return found == open.parts.end() ? nullptr : &*found;
}

void SegmentJoiner::Append(Open& open, const CapturedMessage& segment) {
    constexpr std::size_t kMostParts = 16;
    std::vector<std::uint8_t>& data = open.message.data;
    if (open.parts.size() == kMostParts) {
        open.parts.pop_front();
    }
    open.parts.push_back({segment.data[0], data.size(), segment.data.size() - 1, segment.line});
    data.insert(data.end(), segment.data.begin() + 1, segment.data.end());
    open.last = MomentOf(segment);
    bytes_ += segment.data.size() - 1;
}

void SegmentJoiner::TellTwice(const CapturedMessage& segment, std::uint64_t line) {
    sink_.TakeBroken(segment, "the segment stands twice, first " + InLine(line));
}

void SegmentJoiner::TellForeign(const Key& key, const CapturedMessage& segment) {
    sink_.TakeBroken(segment, "the segment belongs to no message: none of its source and operation is open");
    Remember(key, segment, false);
}

/// Tells that a message can't be joined. What else comes of it is passed over.
void SegmentJoiner::GiveUp(OpenMessages::iterator found, const std::string& why) {
    const Open open = std::move(found->second);
    const Key key = found->first;
    open_.erase(found);
    bytes_ -= open.message.data.size();
    Past& past = MakePast(key);
    past.number = open.parts.back().number;
    past.last = open.last;
    sink_.TakeBroken(open.message, "the message " + why);
    if (open.again) {
        TellTwice(*open.again, open.first.line);
    }
}

/// What came last of a message that is not open any more.
void SegmentJoiner::Remember(const Key& key, const CapturedMessage& segment, bool isJoined) {
    Past& past = MakePast(key);
    past.isJoined = isJoined;
    past.isEnded = segment.telegram == Telegram::Last;
    past.number = segment.data[0];
    constexpr std::size_t kMostRemembered = 4096;
    if (segment.data.size() <= kMostRemembered) {
        past.data = segment.data;
    }
    past.line = segment.line;
    past.last = MomentOf(segment);
}

SegmentJoiner::Past& SegmentJoiner::MakePast(const Key& key) {
    if (past_.size() >= bounds_.messages && !past_.contains(key)) {
        past_.erase(
            std::ranges::min_element(past_, {}, [](const auto& past) { return past.second.last.taken; }));
    }
    return past_[key] = {};
}

void SegmentJoiner::GiveUpOld(const CapturedMessage& now) {
    const Moment moment = MomentOf(now);
    for (auto open = open_.begin(); open != open_.end();) {
        const auto old = open++;
        if (IsOld(old->second.last, moment)) {
            const Key key = old->first;
            GiveUp(old, "has no last segment within the time for it");
            past_[key].last = moment;
        }
    }
}

void SegmentJoiner::GiveUpOldest() {
    GiveUp(std::ranges::min_element(open_, {}, [](const auto& open) { return open.second.last.taken; }),
           "is given up, as too many are open");
}

void SegmentJoiner::Finish() {
    while (!open_.empty()) {
        GiveUp(std::ranges::min_element(open_, {}, [](const auto& open) { return open.second.message.line; }),
               "has no last segment");
    }
}

}  // namespace tarvex
