#include "disasm/container_item.h"

namespace tarvex {

bool ContainerItem::Finish(std::unique_ptr<ContainerItem> item, bool isGood, ZMostParameterListBaseInfo& info,
                           std::span<const std::uint8_t> message) {
    if (!isGood && item->members_.Items().empty()) {
        return false;
    }
    const std::size_t end = item->members_.Offset();
    item->SetBytes(message.subspan(item->Offset(), end - item->Offset()));
    info.SetOffset(end);
    info.Append(std::move(item));
    return isGood;
}

}  // namespace tarvex
