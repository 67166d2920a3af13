#include "params/pos_and_data.h"

#include <algorithm>

#include "import/text/names.h"
#include "params/record.h"
#include "params/selector.h"

namespace tarvex {

bool HasCoordinates(const ZMTParam& param) {
    return param.IsType(kParamNumber) && NamesEqual(param.GetName(), kPosName) &&
           param.GetBytesInMsg() == kPosBytes;
}

bool IsPositionRecord(const ZMTParam& param) {
    if (!param.IsType(kParamRecord) || !NamesEqual(param.GetName(), kPosName)) {
        return false;
    }
    const auto& record = static_cast<const ZMTParamRecord&>(param);
    constexpr unsigned kCoordinates = 2;
    return record.Count() == kCoordinates && std::ranges::all_of(record.Items(), [](const ZMTParam& field) {
               return field.GetBytesInMsg() == 1 && (field.IsType(kParamNumber) || field.IsType(kParamEnum));
           });
}

bool IsContainer(const ZMTNode& node) {
    return node.IsType(kParamArray) || node.IsType(kParamRecord);
}

const ZMTParam* AsSelector(const ZMTNode* node) {
    const bool canSelect = node != nullptr && CanSelect(static_cast<ParamKind>(node->GetType()));
    return canSelect ? static_cast<const ZMTParam*>(node) : nullptr;
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
    return parent != nullptr && IsContainer(*parent) ? static_cast<const ZMTParam*>(parent) : nullptr;
}

std::string SelectorName(const ZMTParam* selector) {
    return selector == nullptr ? std::string() : selector->GetName();
}

}  // namespace tarvex
