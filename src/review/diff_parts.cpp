#include "review/diff_parts.h"

#include <algorithm>
#include <utility>

#include "import/log/messages.h"
#include "import/text/names.h"
#include "kestrel/keyed_hash.h"
#include "review/diff_match.h"
#include "review/own_texts.h"
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
             const std::string& before, const std::string& after, unsigned lostBy = 0) {
        Change change = ParamChange(way_, kind, aspect, effect, before, after);
        change.object = object_;
        change.item = ShownText(item);
        change.lostBy = lostBy;
        changes_.AddOfParameter(std::move(change), origin_);
    }
    /// `lostBy`: the message about those that the other catalog has and that could not be read.
    void Removed(Effect effect, const std::string& item, const std::string& whole, unsigned lostBy) {
        Add(ChangeKind::Removed, Aspect::Existence, effect, item, whole, "", lostBy);
    }
    void Added(Effect effect, const std::string& item, const std::string& whole, unsigned lostBy) {
        Add(ChangeKind::Added, Aspect::Existence, effect, item, "", whole, lostBy);
    }

  private:
    Object object_;
    Origin origin_;
    const Way& way_;
    FunctionChanges& changes_;
};

/// A value and what the catalog says of it.
struct NamedValue {
    const ZMTEnumValue* value;
    ValueTexts texts;
};

std::vector<NamedValue> NamedValues(const ZMTParamEnum& enumeration) {
    std::vector<ValueTexts> texts = OwnValues(enumeration);
    std::vector<NamedValue> values;
    values.reserve(texts.size());
    for (const ZMTEnumValue& value : enumeration.Items()) {
        values.push_back({&value, std::move(texts[values.size()])});
    }
    return values;
}

bool AreSameValues(const ZMTEnumValue& a, const ZMTEnumValue& b) {
    return a.CodeMin() == b.CodeMin() && a.CodeMax() == b.CodeMax() && a.GetName() == b.GetName();
}

std::vector<Numbered> NumberedValues(const std::vector<NamedValue>& values) {
    constexpr unsigned kHalf = 32;
    std::vector<Numbered> numbered;
    numbered.reserve(values.size());
    for (const auto& [value, texts] : values) {
        numbered.push_back({std::uint64_t{value->CodeMin()} << kHalf | value->CodeMax(), texts.name});
    }
    return numbered;
}

/// "0x02 Pause", "0x02"
std::string ValueItem(const NamedValue& value) {
    return CodesText(*value.value) + (value.texts.name.empty() ? "" : " ") + value.texts.name;
}

/// Names in the tree may differ where those in the catalogs do not: by white space.
Sides NamesThatDiffer(const std::string& ownBefore, const ZMTNode& before, const std::string& ownAfter,
                      const ZMTNode& after) {
    return ownBefore == ownAfter ? Sides{before.GetName(), after.GetName()} : Sides{ownBefore, ownAfter};
}

void CompareValue(const NamedValue& before, const NamedValue& after, bool withDescriptions,
                  PartChanges& changes) {
    const std::string codesBefore = CodesText(*before.value);
    const std::string codes = CodesText(*after.value);
    if (codesBefore != codes) {
        changes.Add(ChangeKind::Moved, Aspect::Number, Effect::Meaning, after.texts.name, codesBefore, codes);
    }
    const Sides names = NamesThatDiffer(before.texts.name, *before.value, after.texts.name, *after.value);
    if (names.before != names.after) {
        changes.Add(ChangeKind::Renamed, Aspect::Name, Effect::Meaning, codes, names.before, names.after);
    }
    if (withDescriptions && before.texts.description != after.texts.description) {
        changes.Add(ChangeKind::Changed, Aspect::Description, Effect::None, ValueItem(after),
                    before.texts.description, after.texts.description);
    }
}

/// The message about values that could not be read; 0 when there are none.
unsigned ValueLostBy(const ZMTParamEnum& enumeration) {
    unsigned count = 0;
    for (const Element* child = FindChildElement(ElementOfValues(enumeration), "TEnumValue");
         child != nullptr; child = FindNextSiblingElement(*child, "TEnumValue")) {
        ++count;
    }
    return count > enumeration.Count() ? kEnumValueFailed.number : 0;
}

/// A bit, what the catalog says of it, and what it is found by: its name, or its meanings where it has none.
struct NamedBit {
    const ZMTParamBoolField* bit;
    BitTexts texts;
    std::string name;
};

std::vector<NamedBit> NamedBits(const ZMTParamBitField& field) {
    std::vector<NamedBit> bits;
    for (const ZMTParamBoolField& bit : field.Items()) {
        BitTexts texts = OwnTexts(bit);
        std::string name = texts.name.empty() ? texts.Meanings() : texts.name;
        bits.push_back({&bit, std::move(texts), std::move(name)});
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
std::string BitItem(const NamedBit& bit) {
    return std::to_string(bit.bit->BitPos()) + (bit.texts.name.empty() ? "" : " ") + bit.texts.name;
}

void CompareBit(const NamedBit& before, const NamedBit& after, PartChanges& changes) {
    const std::string item = BitItem(after);
    if (before.bit->BitPos() != after.bit->BitPos()) {
        changes.Add(ChangeKind::Moved, Aspect::Number, Effect::Bytes, item,
                    std::to_string(before.bit->BitPos()), std::to_string(after.bit->BitPos()));
    }
    const Sides names = NamesThatDiffer(before.texts.name, *before.bit, after.texts.name, *after.bit);
    if (names.before != names.after) {
        changes.Add(ChangeKind::Renamed, Aspect::Name, Effect::Meaning, item, names.before, names.after);
    }
    if (before.texts.whenTrue != after.texts.whenTrue || before.texts.whenFalse != after.texts.whenFalse) {
        changes.Add(ChangeKind::Changed, Aspect::Texts, Effect::Meaning, item, before.texts.Meanings(),
                    after.texts.Meanings());
    }
}

bool AreSameBits(const ZMTParamBoolField& a, const ZMTParamBoolField& b) {
    return a.BitPos() == b.BitPos() && a.GetName() == b.GetName() && OwnTexts(a) == OwnTexts(b);
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

/// What a case is found by: the values of the selector, and other coordinates as the catalog has them. The
/// name of the selector says nothing more.
std::string CaseKey(const ZMTParamStreamCase& streamCase, const ZMTParam* selector) {
    const std::string& x = streamCase.PosXString();
    const bool isSelector = selector != nullptr && !streamCase.IsNameUnknown() &&
                            NamesEqual(SanitizeName(x), selector->GetName());
    std::string key = std::to_string(streamCase.PosYMin()) + ".." + std::to_string(streamCase.PosYMax());
    return isSelector || NamesEqual(x, kNoCoordinate) ? key : key.append(" ").append(x);
}

/// The cases of a stream, and when they stand in it.
struct Cases {
    std::vector<const ZMTParamStreamCase*> all;
    std::vector<std::string> keys;
    std::vector<Placed> places;

    Cases(const ZMTParamCaseStream& stream, Contents& contents) {
        for (const ZMTParamStreamCase& streamCase : stream.Items()) {
            all.push_back(&streamCase);
            keys.push_back(CaseKey(streamCase, stream.Selector()));
        }
        for (std::size_t i = 0; i < all.size(); ++i) {
            places.push_back({keys[i], contents.NumberOf(*all[i])});
        }
    }
};

}  // namespace

void CompareValues(const ZMTParamEnum& before, const Way& after, FunctionChanges& changes) {
    const auto& enumeration = static_cast<const ZMTParamEnum&>(*after.param);
    if (AreValuesWrittenAlike(before, enumeration) &&
        std::ranges::equal(before.Items(), enumeration.Items(), AreSameValues)) {
        return;
    }
    const std::vector<NamedValue> valuesBefore = NamedValues(before);
    const std::vector<NamedValue> valuesAfter = NamedValues(enumeration);
    PartChanges parts(Object::Value, before, after, changes);
    const Matches matches = MatchNumbered(NumberedValues(valuesBefore), NumberedValues(valuesAfter), nullptr);
    for (const auto& [i, j] : matches.pairs) {
        CompareValue(valuesBefore[i], valuesAfter[j], changes.AreDescriptionsCompared(), parts);
    }
    for (const std::size_t i : matches.removed) {
        parts.Removed(Effect::None, ValueItem(valuesBefore[i]), "", ValueLostBy(enumeration));
    }
    for (const std::size_t j : matches.added) {
        parts.Added(Effect::None, ValueItem(valuesAfter[j]), "", ValueLostBy(before));
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
        CompareBit(bitsBefore[i], bitsAfter[j], parts);
    }
    for (const std::size_t i : matches.removed) {
        parts.Removed(Effect::None, BitItem(bitsBefore[i]), bitsBefore[i].texts.Meanings(), 0);
    }
    for (const std::size_t j : matches.added) {
        parts.Added(Effect::None, BitItem(bitsAfter[j]), bitsAfter[j].texts.Meanings(), 0);
    }
}

void CompareCases(const ZMTParamCaseStream& before, const Way& after, FunctionChanges& changes) {
    const auto& stream = static_cast<const ZMTParamCaseStream&>(*after.param);
    Contents contents;
    const Cases casesBefore(before, contents);
    const Cases casesAfter(stream, contents);
    PartChanges parts(Object::Case, before, after, changes);
    const Matches matches = MatchPlaced(casesBefore.places, casesAfter.places);
    for (const auto& [i, j] : matches.pairs) {
        if (casesBefore.keys[i] != casesAfter.keys[j]) {
            const std::string text = CaseText(*casesAfter.all[j]);
            parts.Add(ChangeKind::Moved, Aspect::Number, Effect::Bytes, text, CaseText(*casesBefore.all[i]),
                      text);
        }
        CompareParams(*casesBefore.all[i], {&after, casesAfter.all[j]}, changes);
    }
    for (const std::size_t i : matches.removed) {
        parts.Removed(Effect::Bytes, CaseText(*casesBefore.all[i]), "", stream.CaseLostBy());
    }
    for (const std::size_t j : matches.added) {
        parts.Added(Effect::Bytes, CaseText(*casesAfter.all[j]), "", before.CaseLostBy());
    }
}

std::string RepetitionText(const ZMTParamStreamCase& streamCase) {
    const ZMTParam* first = streamCase.GetAt(streamCase.RepeatedFrom());
    return first == nullptr ? std::string() : "from " + ShortestName(*first) + " on";
}

}  // namespace tarvex::review
