#include "params/stream_case.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"
#include "params/members.h"
#include "params/pos_and_data.h"
#include "params/stream.h"
#include "params/stream_signal.h"

namespace tarvex {
namespace {

/// The name of a case whose stream has no selector.
constexpr const char* kCaseWithoutSelector = "{StreamCase}";

/// A coordinate of a case: the attribute of an element of its own where there is one, else an attribute of
/// the element that holds both.
std::string Coordinate(const Element& streamCase, const char* name) {
    std::string text;
    const bool found = FindChildElement(&streamCase, name) != nullptr
                           ? GetChildAttribute(streamCase, name, "PosDescription", text)
                           : GetChildAttribute(streamCase, "PosDescription", name, text);
    return found ? text : kNoCoordinate;
}

/// The element that has a coordinate, or should have it.
const Element* CoordinateElement(const Element& streamCase, const char* name) {
    for (const char* holder : {name, "PosDescription"}) {
        if (const Element* found = FindChildElement(&streamCase, holder)) {
            return found;
        }
    }
    return &streamCase;
}

/// The sibling of a stream that can select its content; null if there is none of that name. One that is about
/// to fail its own check will not be there to select.
const ZMTParam* FindSelecting(const ZMTNode& scope, const std::string& name) {
    const ZMTParam* selector = AsSelector(scope.FindChild(name));
    return selector != nullptr && IsContainer(*selector) && !FindSelector(*selector) ? nullptr : selector;
}

/// Parameters by position and sequence.
using PlacedParams = std::map<std::pair<std::uint32_t, std::uint32_t>, std::unique_ptr<ZMTParam>>;

/// Some have sequence numbers, which are 1, 2, 3, ... without regard to positions.
bool IsUnbroken(const PlacedParams& params) {
    std::set<std::uint32_t> sequences;
    std::size_t count = 0;
    for (const auto& [place, param] : params) {
        sequences.insert(place.second);
        count += place.second != 0 ? 1 : 0;
    }
    sequences.erase(0);
    return count > 0 && sequences.size() == count && *sequences.rbegin() == count;
}

bool HasSequence(const std::unique_ptr<ZMTParam>& param) {
    return param->Sequence() != 0;
}

}  // namespace

ZMTParamStreamCase::ZMTParamStreamCase() : ZMTParamKind(kCaseWithoutSelector) {}

bool ZMTParamStreamCase::Import(const Element& element, ImportContext& context) {
    SetElement(element);
    return ImportParamName(element, context) && ImportParamPos(element, context) &&
           ImportRange(element, context) && ImportContent(element, context);
}

bool ZMTParamStreamCase::ImportRange(const Element& element, ImportContext& context) {
    const std::string posY = Coordinate(element, "PosY");
    std::int32_t min = 0;
    std::int32_t max = 0;
    if (!ParseRange(posY, min, max)) {
        return Raise<kStreamRangeUnreadable>(context.At(CoordinateElement(element, "PosY")), posY);
    }
    posYMin_ = static_cast<std::uint32_t>(min);
    posYMax_ = static_cast<std::uint32_t>(max);
    posXString_ = Coordinate(element, "PosX");
    hasRangeX_ =
        !posXString_.empty() && !NamesEqual(posXString_, kNoCoordinate) && ParseRange(posXString_, min, max);
    posXMin_ = static_cast<std::uint32_t>(min);
    posXMax_ = static_cast<std::uint32_t>(max);
    return true;
}

/// Reads what the case is made of: parameters, in newer catalogs also signals or just bytes.
bool ZMTParamStreamCase::ImportContent(const Element& element, ImportContext& context) {
    const Element* param = FindChildElement(&element, "StreamParam");
    const Element* signal = FindChildElement(&element, "StreamSignal");
    if (signal != nullptr && !context.newer.Meet()) {
        signal = nullptr;
    }
    if (param != nullptr && signal != nullptr) {
        return Raise<kStreamSignalsAndParams>(context.At(element));
    }
    if (param != nullptr) {
        return ImportParams(param, context);
    }
    if (signal != nullptr) {
        return ImportSignals(signal, context);
    }
    if (!context.newer.AreRead()) {
        Raise<kStreamCaseWithoutParam>(context.At(element), "StreamParam");
        Raise<kEmptyStreamCaseUnsupported>(context.At(element));
    }
    return true;
}

/// Reads the parameters from the first on and puts them in order.
bool ZMTParamStreamCase::ImportParams(const Element* child, ImportContext& context) {
    PlacedParams params;
    std::set<const ZMTParam*> claimed;  // places that another one claims too
    for (; child != nullptr; child = FindNextSiblingElement(*child, "StreamParam")) {
        auto param = ImportMember<kStreamParamUnknown, kStreamParamFailed>(*this, *child, context);
        if (!param) {
            return false;
        }
        if (param->ParamPos() == 0 || param->ParamPos() > kMaxParamPos) {
            return Raise<kStreamParamPosInvalid>(context.At(child), param->GetName());
        }
        auto& place = params[{param->ParamPos(), param->Sequence()}];
        if (place) {
            Raise<kStreamParamTwice>(context.AtChild(*child, "ParamName"), param->ParamPos());
            claimed.insert(place.get());
        } else {
            place = std::move(param);
        }
    }
    const bool isGroup = context.newer.AreRead() && IsUnbroken(params);
    Params ordered;
    for (auto& [position, param] : params) {
        ordered.push_back(std::move(param));
    }
    if (!CheckSequences(ordered, isGroup, context) || (isGroup && !OrderGroup(ordered, context))) {
        return false;
    }
    const auto twice =
        std::ranges::find_if(ordered, [&](const auto& param) { return claimed.contains(param.get()); });
    if (twice != ordered.end()) {
        claimedTwice_ = static_cast<unsigned>(twice - ordered.begin());
    }
    for (auto& param : ordered) {
        Append(std::move(param));
    }
    return true;
}

/// Reads the signals from the first on; their indices are 1, 2, 3, ... in any order.
bool ZMTParamStreamCase::ImportSignals(const Element* child, ImportContext& context) {
    std::map<std::uint32_t, std::unique_ptr<ZMTParamStreamSignal>> signals;
    for (; child != nullptr; child = FindNextSiblingElement(*child, "StreamSignal")) {
        auto signal = std::make_unique<ZMTParamStreamSignal>();
        signal->SetParent(this);
        if (!signal->Import(*child, context)) {
            return Raise<kStreamSignalFailed>(context.At(child), "StreamSignal");
        }
        const std::uint32_t pos = signal->ParamPos();
        if (!signals.try_emplace(pos, std::move(signal)).second) {
            Raise<kStreamSignalTwice>(context.AtChild(*child, "SignalName"), pos);
            claimedTwice_ = std::min(claimedTwice_, pos - 1);
        }
    }
    for (auto& [pos, signal] : signals) {
        if (pos != Size() + 1) {
            return Raise<kGapInStreamSignals>(context.At(signal->GetElement()), signal->GetName());
        }
        Append(std::move(signal));
    }
    return true;
}

/// The positions are 1, 2, 3, ...; those of one position have no sequence numbers or have 1, 2, 3, ...,
/// unless they are numbered across positions.
bool ZMTParamStreamCase::CheckSequences(const Params& params, bool isAcross, ImportContext& context) {
    std::uint32_t pos = 0;
    std::uint32_t sequence = 0;
    for (const auto& param : params) {
        if (param->ParamPos() == pos) {
            if (sequence == 0) {
                return Raise<kSequenceMissing>(context.At(GetElement()));
            }
        } else if (param->ParamPos() == pos + 1) {
            ++pos;
            sequence = 0;
        } else {
            return Raise<kGapInStreamCase>(context.At(param->GetElement()), param->GetName());
        }
        if (param->Sequence() != 0 && param->Sequence() != sequence + 1 && !isAcross) {
            return Raise<kSequenceBroken>(context.At(GetElement()));
        }
        sequence = param->Sequence();
        seqCnt_ = std::max(seqCnt_, sequence);
    }
    return true;
}

/// Puts the parameters of the group, which stand behind each other, in the order of their sequence.
bool ZMTParamStreamCase::OrderGroup(Params& params, ImportContext& context) {
    const auto first = std::ranges::find_if(params, HasSequence);
    const auto end = std::find_if_not(first, params.end(), HasSequence);
    if (std::any_of(end, params.end(), HasSequence)) {
        return Raise<kSequenceBroken>(context.At(GetElement()));
    }
    std::sort(first, end, [](const auto& a, const auto& b) { return a->Sequence() < b->Sequence(); });
    if (end == params.end()) {
        repeatedFrom_ = static_cast<unsigned>(first - params.begin());
    }
    return true;
}

bool ZMTParamStreamCase::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    if (const ZMTParam* selector = FindCaseSelector(context.newer.AreRead())) {
        auto& stream = *static_cast<ZMTParamCaseStream*>(GetParent());
        if (!stream.BindSelector(*selector)) {
            return Raise<kSecondSelector>(context.At(GetElement()));
        }
        SetName(NameBy(*selector));
        stream.NameChanged(*this);
    }
    ResolveOrDelete(context);
    return true;
}

/// What the x coordinate names beside the stream (`looksOutward`: or around it, as far as the operation),
/// else the "Pos" beside it.
const ZMTParam* ZMTParamStreamCase::FindCaseSelector(bool looksOutward) {
    const ZMTNode* stream = GetParent();
    if (stream == nullptr || stream->GetParent() == nullptr) {
        return nullptr;
    }
    const ZMTNode* const beside = stream->GetParent();
    const std::string name =
        NamesEqual(posXString_, kNoCoordinate) ? std::string() : SanitizeName(posXString_);
    const ZMTParam* named = nullptr;
    for (const ZMTNode* scope = beside; !name.empty() && named == nullptr && scope != nullptr;
         scope = looksOutward && !scope->IsType(kOperation) ? scope->GetParent() : nullptr) {
        named = FindSelecting(*scope, name);
    }
    isNameUnknown_ = !name.empty() && named == nullptr && !hasRangeX_;
    return named != nullptr ? named : FindSelecting(*beside, kPosName);
}

std::string ZMTParamStreamCase::NameBy(const ZMTParam& selector) const {
    if (posYMin_ == posYMax_) {
        return FormatText("(%s=0x%02X)", selector.GetName(), posYMin_);
    }
    if (posYMax_ == static_cast<std::uint32_t>(kOpenRangeEnd)) {
        return FormatText("(%s>=0x%02X)", selector.GetName(), posYMin_);
    }
    return FormatText("(%s=0x%02X..0x%02X)", selector.GetName(), posYMin_, posYMax_);
}

unsigned ZMTParamStreamCase::GetIndentLevel() const {
    return GetParent() == nullptr ? 0 : GetParent()->GetIndentLevel();
}

bool ZMTParamStreamCase::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSTREAMCASE: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, ".PosXString: " + posXString_);
    DumpLine(treeLog, FormatText(".PosYMin: %d", posYMin_));
    DumpLine(treeLog, FormatText(".PosYMax: %d", posYMax_));
    DumpLine(treeLog, FormatText(".SeqCnt: %d", seqCnt_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
