#include "disasm/item_list.h"

#include <algorithm>

#include "disasm/wording.h"

namespace tarvex {

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
        Fault(parameter, offset_,
              "needs " + ByteCount(wanted) + ", " + std::to_string(left) +
                  (left == 1 ? " is left" : " are left"));
        return std::nullopt;
    }
    if (!Reserve(parameter, items)) {
        return std::nullopt;
    }
    const auto bytes = message.subspan(offset_, wanted);
    offset_ += wanted;
    return bytes;
}

const ZMostParameter* ZMostParameterListBaseInfo::Find(const ZMTNode& parameter) const {
    const auto found = std::find_if(items_.rbegin(), items_.rend(),
                                    [&](const auto& item) { return &item->Parameter() == &parameter; });
    return found == items_.rend() ? nullptr : found->get();
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

}  // namespace tarvex
