#include "review/layout_end.h"

#include "params/layout.h"
#include "params/record.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

LayoutEnd HoleIn(const ZMTParam& param, const Hole& hole) {
    return {true, param.GetName() + " " + HoleText(hole)};
}

std::optional<LayoutEnd> EndIn(const ZMTParam& param, bool isSwitched);

std::optional<LayoutEnd> EndInFields(const ZMTParamRecord& record) {
    const std::optional<Hole> missing = MissingMember(record);
    unsigned left = missing ? *missing->position - 1 : record.Count();
    for (const ZMTParam& field : record.Items()) {
        if (left-- == 0) {
            break;
        }
        if (auto end = EndIn(field, false)) {
            return end;
        }
    }
    if (missing) {
        return HoleIn(record, *missing);
    }
    const std::optional<Hole> unsure = UnsureEnd(record);
    return unsure ? std::optional(HoleIn(record, *unsure)) : std::nullopt;
}

/// `isSwitched`: a switch in front of a record chooses its fields, so that each is known for itself.
std::optional<LayoutEnd> EndIn(const ZMTParam& param, bool isSwitched) {
    if (param.IsType(kParamRecord)) {
        const auto& record = static_cast<const ZMTParamRecord&>(param);
        if (!isSwitched && HasChosenFields(record)) {
            return LayoutEnd{false, param.GetName() + ": fields that a message chooses"};
        }
        return EndInFields(record);
    }
    if (const auto hole = UnsureEnd(param)) {
        return HoleIn(param, *hole);
    }
    if (const auto hole = MissingMember(param)) {
        return HoleIn(param, *hole);
    }
    if (HasOpenLength(param)) {
        return LayoutEnd{false, param.GetName() + ": " + KindText(param) + ", " + LengthText(param)};
    }
    return std::nullopt;
}

}  // namespace

std::optional<LayoutEnd> LayoutEndOf(const ZMTOperation& operation) {
    bool isSwitched = false;
    unsigned count = 0;
    for (const ZMTParam& param : operation.Items()) {
        if (count == operation.SoundCount()) {
            break;
        }
        ++count;
        if (auto end = EndIn(param, isSwitched)) {
            return end;
        }
        if (isSwitched && param.IsType(kParamRecord) && count < operation.Count()) {
            return LayoutEnd{false, "what stands behind " + param.GetName()};
        }
        isSwitched = isSwitched || IsSwitch(param);
    }
    if (operation.MissingAt()) {
        return LayoutEnd{true, HoleText(*operation.MissingAt())};
    }
    return std::nullopt;
}

}  // namespace tarvex::review
