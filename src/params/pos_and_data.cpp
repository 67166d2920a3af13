#include "params/pos_and_data.h"

#include "import/names.h"
#include "params/selector.h"

namespace tarvex {

bool HasCoordinates(const ZMTParam& param) {
    return param.IsType(kParamNumber) && NamesEqual(param.GetName(), kPosName) &&
           param.GetBytesInMsg() == kPosBytes;
}

const ZMTParam* AsSelector(const ZMTNode* node) {
    return dynamic_cast<const ZMTSelector*>(node) == nullptr ? nullptr : dynamic_cast<const ZMTParam*>(node);
}

std::optional<const ZMTParam*> FindSelector(const ZMTParam& param) {
    const ZMTNode* parent = param.GetParent();
    if (NamesEqual(param.GetName(), kDataName)) {
        const ZMTNode* pos = parent == nullptr ? nullptr : parent->FindChild(kPosName);
        if (pos == nullptr) {
            return std::nullopt;
        }
        return AsSelector(pos);
    }
    const bool isInContainer =
        parent != nullptr && (parent->IsType(kParamArray) || parent->IsType(kParamRecord));
    return isInContainer ? static_cast<const ZMTParam*>(parent) : nullptr;
}

std::string SelectorName(const ZMTParam* selector) {
    return selector == nullptr ? std::string() : selector->GetName();
}

}  // namespace tarvex
