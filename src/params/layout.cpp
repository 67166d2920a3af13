#include "params/layout.h"

#include <algorithm>

#include "catalog/definitions.h"
#include "import/log/messages.h"
#include "params/array.h"
#include "params/case_stream.h"
#include "params/enumeration.h"
#include "params/number.h"
#include "params/pos_and_data.h"
#include "params/record.h"

namespace tarvex {
namespace {

constexpr unsigned kFirstField = 1;

/// The first empty slot from that one on, as a position counted from 1.
std::optional<Hole> EmptySlot(const ZMTChildList<ZMTParam>& list, unsigned firstSlot) {
    for (unsigned slot = firstSlot; slot < list.Size(); ++slot) {
        if (list.GetAt(slot) == nullptr) {
            return Hole{HoleCause::MemberFailed, firstSlot == 0 ? slot + 1 : slot};
        }
    }
    return std::nullopt;
}

/// The first slot that is empty, or whose place is not that of what is in it.
std::optional<Hole> UnsureSlot(const ZMTParamStreamCase& streamCase) {
    const std::optional<Hole> empty = EmptySlot(streamCase, 0);
    const unsigned twice = streamCase.ClaimedTwice();
    if (twice >= (empty ? *empty->position - 1 : streamCase.Size())) {
        return empty;
    }
    const bool isSignal = streamCase.GetAt(twice)->IsType(kParamStreamSignal);
    return Hole{HoleCause::MemberTwice, twice + 1,
                isSignal ? kStreamSignalTwice.number : kStreamParamTwice.number};
}

bool HasHole(const ZMTParam& param);

bool HasHole(const ZMTChildList<ZMTParam>& members) {
    return std::ranges::any_of(members.Items(), [](const ZMTParam& member) { return HasHole(member); });
}

bool HasHoleInCases(const ZMTParamCaseStream& stream) {
    return stream.HasLostCases() ||
           std::ranges::any_of(stream.Items(), [](const ZMTParamStreamCase& streamCase) {
               return MissingMember(streamCase) ||
                      HasHole(static_cast<const ZMTChildList<ZMTParam>&>(streamCase));
           });
}

/// The parameter, or something in it.
bool HasHole(const ZMTParam& param) {
    if (UnsureEnd(param) || MissingMember(param)) {
        return true;
    }
    switch (param.Kind()) {
        case ParamKind::Array:
            return HasHole(
                static_cast<const ZMTChildList<ZMTParam>&>(static_cast<const ZMTParamArray&>(param)));
        case ParamKind::Record:
            return HasHole(
                static_cast<const ZMTChildList<ZMTParam>&>(static_cast<const ZMTParamRecord&>(param)));
        case ParamKind::Stream:
        case ParamKind::ShortStream:
            return HasHoleInCases(static_cast<const ZMTParamCaseStream&>(param));
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::BoolField:
        case ParamKind::ClassifiedStream:
        case ParamKind::Enum:
        case ParamKind::FktIDBitStream:
        case ParamKind::Number:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::String:
        case ParamKind::Void:
            break;
    }
    return false;
}

}  // namespace

bool HasOpenLength(const ZMTParam& param) {
    switch (param.Kind()) {
        case ParamKind::Array:
        case ParamKind::ClassifiedStream:
        case ParamKind::FktIDBitStream:
        case ParamKind::ShortStream:
        case ParamKind::Stream:
        case ParamKind::String:
            return true;
        case ParamKind::Base:
        case ParamKind::BitField:
        case ParamKind::Bool:
        case ParamKind::BoolField:
        case ParamKind::Enum:
        case ParamKind::Number:
        case ParamKind::Record:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::Void:
            break;
    }
    return false;
}

std::optional<Hole> MissingMember(const ZMTParam& container) {
    if (container.IsType(kParamArray)) {
        return EmptySlot(static_cast<const ZMTParamArray&>(container), 0);
    }
    if (container.IsType(kParamRecord)) {
        return EmptySlot(static_cast<const ZMTParamRecord&>(container), kFirstField);
    }
    if (container.IsType(kParamStreamCase)) {
        return UnsureSlot(static_cast<const ZMTParamStreamCase&>(container));
    }
    return std::nullopt;
}

std::optional<Hole> UnsureEnd(const ZMTParam& param) {
    if (param.IsType(kParamNumber) && param.GetBytesInMsg() < 1) {
        const bool isTold = param.TypeDefinition() != nullptr && !param.TypeDefinition()->HasSize();
        return Hole{HoleCause::NoSize, std::nullopt, isTold ? kTypeDefWithoutSize.number : 0};
    }
    if (param.IsType(kParamEnum) && static_cast<const ZMTParamEnum&>(param).SizeUnsureBy() != 0) {
        return Hole{HoleCause::CodeUnread, std::nullopt,
                    static_cast<const ZMTParamEnum&>(param).SizeUnsureBy()};
    }
    if (param.IsType(kParamRecord) && static_cast<const ZMTParamRecord&>(param).HasOtherCount()) {
        return Hole{HoleCause::FieldCount, std::nullopt, kRecordFieldCountDiffers.number};
    }
    return std::nullopt;
}

bool HasChosenFields(const ZMTParamRecord& record) {
    return record.Selector() != nullptr && record.Selector() != record.GetParent();
}

bool IsSwitch(const ZMTParam& number) {
    const ZMTNode* parent = number.GetParent();
    return HasCoordinates(number) && parent != nullptr && parent->IsType(kOperation) &&
           std::ranges::any_of(static_cast<const ZMTOperation&>(*parent).Items(),
                               [](const ZMTParam& param) { return param.IsType(kParamRecord); });
}

namespace {

/// The parameters behind it have their places. `isSwitched`: by a switch in front of it.
bool LeadsOn(const ZMTParam& param, bool isSwitched) {
    if (!param.IsType(kParamRecord)) {
        return !HasOpenLength(param);
    }
    const auto& record = static_cast<const ZMTParamRecord&>(param);
    return (isSwitched || !HasChosenFields(record)) &&
           std::ranges::all_of(record.Items(), [](const ZMTParam& field) { return LeadsOn(field, false); });
}

}  // namespace

Layout LayoutOf(const ZMTOperation& operation) {
    if (operation.MissingAt() || HasHole(static_cast<const ZMTChildList<ZMTParam>&>(operation))) {
        return Layout::Incomplete;
    }
    bool isSwitched = false;
    unsigned count = 0;
    for (const ZMTParam& param : operation.Items()) {
        ++count;
        const bool isGroup = isSwitched && param.IsType(kParamRecord);
        if (!LeadsOn(param, isSwitched) || (isGroup && count < operation.Count())) {
            return Layout::Open;
        }
        isSwitched = isSwitched || IsSwitch(param);
    }
    return Layout::Complete;
}

}  // namespace tarvex
