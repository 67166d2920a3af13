#include "disasm/void_item.h"

#include "disasm/item_list.h"

namespace tarvex {

bool ZMTParamVoid::Disassemble(ZMostParameterListBaseInfo& info,
                               std::span<const std::uint8_t> /*message*/) const {
    const std::size_t offset = info.Offset();
    if (!info.Reserve(*this)) {
        return false;
    }
    info.Append(std::make_unique<ZMostParameterVoid>(*this, offset));
    return true;
}

}  // namespace tarvex
