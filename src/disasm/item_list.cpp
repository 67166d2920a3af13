#include "disasm/item_list.h"

#include <algorithm>

#include "import/text/wording.h"

namespace tarvex {
namespace {

std::string NeedsText(std::size_t wanted, std::size_t left) {
    return "needs " + ByteCount(wanted) + ", " + std::to_string(left) +
           (left == 1 ? " is left" : " are left");
}

}  // namespace

bool ZMostParameterListBaseInfo::Reserve(const ZMTNode& parameter, std::size_t items) {
    if (items > kMaxItems - root_->itemCount_) {
        return Fault(parameter, offset_, "comes after too many parameters");
    }
    root_->itemCount_ += items;
    return true;
}

std::optional<std::span<const std::uint8_t>> ZMostParameterListBaseInfo::Take(
    const ZMTNode& parameter, std::int64_t count, std::span<const std::uint8_t> message, std::size_t items) {
    const std::size_t wanted = count > 0 ? static_cast<std::size_t>(count) : 0;
    const std::size_t left = message.size() - std::min(offset_, message.size());
    if (wanted > left) {
        Fault(parameter, offset_, NeedsText(wanted, left));
        return std::nullopt;
    }
    if (!Reserve(parameter, items)) {
        return std::nullopt;
    }
    const auto bytes = message.subspan(offset_, wanted);
    offset_ += wanted;
    return bytes;
}

std::optional<std::int64_t> ZMostParameterListBaseInfo::PeekLength(const ZMTNode& parameter,
                                                                   std::size_t lengthBytes,
                                                                   std::uint32_t most,
                                                                   std::span<const std::uint8_t> message) {
    const auto left = message.subspan(std::min(offset_, message.size()));
    std::size_t length = 0;
    for (const std::uint8_t byte : left.first(std::min(lengthBytes, left.size()))) {
        length = length << 8U | byte;
    }
    if (left.size() < lengthBytes + (left.size() < lengthBytes ? 0 : length)) {
        Fault(parameter, offset_,
              NeedsText(left.size() < lengthBytes ? lengthBytes : lengthBytes + length, left.size()));
        return std::nullopt;
    }
    if (length > most) {
        Fault(parameter, offset_,
              "has " + ByteCount(length) + ", the catalog allows " + std::to_string(most));
    }
    return static_cast<std::int64_t>(lengthBytes + length);
}

const ZMostParameter* ZMostParameterListBaseInfo::Find(const ZMTNode& parameter) const {
    const ZMostParameterListBaseInfo* list = this;
    while (list != nullptr &&
           (list->items_.empty() || list->items_.front()->Parameter().GetParent() != parameter.GetParent())) {
        list = list->outer_;
    }
    return list == nullptr ? nullptr : list->FindHere(parameter);
}

const ZMostParameter* ZMostParameterListBaseInfo::FindHere(const ZMTNode& parameter) const {
    const std::span all(items_);
    for (const auto& items : {all.subspan(repetition_), all.first(onceCount_)}) {
        const auto found = std::find_if(items.rbegin(), items.rend(),
                                        [&](const auto& item) { return &item->Parameter() == &parameter; });
        if (found != items.rend()) {
            return found->get();
        }
    }
    return nullptr;
}

bool ZMostParameterListBaseInfo::Fault(const ZMTNode& parameter, std::size_t offset,
                                       const std::string& what) {
    const ZMTNode* named = &parameter;
    while (named->GetName().empty() && named->GetParent() != nullptr) {
        named = named->GetParent();
    }
    root_->faults_.push_back({ShownName(named->GetName()) + " " + what, offset});
    return false;
}

bool ZMostParameterListBaseInfo::FaultAtHole(const ZMTNode& parameter, std::size_t offset, const Hole& hole) {
    Fault(parameter, offset, HoleText(hole));
    root_->faults_.back().isHole = true;
    return false;
}

}  // namespace tarvex
