#include "review/diff_function.h"

#include <utility>

namespace tarvex::review {

namespace {

/// Equal for changes that say the same, wherever they stand.
std::string ContentOf(const Change& change) {
    std::string content;
    for (const std::string_view part :
         {KindName(change.kind), ObjectName(change.object), AspectName(change.aspect),
          std::string_view(change.path), std::string_view(change.item), std::string_view(change.before),
          std::string_view(change.after)}) {
        content.append(part).push_back('\n');  // which none of the parts has
    }
    return content;
}

}  // namespace

bool FunctionChanges::IsWanted(const Change& change) const {
    return !options_.areBytesOnly || change.effect == Effect::Bytes;
}

void FunctionChanges::BeginOperation(unsigned opType) {
    operation_ = static_cast<std::uint16_t>(1U << opType);
    counts_.clear();
    hasChanged_ = false;
    haveBytesChanged_ = false;
    lossesTold_.clear();
    partners_.clear();
}

bool FunctionChanges::BelongTogether(const ZMTParam& before, const ZMTParam& after) const {
    const auto found = partners_.find(&before);
    return found == partners_.end() ? before.GetName() == after.GetName() : found->second == &after;
}

/// The second of two parameters of one name that change alike is not the first one in another operation.
void FunctionChanges::AddOfParameter(Change change, const Origin& origin) {
    hasChanged_ = true;
    haveBytesChanged_ |= change.effect == Effect::Bytes;
    if (change.lostBy != 0) {
        lossesTold_.insert(change.lostBy);
    }
    if (!IsWanted(change)) {
        return;
    }
    std::string content = ContentOf(change);
    content += std::to_string(counts_[content]++);
    const auto [place, isNew] = places_.try_emplace(content, all_.size());
    if (isNew) {
        all_.push_back({std::move(change), origin, operation_, std::move(content)});
    } else {
        all_[place->second].operations |= operation_;
    }
}

void FunctionChanges::Add(Change change, const Origin& origin) {
    if (IsWanted(change)) {
        std::string content = ContentOf(change);
        all_.push_back({std::move(change), origin, 0, std::move(content)});
    }
}

std::vector<FunctionChange> FunctionChanges::Take() {
    places_.clear();
    counts_.clear();
    return std::exchange(all_, {});
}

}  // namespace tarvex::review
