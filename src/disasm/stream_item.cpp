#include "disasm/stream_item.h"

#include <algorithm>

#include "disasm/coordinates.h"
#include "import/text/parse_value.h"
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
        return selector == nullptr && stream.Count() == 1 ? &*stream.Items().begin() : nullptr;
    }
    const bool hasCoordinates = HasCoordinates(*selector);
    const bool isSigned =
        selector->IsType(kParamNumber) && static_cast<const ZMTParamNumber&>(*selector).IsSigned();
    const unsigned x = hasCoordinates ? info.Find(*selector)->RawValue(0, 1) : 0;
    for (const ZMTParamStreamCase& streamCase : stream.Items()) {
        if (Holds(streamCase, *value, isSigned && !hasCoordinates) &&
            (!hasCoordinates || streamCase.AdmitsX(x))) {
            return &streamCase;
        }
    }
    return nullptr;
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamStream& stream, Bytes message) {
    if (!Reserve(stream)) {
        return false;
    }
    const ZMTParamStreamCase* streamCase = FindCase(stream, *this);
    if (streamCase == nullptr) {
        return Fault(stream, Offset(), "has no case that fits");
    }
    auto item = std::make_unique<ZMostParameterStream>(stream, *streamCase, *this);
    const bool isGood = streamCase->Disassemble(item->Members(), message);
    return ContainerItem::Finish(std::move(item), isGood, *this, message);
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamStreamCase& streamCase, Bytes message) {
    return std::ranges::all_of(streamCase.Items(),
                               [&](const ZMTParam& param) { return param.Disassemble(*this, message); });
}

}  // namespace tarvex
