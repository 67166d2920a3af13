#include "review/diff_parts.h"

#include <algorithm>
#include <utility>

#include "kestrel/keyed_hash.h"
#include "review/diff_match.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

/// Takes what differs in the parts of one kind of a parameter.
class PartChanges {
  public:
    PartChanges(Object object, const ZMTParam& before, const Way& after, FunctionChanges& changes)
        : object_(object),
          origin_{before.GetElement(), after.param->GetElement()},
          way_(after),
          changes_(changes) {}

    void Add(ChangeKind kind, Aspect aspect, Effect effect, const std::string& item,
             const std::string& before = {}, const std::string& after = {}) {
        Change change = ParamChange(way_, kind, aspect, effect, before, after);
        change.object = object_;
        change.item = ShownText(item);
        changes_.AddOfParameter(std::move(change), origin_);
    }

  private:
    Object object_;
    Origin origin_;
    const Way& way_;
    FunctionChanges& changes_;
};

template <class Part, class List>
std::vector<const Part*> PartsOf(const List& list) {
    std::vector<const Part*> parts;
    for (const Part& part : list.Items()) {
        parts.push_back(&part);
    }
    return parts;
}

bool AreSameValues(const ZMTEnumValue& a, const ZMTEnumValue& b) {
    return a.CodeMin() == b.CodeMin() && a.CodeMax() == b.CodeMax() && a.GetName() == b.GetName();
}

std::vector<Numbered> NumberedValues(const std::vector<const ZMTEnumValue*>& values) {
    constexpr unsigned kHalf = 32;
    std::vector<Numbered> numbered;
    numbered.reserve(values.size());
    for (const ZMTEnumValue* value : values) {
        numbered.push_back({std::uint64_t{value->CodeMin()} << kHalf | value->CodeMax(), value->GetName()});
    }
    return numbered;
}

/// "0x02 Pause", "0x02"
std::string ValueItem(const ZMTEnumValue& value) {
    return CodesText(value) + (value.GetName().empty() ? "" : " ") + ShownText(value.GetName());
}

void CompareValue(const ZMTEnumValue& before, const ZMTEnumValue& after, PartChanges& changes) {
    const std::string codes = CodesText(after);
    if (CodesText(before) != codes) {
        changes.Add(ChangeKind::Moved, Aspect::Number, Effect::Meaning, after.GetName(), CodesText(before),
                    codes);
    }
    if (before.GetName() != after.GetName()) {
        changes.Add(ChangeKind::Renamed, Aspect::Name, Effect::Meaning, codes, before.GetName(),
                    after.GetName());
    }
}

/// A bit with what it is found by: its name, or its texts where it has none.
struct NamedBit {
    const ZMTParamBoolField* bit;
    std::string name;
};

std::vector<NamedBit> NamedBits(const ZMTParamBitField& field) {
    std::vector<NamedBit> bits;
    for (const ZMTParamBoolField& bit : field.Items()) {
        bits.push_back({&bit, bit.GetName().empty() ? BitText(bit) : bit.GetName()});
    }
    return bits;
}

std::vector<Numbered> NumberedBits(const std::vector<NamedBit>& bits) {
    std::vector<Numbered> numbered;
    numbered.reserve(bits.size());
    for (const NamedBit& bit : bits) {
        numbered.push_back({bit.bit->BitPos(), bit.name});
    }
    return numbered;
}

/// "3 Scratched", "3"
std::string BitItem(const ZMTParamBoolField& bit) {
    return std::to_string(bit.BitPos()) + (bit.GetName().empty() ? "" : " ") + ShownText(bit.GetName());
}

void CompareBit(const ZMTParamBoolField& before, const ZMTParamBoolField& after, PartChanges& changes) {
    const std::string item = BitItem(after);
    if (before.BitPos() != after.BitPos()) {
        changes.Add(ChangeKind::Moved, Aspect::Number, Effect::Bytes, item, std::to_string(before.BitPos()),
                    std::to_string(after.BitPos()));
    }
    if (before.GetName() != after.GetName()) {
        changes.Add(ChangeKind::Renamed, Aspect::Name, Effect::Meaning, item, before.GetName(),
                    after.GetName());
    }
    if (before.TrueDesc() != after.TrueDesc() || before.FalseDesc() != after.FalseDesc()) {
        changes.Add(ChangeKind::Changed, Aspect::Texts, Effect::Meaning, item, BitText(before),
                    BitText(after));
    }
}

bool AreSameBits(const ZMTParamBoolField& a, const ZMTParamBoolField& b) {
    return a.BitPos() == b.BitPos() && a.GetName() == b.GetName() && a.TrueDesc() == b.TrueDesc() &&
           a.FalseDesc() == b.FalseDesc();
}

/// A number for each list of members that cases have; equal ones have the same.
class Contents {
  public:
    std::uint64_t NumberOf(const ZMTParamStreamCase& streamCase) {
        std::string members;
        for (const ZMTParam& member : streamCase.Items()) {
            members.append(KindText(member)).append(" ").append(member.GetName()).append("\n");
        }
        return numbers_.try_emplace(std::move(members), numbers_.size()).first->second;
    }

  private:
    kestrel::KeyedMap<std::string, std::uint64_t> numbers_;
};

/// The cases of a stream, and when they stand in it.
struct Cases {
    std::vector<const ZMTParamStreamCase*> all;
    std::vector<std::string> texts;
    std::vector<Placed> places;

    Cases(const ZMTParamCaseStream& stream, Contents& contents) {
        for (const ZMTParamStreamCase& streamCase : stream.Items()) {
            all.push_back(&streamCase);
            texts.push_back(CaseText(streamCase));
        }
        for (std::size_t i = 0; i < all.size(); ++i) {
            places.push_back({texts[i], contents.NumberOf(*all[i])});
        }
    }
};

}  // namespace

void CompareValues(const ZMTParamEnum& before, const Way& after, FunctionChanges& changes) {
    const auto& enumeration = static_cast<const ZMTParamEnum&>(*after.param);
    const auto valuesBefore = PartsOf<ZMTEnumValue>(before);
    const auto valuesAfter = PartsOf<ZMTEnumValue>(enumeration);
    if (std::ranges::equal(valuesBefore, valuesAfter,
                           [](const auto* a, const auto* b) { return AreSameValues(*a, *b); })) {
        return;
    }
    PartChanges parts(Object::Value, before, after, changes);
    const Matches matches = MatchNumbered(NumberedValues(valuesBefore), NumberedValues(valuesAfter), nullptr);
    for (const auto& [i, j] : matches.pairs) {
        CompareValue(*valuesBefore[i], *valuesAfter[j], parts);
    }
    for (const std::size_t i : matches.removed) {
        parts.Add(ChangeKind::Removed, Aspect::Existence, Effect::None, ValueItem(*valuesBefore[i]));
    }
    for (const std::size_t j : matches.added) {
        parts.Add(ChangeKind::Added, Aspect::Existence, Effect::None, ValueItem(*valuesAfter[j]));
    }
}

void CompareBits(const ZMTParamBitField& before, const Way& after, FunctionChanges& changes) {
    const auto& field = static_cast<const ZMTParamBitField&>(*after.param);
    if (std::ranges::equal(before.Items(), field.Items(), AreSameBits)) {
        return;
    }
    const std::vector<NamedBit> bitsBefore = NamedBits(before);
    const std::vector<NamedBit> bitsAfter = NamedBits(field);
    PartChanges parts(Object::Bit, before, after, changes);
    const Matches matches = MatchNumbered(NumberedBits(bitsBefore), NumberedBits(bitsAfter), nullptr);
    for (const auto& [i, j] : matches.pairs) {
        CompareBit(*bitsBefore[i].bit, *bitsAfter[j].bit, parts);
    }
    for (const std::size_t i : matches.removed) {
        const ZMTParamBoolField& bit = *bitsBefore[i].bit;
        parts.Add(ChangeKind::Removed, Aspect::Existence, Effect::None, BitItem(bit), BitText(bit));
    }
    for (const std::size_t j : matches.added) {
        const ZMTParamBoolField& bit = *bitsAfter[j].bit;
        parts.Add(ChangeKind::Added, Aspect::Existence, Effect::None, BitItem(bit), "", BitText(bit));
    }
}

void CompareCases(const ZMTParamCaseStream& before, const Way& after, FunctionChanges& changes) {
    Contents contents;
    const Cases casesBefore(before, contents);
    const Cases casesAfter(static_cast<const ZMTParamCaseStream&>(*after.param), contents);
    PartChanges parts(Object::Case, before, after, changes);
    const Matches matches = MatchPlaced(casesBefore.places, casesAfter.places);
    for (const auto& [i, j] : matches.pairs) {
        if (casesBefore.texts[i] != casesAfter.texts[j]) {
            parts.Add(ChangeKind::Moved, Aspect::Number, Effect::Bytes, casesAfter.texts[j],
                      casesBefore.texts[i], casesAfter.texts[j]);
        }
        CompareParams(*casesBefore.all[i], {&after, casesAfter.all[j]}, changes);
    }
    for (const std::size_t i : matches.removed) {
        parts.Add(ChangeKind::Removed, Aspect::Existence, Effect::Bytes, casesBefore.texts[i]);
    }
    for (const std::size_t j : matches.added) {
        parts.Add(ChangeKind::Added, Aspect::Existence, Effect::Bytes, casesAfter.texts[j]);
    }
}

std::string RepetitionText(const ZMTParamStreamCase& streamCase) {
    const ZMTParam* first = streamCase.GetAt(streamCase.RepeatedFrom());
    return first == nullptr ? std::string() : "from " + first->GetName() + " on";
}

}  // namespace tarvex::review
