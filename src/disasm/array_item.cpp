#include "disasm/array_item.h"

#include "disasm/coordinates.h"

namespace tarvex {
namespace {

/// Reads entries until the array is full, the message ends or an entry takes no bytes. One entry is read in
/// any case if it is the only one asked for.
bool ReadEntries(const ZMTParam& element, std::uint32_t count, bool isAsked,
                 ZMostParameterListBaseInfo& entries, std::span<const std::uint8_t> message) {
    for (std::uint32_t entry = 0; entry < count; ++entry) {
        const std::size_t begin = entries.Offset();
        if (begin >= message.size() && !isAsked) {
            return true;
        }
        if (!element.Disassemble(entries, message)) {
            return false;
        }
        if (entries.Offset() == begin) {
            return true;
        }
    }
    return true;
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamArray& array, Bytes message) {
    if (!Reserve(array)) {
        return false;
    }
    if (const auto missing = MissingMember(array)) {
        return FaultAtHole(array, *missing);
    }
    const auto [x, y] = CoordinatesOf(array, array.Selector(), *this);
    auto item = std::make_unique<ZMostParameterArray>(array, *this, x == 0 ? 1 : x);
    bool isGood = true;
    if (x > array.NMax()) {
        isGood = Fault(array, Offset(), "has no entry " + std::to_string(x));
    } else if (const ZMTParam* element = array.GetAt(0)) {
        item->Members().SetMemberNumber(y);
        isGood = ReadEntries(*element, x == 0 ? array.NMax() : 1, x != 0, item->Members(), message);
    }
    return ContainerItem::Finish(std::move(item), isGood, *this, message);
}

}  // namespace tarvex
