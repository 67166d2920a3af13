#include "params/case_stream.h"

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "import/log/messages.h"
#include "import/xml/element.h"
#include "params/pos_and_data.h"

namespace tarvex {

/// Two cases hold the same position when they stand for the same coordinates.
void ZMTParamCaseStream::ImportCases(const Element& stream, ImportContext& context) {
    std::set<std::tuple<std::string, std::uint32_t, std::uint32_t>> positions;
    for (const Element* child = FindChildElement(&stream, "StreamCase"); child != nullptr;
         child = FindNextSiblingElement(*child, "StreamCase")) {
        auto streamCase = std::make_unique<ZMTParamStreamCase>();
        streamCase->SetParent(this);
        if (!streamCase->Import(*child, context)) {
            Raise<kStreamCaseFailed>(context.At(child), "StreamCase");
            hasLostCases_ = true;
        } else if (!positions.emplace(streamCase->PosXString(), streamCase->PosYMin(), streamCase->PosYMax())
                        .second) {
            Raise<kStreamCaseTwice>(context.At(child), streamCase->PosYMin());
        } else {
            Append(std::move(streamCase));
        }
    }
    if (const ZMTParamStreamCase* overlapping = FindOverlappingCase()) {
        Raise<kStreamCasesOverlap>(context.At(overlapping->GetElement()));
    }
}

/// Whether the selector is signed is not known yet. A range that is reversed as a signed one is meant
/// unsigned.
const ZMTParamStreamCase* ZMTParamCaseStream::FindOverlappingCase() const {
    struct Range {
        std::int64_t min;
        std::int64_t max;
        unsigned slot;
    };
    std::vector<Range> ranges;
    unsigned slot = 0;
    for (const ZMTParamStreamCase& streamCase : Items()) {
        const auto min = static_cast<std::int32_t>(streamCase.PosYMin());
        const auto max = static_cast<std::int32_t>(streamCase.PosYMax());
        const Range range =
            min <= max ? Range{min, max, slot} : Range{streamCase.PosYMin(), streamCase.PosYMax(), slot};
        ++slot;
        if (range.min <= range.max) {
            ranges.push_back(range);
        }
    }
    std::ranges::sort(ranges, {}, &Range::min);
    // In ascending order of their beginnings, two ranges that meet leave two neighbours that do.
    const auto found =
        std::ranges::adjacent_find(ranges, [](const Range& a, const Range& b) { return b.min <= a.max; });
    return found == ranges.end() ? nullptr : GetAt(std::max(found->slot, std::next(found)->slot));
}

bool ZMTParamCaseStream::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    selector_.Set(nullptr);
    ResolveOrDelete(context);
    return true;
}

bool ZMTParamCaseStream::BindSelector(const ZMTParam& selector) {
    if (Selector() == nullptr) {
        selector_.Set(&selector);
    }
    return Selector() == &selector;
}

unsigned ZMTParamCaseStream::CaseLostBy() const {
    if (hasLostCases_) {
        return kStreamCaseFailed.number;
    }
    return Count() < Size() ? kSecondSelector.number : 0;  // they are checked for nothing else
}

void ZMTParamCaseStream::DumpSelector(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, FormatText(".SelectorParam: %s", SelectorName(Selector())));
}

}  // namespace tarvex
