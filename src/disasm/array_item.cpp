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

bool ZMTParamArray::Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const {
    if (!info.Reserve(*this)) {
        return false;
    }
    const auto [x, y] = CoordinatesOf(*this, selector_, info);
    auto item = std::make_unique<ZMostParameterArray>(*this, info, x == 0 ? 1 : x);
    bool isGood = true;
    if (x > nMax_) {
        isGood = info.Fault(*this, info.Offset(), "has no entry " + std::to_string(x));
    } else if (const ZMTParam* element = GetAt(0)) {
        item->Members().SetMemberNumber(y);
        isGood = ReadEntries(*element, x == 0 ? nMax_ : 1, x != 0, item->Members(), bytes);
    }
    return ContainerItem::Finish(std::move(item), isGood, info, bytes);
}

unsigned FirstEntryNumber(const ZMostParameter& item) {
    return item.IsType(kParamArray) ? static_cast<const ZMostParameterArray&>(item).FirstNumber() : 0;
}

}  // namespace tarvex
