#include "review/diff_params.h"

#include <algorithm>
#include <cmath>

#include "params/array.h"
#include "params/bit_field.h"
#include "params/classified_stream.h"
#include "params/layout.h"
#include "params/number.h"
#include "params/record.h"
#include "params/stream_case.h"
#include "params/stream_signal.h"
#include "review/diff_match.h"
#include "review/diff_parts.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

/// The same as far as anybody can tell: what is no number is no number.
bool AreSame(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool HaveSameRange(const ZMTParamNumber& a, const ZMTParamNumber& b) {
    return a.HasRange() == b.HasRange() &&
           (!a.HasRange() || (AreSame(a.RangeMin(), b.RangeMin()) && AreSame(a.RangeMax(), b.RangeMax())));
}

std::string SelectorText(const ZMTParam* selector) {
    return selector == nullptr ? std::string() : ShortestName(*selector);
}

/// A parameter in both versions. Says what differs.
class Comparison {
  public:
    Comparison(const ZMTParam& before, const Way& after, FunctionChanges& changes)
        : before_(before), after_(after), changes_(changes) {}

    void Changed(Aspect aspect, Effect effect, std::string before, std::string after) {
        changes_.AddOfParameter(
            ParamChange(after_, ChangeKind::Changed, aspect, effect, std::move(before), std::move(after)),
            {before_.GetElement(), after_.param->GetElement()});
    }
    /// If the texts differ.
    void Compare(Aspect aspect, Effect effect, const std::string& before, const std::string& after) {
        if (before != after) {
            Changed(aspect, effect, before, after);
        }
    }
    void CompareLengths() {
        if (before_.GetBytesInMsg() != after_.param->GetBytesInMsg()) {
            Changed(Aspect::Length, Effect::Bytes, LengthText(before_), LengthText(*after_.param));
        }
    }
    void CompareLimits() {
        Compare(Aspect::Limit, Effect::None, LimitText(before_), LimitText(*after_.param));
    }

    void CompareSelectors() {
        const ZMTParam* selectorBefore = SelectorOf(before_);
        const ZMTParam* selectorAfter = SelectorOf(*after_.param);
        const bool areBoth = selectorBefore != nullptr && selectorAfter != nullptr;
        if (areBoth ? !changes_.BelongTogether(*selectorBefore, *selectorAfter)
                    : selectorBefore != selectorAfter) {
            Changed(Aspect::Selector, Effect::Bytes, SelectorText(selectorBefore),
                    SelectorText(selectorAfter));
        }
    }

    /// Both versions as what they are.
    template <class T>
    std::pair<const T&, const T&> As() const {
        return {static_cast<const T&>(before_), static_cast<const T&>(*after_.param)};
    }

  private:
    const ZMTParam& before_;
    const Way& after_;
    FunctionChanges& changes_;
};

void CompareNumbers(Comparison& comparison) {
    const auto [before, after] = comparison.As<ZMTParamNumber>();
    if (before.IsSigned() != after.IsSigned()) {
        comparison.Changed(Aspect::Type, Effect::Meaning, TypeText(before), TypeText(after));
    }
    comparison.CompareLengths();
    if (before.Exponent() != after.Exponent()) {
        comparison.Changed(Aspect::Exponent, Effect::Meaning, std::to_string(before.Exponent()),
                           std::to_string(after.Exponent()));
    }
    if (!HaveSameRange(before, after)) {
        comparison.Changed(Aspect::Range, Effect::None, RangeText(before), RangeText(after));
    }
    if (!AreSame(before.Step(), after.Step())) {
        comparison.Changed(Aspect::Step, Effect::None, StepText(before), StepText(after));
    }
    comparison.Compare(Aspect::Unit, Effect::Meaning, UnitText(before), UnitText(after));
}

void CompareBitFields(Comparison& comparison, const Way& way, FunctionChanges& changes) {
    const auto [before, after] = comparison.As<ZMTParamBitField>();
    if (before.Length() != after.Length() || before.GetBytesInMsg() != after.GetBytesInMsg()) {
        const bool isMoved = before.GetBytesInMsg() != after.GetBytesInMsg();
        comparison.Changed(Aspect::Length, isMoved ? Effect::Bytes : Effect::None, LengthText(before),
                           LengthText(after));
    }
    CompareBits(before, way, changes);
}

ParamList MembersOf(ItemRange<const ZMTParam> members) {
    ParamList list;
    for (const ZMTParam& member : members) {
        list.push_back(&member);
    }
    return list;
}

unsigned LossOf(const ZMTParam& container) {
    const auto missing = MissingMember(container);
    return missing ? missing->message : 0;
}

LostMembers LossesOf(const ZMTParam& before, const ZMTParam& after) {
    return {LossOf(before), LossOf(after)};
}

void CompareArrays(Comparison& comparison, const Way& way, FunctionChanges& changes) {
    const auto [before, after] = comparison.As<ZMTParamArray>();
    comparison.CompareLimits();
    CompareLists(MembersOf(before.Items()), MembersOf(after.Items()), &way, LossesOf(before, after), changes);
}

void CompareKinds(Comparison& comparison, const ZMTParam& other, const Way& way, FunctionChanges& changes) {
    switch (other.Kind()) {
        case ParamKind::Array:
            return CompareArrays(comparison, way, changes);
        case ParamKind::BitField:
        case ParamKind::Bool:
            return CompareBitFields(comparison, way, changes);
        case ParamKind::ClassifiedStream: {
            const auto [before, after] = comparison.As<ZMTParamClassifiedStream>();
            comparison.CompareLimits();
            return comparison.Compare(Aspect::MediaType, Effect::None, before.MediaType(), after.MediaType());
        }
        case ParamKind::Enum:
            comparison.CompareLengths();
            return CompareValues(static_cast<const ZMTParamEnum&>(other), way, changes);
        case ParamKind::Number:
            return CompareNumbers(comparison);
        case ParamKind::Record: {
            const auto [before, after] = comparison.As<ZMTParamRecord>();
            return CompareLists(MembersOf(before.Items()), MembersOf(after.Items()), &way,
                                LossesOf(before, after), changes);
        }
        case ParamKind::ShortStream:
        case ParamKind::Stream:
            comparison.CompareLimits();
            return CompareCases(static_cast<const ZMTParamCaseStream&>(other), way, changes);
        case ParamKind::StreamCase: {
            const auto [before, after] = comparison.As<ZMTParamStreamCase>();
            comparison.Compare(Aspect::Repetition, Effect::Bytes, RepetitionText(before),
                               RepetitionText(after));
            return CompareLists(MembersOf(before.Items()), MembersOf(after.Items()), &way,
                                LossesOf(before, after), changes);
        }
        case ParamKind::StreamSignal: {
            const auto [before, after] = comparison.As<ZMTParamStreamSignal>();
            return comparison.Compare(Aspect::Length, Effect::Bytes, LengthText(before), LengthText(after));
        }
        case ParamKind::String:
            return comparison.CompareLimits();
        case ParamKind::Base:
        case ParamKind::BoolField:  // by its field
        case ParamKind::FktIDBitStream:
        case ParamKind::Void:
            break;
    }
}

/// What is the whole of a parameter, where the kinds have nothing in common.
std::string WholeText(const ZMTParam& param) {
    return TypeText(param) + ", " + LengthText(param);
}

void AddExistence(const Way& way, ChangeKind kind, unsigned lostBy, FunctionChanges& changes) {
    const bool isAdded = kind == ChangeKind::Added;
    const std::string text = WholeText(*way.param);
    Change change = ParamChange(way, kind, Aspect::Existence, Effect::Bytes, isAdded ? std::string() : text,
                                isAdded ? text : std::string());
    change.lostBy = lostBy;
    const Element* element = way.param->GetElement();
    changes.AddOfParameter(std::move(change), isAdded ? Origin{nullptr, element} : Origin{element, nullptr});
}

void ComparePair(const ZMTParam& before, const Way& after, FunctionChanges& changes) {
    if (!HaveSameNames(before, *after.param)) {
        const Sides names = NamesThatDiffer(before, *after.param);
        changes.AddOfParameter(
            ParamChange(after, ChangeKind::Renamed, Aspect::Name, Effect::None, names.before, names.after),
            {before.GetElement(), after.param->GetElement()});
    }
    CompareParams(before, after, changes);
}

bool AreSameOrder(const ParamList& before, const ParamList& after) {
    return std::ranges::equal(before, after, [](const ZMTParam* a, const ZMTParam* b) {
        return a->GetType() == b->GetType() && HaveSameNames(*a, *b);
    });
}

/// Parameters by the names that the catalog gives them.
class NamedList {
  public:
    explicit NamedList(const ParamList& list) {
        names_.reserve(list.size());
        for (const ZMTParam* param : list) {
            names_.push_back(OwnName(*param));
            places_.push_back({names_.back(), static_cast<std::uint64_t>(param->GetType())});
        }
    }

    const std::vector<Placed>& Places() const { return places_; }

  private:
    std::vector<std::string> names_;
    std::vector<Placed> places_;
};

/// Positions are counted from 1.
void AddMoves(const ParamList& before, const ParamList& after, const std::vector<Matches::Pair>& moved,
              const Way* container, FunctionChanges& changes) {
    for (const auto& [i, j] : moved) {
        changes.AddOfParameter(ParamChange({container, after[j]}, ChangeKind::Moved, Aspect::Position,
                                           Effect::Bytes, std::to_string(i + 1), std::to_string(j + 1)),
                               {before[i]->GetElement(), after[j]->GetElement()});
    }
}

}  // namespace

std::string Way::Text() const {
    const std::string outer = container == nullptr ? std::string() : container->Text();
    if (param->IsType(kParamStreamCase)) {
        return outer + "(" + CaseText(static_cast<const ZMTParamStreamCase&>(*param)) + ")";
    }
    std::string name = ShortestName(*param);
    if (name.empty()) {
        name = "{" + KindText(*param) + "}";
    }
    return outer + (outer.empty() ? "" : ".") + ShownText(name);
}

Change ParamChange(const Way& way, ChangeKind kind, Aspect aspect, Effect effect, std::string before,
                   std::string after) {
    Change change;
    change.kind = kind;
    change.aspect = aspect;
    change.effect = effect;
    change.path = ShownText(way.Text());
    if (kind != ChangeKind::Renamed && !way.param->GetName().empty()) {
        if (const std::string own = OwnName(*way.param); LacksLetters(own)) {
            change.item = ShownText(own);
        }
    }
    SetSides(change, before, after);
    return change;
}

void CompareLists(const ParamList& before, const ParamList& after, const Way* container,
                  const LostMembers& lost, FunctionChanges& changes) {
    if (AreSameOrder(before, after)) {  // as nearly all are
        for (std::size_t i = 0; i < before.size(); ++i) {
            CompareParams(*before[i], {container, after[i]}, changes);
        }
        return;
    }
    const NamedList namesBefore(before);
    const NamedList namesAfter(after);
    const Matches matches = MatchPlaced(namesBefore.Places(), namesAfter.Places());
    for (const auto& [i, j] : matches.pairs) {  // before what they choose is looked at
        changes.Pair(*before[i], *after[j]);
    }
    for (const auto& [i, j] : matches.pairs) {
        ComparePair(*before[i], {container, after[j]}, changes);
    }
    AddMoves(before, after, OutOfOrder(namesBefore.Places(), namesAfter.Places(), matches), container,
             changes);
    for (const std::size_t i : matches.removed) {
        AddExistence({container, before[i]}, ChangeKind::Removed, lost.after, changes);
    }
    for (const std::size_t j : matches.added) {
        AddExistence({container, after[j]}, ChangeKind::Added, lost.before, changes);
    }
}

void CompareParams(const ZMTParam& before, const Way& after, FunctionChanges& changes) {
    Comparison comparison(before, after, changes);
    if (changes.AreDescriptionsCompared()) {
        comparison.Compare(Aspect::Description, Effect::None, DescriptionText(before),
                           DescriptionText(*after.param));
    }
    comparison.CompareSelectors();
    if (before.Kind() == after.param->Kind()) {
        return CompareKinds(comparison, before, after, changes);
    }
    const auto bytesBefore = FixedBytes(before);
    const bool hasSameBytes = bytesBefore && bytesBefore == FixedBytes(*after.param);
    comparison.Changed(Aspect::Type, hasSameBytes ? Effect::Meaning : Effect::Bytes, WholeText(before),
                       WholeText(*after.param));
}

}  // namespace tarvex::review
