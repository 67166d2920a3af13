#include "catalog/hole.h"

namespace tarvex {
namespace {

std::string AtPosition(const Hole& hole) {
    return hole.position ? "at position " + std::to_string(*hole.position) : "at an unknown position";
}

std::string What(const Hole& hole) {
    switch (hole.cause) {
        case HoleCause::Lost:
            return "the parameter " + AtPosition(hole) + " could not be imported";
        case HoleCause::NamedTwice:
            return "the parameter " + AtPosition(hole) +
                   " could not be imported (it names the operation twice)";
        case HoleCause::Gap:
            return "there is no parameter " + AtPosition(hole);
        case HoleCause::NoSize:
            return "has a type without a size";
        case HoleCause::CodeUnread:
            return "has no sure size, as a code could not be read";
        case HoleCause::FieldCount:
            return "has another number of fields than it says";
        case HoleCause::MemberFailed:
            return "could not keep what stands " + AtPosition(hole);
        case HoleCause::MemberTwice:
            return "has two things " + AtPosition(hole);
        case HoleCause::CaseLost:
            return "has no case that fits, and one that could not be imported";
    }
    return {};
}

}  // namespace

std::string HoleText(const Hole& hole) {
    return What(hole) +
           (hole.message != 0 ? " (message " + std::to_string(hole.message) + ")" : std::string());
}

Losses& Losses::operator=(const Losses& other) {
    if (this != &other) {
        map_ = other.map_ ? std::make_unique<Map>(*other.map_) : nullptr;
    }
    return *this;
}

bool Losses::Note(unsigned opType, const Hole& hole) {
    if (!map_) {
        map_ = std::make_unique<Map>();
    }
    const int position = hole.position ? static_cast<int>(*hole.position) : kUnknownPosition;
    return map_->try_emplace({opType, position}, hole).second;
}

const Hole* Losses::FirstOf(unsigned opType) const {
    const auto found = All().lower_bound({opType, kUnknownPosition});
    return found != All().end() && found->first.first == opType ? &found->second : nullptr;
}

const Losses::Map& Losses::All() const {
    static const Map empty;
    return map_ ? *map_ : empty;
}

}  // namespace tarvex
