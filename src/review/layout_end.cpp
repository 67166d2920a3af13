#include "review/layout_end.h"

#include <utility>

#include "params/case_stream.h"
#include "params/layout.h"
#include "params/record.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

std::string HoleIn(const ZMTParam& param, const Hole& hole) {
    return param.GetName() + " " + HoleText(hole);
}

/// Goes through the parameters of an operation and finds the end.
class EndSearch {
  public:
    std::optional<LayoutEnd> In(const ZMTOperation& operation);

  private:
    /// `isSwitched`: a switch in front of a record chooses its fields, so that each is known for itself.
    std::optional<LayoutEnd> In(const ZMTParam& param, bool isSwitched);
    std::optional<LayoutEnd> InFields(const ZMTParamRecord& record);

    LayoutEnd HoleEnd(std::string why) const { return {true, std::move(why), place_}; }
    LayoutEnd OpenEnd(std::string why) const { return {false, std::move(why), place_}; }

    std::size_t place_ = 0;
};

std::optional<LayoutEnd> EndSearch::InFields(const ZMTParamRecord& record) {
    const auto missing = MissingMember(record);
    unsigned left = missing ? *missing->position - 1 : record.Count();
    for (const ZMTParam& field : record.Items()) {
        if (left-- == 0) {
            break;
        }
        if (auto end = In(field, false)) {
            return end;
        }
    }
    if (missing) {
        return HoleEnd(HoleIn(record, *missing));
    }
    const auto unsure = UnsureEnd(record);
    return unsure ? std::optional(HoleEnd(HoleIn(record, *unsure))) : std::nullopt;
}

std::optional<LayoutEnd> EndSearch::In(const ZMTParam& param, bool isSwitched) {
    ++place_;
    if (param.IsType(kParamRecord)) {
        const auto& record = static_cast<const ZMTParamRecord&>(param);
        if (!isSwitched && HasChosenFields(record)) {
            return OpenEnd(param.GetName() + ": fields that a message chooses");
        }
        return InFields(record);
    }
    if (const auto hole = UnsureEnd(param)) {
        return HoleEnd(HoleIn(param, *hole));
    }
    if (const auto hole = MissingMember(param)) {
        return HoleEnd(HoleIn(param, *hole));
    }
    if (HasOpenLength(param)) {
        return OpenEnd(param.GetName() + ": " + KindText(param) + ", " + LengthText(param));
    }
    return std::nullopt;
}

std::optional<LayoutEnd> EndSearch::In(const ZMTOperation& operation) {
    bool isSwitched = false;
    unsigned count = 0;
    for (const ZMTParam& param : operation.Items()) {
        if (count == operation.SoundCount()) {
            break;
        }
        ++count;
        if (auto end = In(param, isSwitched)) {
            return end;
        }
        if (isSwitched && param.IsType(kParamRecord) && count < operation.Count()) {
            return OpenEnd("what stands behind " + param.GetName());
        }
        isSwitched = isSwitched || IsSwitch(param);
    }
    if (operation.MissingAt()) {
        return HoleEnd(HoleText(*operation.MissingAt()));
    }
    return std::nullopt;
}

void AddHoles(const ZMTParam& param, std::vector<LayoutHole>& holes) {
    for (const auto& hole : {UnsureEnd(param), MissingMember(param)}) {
        if (hole) {
            holes.push_back({HoleIn(param, *hole), hole->message});
        }
    }
    if (param.IsType(kParamStream) || param.IsType(kParamShortStream)) {
        if (const unsigned message = static_cast<const ZMTParamCaseStream&>(param).CaseLostBy()) {
            holes.push_back({param.GetName() + " lacks a case that could not be imported (message " +
                                 std::to_string(message) + ")",
                             message});
        }
    }
    VisitMembers(param, [&](const ZMTParam& member) { AddHoles(member, holes); });
}

}  // namespace

std::optional<LayoutEnd> LayoutEndOf(const ZMTOperation& operation) {
    return EndSearch().In(operation);
}

std::vector<LayoutHole> LayoutHolesOf(const ZMTOperation& operation) {
    std::vector<LayoutHole> holes;
    if (const auto& missing = operation.MissingAt()) {
        holes.push_back({HoleText(*missing), missing->message});
    }
    for (const ZMTParam& param : operation.Items()) {
        AddHoles(param, holes);
    }
    return holes;
}

}  // namespace tarvex::review
