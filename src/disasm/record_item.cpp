#include "disasm/record_item.h"

#include "disasm/coordinates.h"
#include "params/layout.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

bool IsContainerAt(const ZMTParamRecord& record, unsigned pos) {
    const ZMTParam* field = record.GetAt(pos);
    return field != nullptr && IsContainer(*field);
}

/// The only field of the record that stands in the message is not in the tree: it was lost, or the catalog
/// says that there are more fields than it has. Always false.
bool FaultWithoutField(const ZMTParamRecord& record, unsigned field, ZMostParameterListBaseInfo& info) {
    if (field < record.Size()) {
        return info.FaultAtHole(record, {HoleCause::MemberFailed, field});
    }
    const auto unsureEnd = UnsureEnd(record);
    if (unsureEnd && field <= record.DeclaredCount()) {
        return info.FaultAtHole(record, *unsureEnd);
    }
    return info.Fault(record, info.Offset(), "has no field " + std::to_string(field));
}

}  // namespace

Coordinates FieldCoordinates(const ZMTParamRecord& record, Coordinates given) {
    if (given.y == 0 || (given.x != 0 && IsContainerAt(record, given.x))) {
        return given;
    }
    return {given.y, 0};
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamRecord& record, Bytes message) {
    if (!Reserve(record)) {
        return false;
    }
    const auto [field, member] = FieldCoordinates(record, CoordinatesOf(record, record.Selector(), *this));
    auto item = std::make_unique<ZMostParameterRecord>(record, *this);
    bool isGood = true;
    if (field == 0) {
        isGood = ReadMembers(record, record.Items(), item->Members(), message);
    } else if (const ZMTParam* only = record.GetAt(field)) {
        item->Members().SetMemberNumber(member);
        isGood = only->Disassemble(item->Members(), message);
    } else {
        isGood = FaultWithoutField(record, field, *this);
    }
    const auto unsureEnd = field == 0 ? UnsureEnd(record) : std::nullopt;
    isGood = ContainerItem::Finish(std::move(item), isGood, *this, message);
    return isGood && unsureEnd ? FaultAtHole(record, *unsureEnd) : isGood;
}

}  // namespace tarvex
