#include "disasm/record_item.h"

#include <algorithm>

#include "disasm/coordinates.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

bool IsContainerAt(const ZMTParamRecord& record, unsigned pos) {
    const ZMTParam* field = record.GetAt(pos);
    return field != nullptr && IsContainer(*field);
}

/// Which field the coordinates name, and which of its members. A record is no list of entries: one coordinate
/// alone names the field, whichever it is, and with both the first one does if its field is an array or
/// record.
Coordinates FieldCoordinates(const ZMTParamRecord& record, Coordinates given) {
    if (given.y == 0 || (given.x != 0 && IsContainerAt(record, given.x))) {
        return given;
    }
    return {given.y, 0};
}

bool ReadFields(const ZMTParamRecord& record, ZMostParameterListBaseInfo& fields,
                std::span<const std::uint8_t> message) {
    return std::ranges::all_of(record.Items(),
                               [&](const ZMTParam& field) { return field.Disassemble(fields, message); });
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamRecord& record, Bytes message) {
    if (!Reserve(record)) {
        return false;
    }
    const auto [field, member] = FieldCoordinates(record, CoordinatesOf(record, record.Selector(), *this));
    auto item = std::make_unique<ZMostParameterRecord>(record, *this);
    bool isGood = true;
    if (field == 0) {
        isGood = ReadFields(record, item->Members(), message);
    } else if (const ZMTParam* only = record.GetAt(field)) {
        item->Members().SetMemberNumber(member);
        isGood = only->Disassemble(item->Members(), message);
    } else {
        isGood = Fault(record, Offset(), "has no field " + std::to_string(field));
    }
    return ContainerItem::Finish(std::move(item), isGood, *this, message);
}

}  // namespace tarvex
