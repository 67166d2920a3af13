#include "disasm/stream_item.h"

#include "disasm/coordinates.h"
#include "import/parse_value.h"
#include "params/number.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

/// Of a signed selector the bounds are signed too.
bool Holds(const ZMTParamStreamCase& streamCase, std::int64_t value, bool isSigned) {
    const std::uint32_t min = streamCase.PosYMin();
    const std::uint32_t max = streamCase.PosYMax();
    const bool isOpen = max == static_cast<std::uint32_t>(kOpenRangeEnd);
    if (isSigned) {
        return static_cast<std::int32_t>(min) <= value && (isOpen || value <= static_cast<std::int32_t>(max));
    }
    return std::int64_t{min} <= value && (isOpen || value <= std::int64_t{max});
}

/// The first case that holds the selector's value. A single case needs no selector.
const ZMTParamStreamCase* FindCase(const ZMTParamStream& stream, const ZMostParameterListBaseInfo& info) {
    const ZMTParam* selector = stream.Selector();
    const auto value = SelectorValue(selector, info);
    if (!value) {
        return selector == nullptr && stream.Count() == 1 ? stream.GetItems(false).front() : nullptr;
    }
    const bool hasCoordinates = HasCoordinates(*selector);
    const bool isSigned =
        selector->IsType(kParamNumber) && static_cast<const ZMTParamNumber&>(*selector).IsSigned();
    const unsigned x = hasCoordinates ? info.Find(*selector)->RawValue(0, 1) : 0;
    for (unsigned pos = 0; pos < stream.Size(); ++pos) {
        const ZMTParamStreamCase* streamCase = stream.GetAt(pos);
        if (streamCase != nullptr && Holds(*streamCase, *value, isSigned && !hasCoordinates) &&
            (!hasCoordinates || streamCase->AdmitsX(x))) {
            return streamCase;
        }
    }
    return nullptr;
}

}  // namespace

bool ZMTParamStream::Disassemble(ZMostParameterListBaseInfo& info,
                                 std::span<const std::uint8_t> bytes) const {
    if (!info.Reserve(*this)) {
        return false;
    }
    const ZMTParamStreamCase* streamCase = FindCase(*this, info);
    if (streamCase == nullptr) {
        return info.Fault(*this, info.Offset(), "has no case that fits");
    }
    auto item = std::make_unique<ZMostParameterStream>(*this, *streamCase, info);
    const bool isGood = streamCase->Disassemble(item->Members(), bytes);
    return ContainerItem::Finish(std::move(item), isGood, info, bytes);
}

bool ZMTParamStreamCase::Disassemble(ZMostParameterListBaseInfo& info,
                                     std::span<const std::uint8_t> bytes) const {
    for (const ZMTParam* param : GetItems(false)) {
        if (!param->Disassemble(info, bytes)) {
            return false;
        }
    }
    return true;
}

}  // namespace tarvex
