#include "disasm/record_item.h"

#include "disasm/coordinates.h"

namespace tarvex {
namespace {

bool IsContainer(const ZMTParam* param) {
    return param != nullptr && (param->IsType(kParamArray) || param->IsType(kParamRecord));
}

/// Which field the coordinates name, and which of its members. A record is no list of entries: one coordinate
/// alone names the field, whichever it is, and with both the first one does if its field is an array or
/// record.
Coordinates FieldCoordinates(const ZMTParamRecord& record, Coordinates given) {
    if (given.y == 0 || (given.x != 0 && IsContainer(record.GetAt(given.x)))) {
        return given;
    }
    return {given.y, 0};
}

bool ReadFields(const ZMTParamRecord& record, ZMostParameterListBaseInfo& fields,
                std::span<const std::uint8_t> message) {
    for (const ZMTParam* field : record.GetItems(false)) {
        if (!field->Disassemble(fields, message)) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool ZMTParamRecord::Disassemble(ZMostParameterListBaseInfo& info,
                                 std::span<const std::uint8_t> bytes) const {
    if (!info.Reserve(*this)) {
        return false;
    }
    const auto [field, member] = FieldCoordinates(*this, CoordinatesOf(*this, selector_, info));
    auto item = std::make_unique<ZMostParameterRecord>(*this, info);
    bool isGood = true;
    if (field == 0) {
        isGood = ReadFields(*this, item->Members(), bytes);
    } else if (const ZMTParam* only = GetAt(field)) {
        item->Members().SetMemberNumber(member);
        isGood = only->Disassemble(item->Members(), bytes);
    } else {
        isGood = info.Fault(*this, info.Offset(), "has no field " + std::to_string(field));
    }
    return ContainerItem::Finish(std::move(item), isGood, info, bytes);
}

}  // namespace tarvex
