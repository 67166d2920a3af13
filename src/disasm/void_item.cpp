#include "disasm/void_item.h"

#include "disasm/item_list.h"

namespace tarvex {

bool ZMostParameterListBaseInfo::Decode(const ZMTParamVoid& voidParam, Bytes message) {
    return TakeItem<ZMostParameterVoid>(*this, voidParam, 0, message);
}

}  // namespace tarvex
