#include "review/diff.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>
#include <utility>

#include "import/text/format_text.h"
#include "kestrel/keyed_hash.h"
#include "review/counted.h"
#include "review/diff_function.h"
#include "review/diff_layout.h"
#include "review/diff_match.h"
#include "review/diff_params.h"
#include "review/own_texts.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

/// A block or function in both catalogs, or in one of them.
template <class T>
struct Counterparts {
    const T* before = nullptr;
    const T* after = nullptr;

    const T& Newest() const { return after != nullptr ? *after : *before; }
};

std::uint32_t NumberOf(const ZMTFBlock& block) {
    return block.FBlockID();
}
std::uint32_t NumberOf(const ZMTFunction& function) {
    return function.FunctionID();
}

std::string NumberText(const ZMTFBlock& block) {
    return FormatText("%02X", block.FBlockID());
}
std::string NumberText(const ZMTFunction& function) {
    return FormatText("%03X", function.FunctionID());
}

template <class T>
Place PlaceOf(const Counterparts<T>& pair) {
    return {ShownText(pair.Newest().GetName()), NumberOf(pair.Newest())};
}

/// How many names two nodes have in common, and how many the larger one has.
class CommonNames {
  public:
    void Before(const std::string& name) {
        ++left_[name];
        ++before_;
    }
    void After(const std::string& name) {
        ++after_;
        if (const auto found = left_.find(name); found != left_.end() && found->second > 0) {
            --found->second;
            ++common_;
        }
    }
    bool AreMost() const { return 2 * common_ >= std::max(before_, after_); }

  private:
    kestrel::KeyedMap<std::string, std::size_t> left_;
    std::size_t before_ = 0;
    std::size_t after_ = 0;
    std::size_t common_ = 0;
};

/// Calls for the name of everything that a node is known by.
template <class Call>
void VisitNames(const ZMTFBlock& block, const Call& call) {
    for (const ZMTFunction& function : block.Items()) {
        call(function.GetName());
    }
}
template <class Call>
void VisitNames(const ZMTFunction& function, const Call& call) {
    for (const ZMTOperation& operation : function.Items()) {
        for (const ZMTParam& param : operation.Items()) {
            call(param.GetName());
        }
    }
}

template <class T>
bool HaveMostNamesInCommon(const T& before, const T& after) {
    CommonNames names;
    VisitNames(before, [&](const std::string& name) { names.Before(name); });
    VisitNames(after, [&](const std::string& name) { names.After(name); });
    return names.AreMost();
}

template <class T>
std::vector<const T*> ItemsOf(ItemRange<const T> items) {
    std::vector<const T*> list;
    for (const T& item : items) {
        list.push_back(&item);
    }
    return list;
}

template <class T>
std::vector<Numbered> NumberedNodes(const std::vector<const T*>& nodes) {
    std::vector<Numbered> numbered;
    numbered.reserve(nodes.size());
    for (const T* node : nodes) {
        numbered.push_back({NumberOf(*node), node->GetName()});
    }
    return numbered;
}

/// What belongs together, in the order of the newest numbers.
template <class T>
std::vector<Counterparts<T>> CounterpartsOf(ItemRange<const T> itemsBefore, ItemRange<const T> itemsAfter) {
    const std::vector<const T*> before = ItemsOf(itemsBefore);
    const std::vector<const T*> after = ItemsOf(itemsAfter);
    const Matches matches = MatchNumbered(
        NumberedNodes(before), NumberedNodes(after),
        [&](std::size_t i, std::size_t j) { return HaveMostNamesInCommon(*before[i], *after[j]); });
    std::vector<Counterparts<T>> pairs;
    for (const auto& [i, j] : matches.pairs) {
        pairs.push_back({before[i], after[j]});
    }
    for (const std::size_t i : matches.removed) {
        pairs.push_back({before[i], nullptr});
    }
    for (const std::size_t j : matches.added) {
        pairs.push_back({nullptr, after[j]});
    }
    std::ranges::stable_sort(pairs, {}, [](const Counterparts<T>& pair) { return NumberOf(pair.Newest()); });
    return pairs;
}

/// The names of the operations of a function, of those whose bit is set.
std::vector<std::string_view> NamesOfOperations(const ZMTFunction& function, std::uint16_t operations) {
    std::vector<std::string_view> names;
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        if ((operations >> opType & 1U) != 0) {
            names.emplace_back(OperationName(function.Class(), opType));
        }
    }
    return names;
}

/// What a function is, where only one catalog has it.
std::string WholeText(const ZMTFunction& function) {
    std::string names;
    for (const ZMTOperation& operation : function.Items()) {
        names.append(names.empty() ? "" : ", ").append(operation.GetName());
    }
    return names.empty() ? "no operations" : names;
}

std::string ParameterNames(const ZMTOperation& operation) {
    std::string names;
    for (const ZMTParam& param : operation.Items()) {
        if (param.IsType(kParamVoid)) {
            continue;
        }
        names.append(names.empty() ? "" : ", ").append(ShortestName(param));
        if (names.size() > kMaxKeptText) {
            break;
        }
    }
    return names.empty() ? "no parameters" : names;
}

std::string_view ClassName(const ZMTFunction& function) {
    switch (function.Class()) {
        case ClassKind::Property:
            return "property";
        case ClassKind::Method:
            return "method";
        case ClassKind::Unknown:
        case ClassKind::ErrorFunction:
            break;
    }
    return "unknown";
}

Change NodeChange(Object object, ChangeKind kind, Aspect aspect, Effect effect, std::string_view before = {},
                  std::string_view after = {}) {
    Change change;
    change.object = object;
    change.kind = kind;
    change.aspect = aspect;
    change.effect = effect;
    SetSides(change, before, after);
    return change;
}

/// A node that only one catalog has. `whole`: what it was or is.
Change ExistenceChange(Object object, bool isAdded, const std::string& whole, unsigned lostBy) {
    Change change = NodeChange(object, isAdded ? ChangeKind::Added : ChangeKind::Removed, Aspect::Existence,
                               Effect::Bytes, isAdded ? "" : whole, isAdded ? whole : "");
    change.lostBy = lostBy;
    return change;
}

/// Name and number of a node that both catalogs have. `add` takes what has changed.
template <class T, class Add>
void CompareHeads(const Counterparts<T>& pair, Object object, const Add& add) {
    const auto& [before, after] = pair;
    if (NumberOf(*before) != NumberOf(*after)) {
        add(NodeChange(object, ChangeKind::Moved, Aspect::Number, Effect::Bytes, NumberText(*before),
                       NumberText(*after)));
    }
    if (!HaveSameNames(*before, *after)) {
        const Sides names = NamesThatDiffer(*before, *after);
        add(NodeChange(object, ChangeKind::Renamed, Aspect::Name, Effect::None, names.before, names.after));
    }
}

unsigned LossOf(const ZMTFunction& function, unsigned opType) {
    const Hole* lost = function.LostParams().FirstOf(opType);
    if (lost == nullptr) {
        lost = function.LostParams().FirstOf(kEveryOperation);
    }
    return lost == nullptr ? 0 : lost->message;
}

const Element* FirstElement(const ZMTOperation& operation) {
    const ZMTParam* first = operation.GetAt(0);
    return first == nullptr ? nullptr : first->GetElement();
}

void CompareOperations(const Counterparts<ZMTFunction>& function, FunctionChanges& changes) {
    const auto& [before, after] = function;
    const unsigned end = std::max(before->Size(), after->Size());
    for (unsigned opType = 0; opType < end; ++opType) {
        const ZMTOperation* old = before->GetAt(opType);
        const ZMTOperation* now = after->GetAt(opType);
        if (old != nullptr && now != nullptr) {
            changes.BeginOperation(opType);
            CompareLists(ItemsOf(std::as_const(*old).Items()), ItemsOf(std::as_const(*now).Items()), nullptr,
                         {LossOf(*before, opType), LossOf(*after, opType)}, changes);
            CompareLayouts(*old, *now, changes);
        } else if (old != nullptr || now != nullptr) {
            const bool isAdded = now != nullptr;
            const ZMTOperation& only = isAdded ? *now : *old;
            Change change = ExistenceChange(Object::Operation, isAdded, ParameterNames(only),
                                            LossOf(isAdded ? *before : *after, opType));
            change.item = only.GetName();
            const Element* element = FirstElement(only);
            changes.Add(std::move(change), isAdded ? Origin{nullptr, element} : Origin{element, nullptr});
        }
    }
}

template <class T>
void CompareDescriptions(const Counterparts<T>& pair, Object object, const char* name,
                         FunctionChanges& changes) {
    if (!changes.AreDescriptionsCompared()) {
        return;
    }
    const std::string before = DescriptionText(ElementOf(*pair.before), name);
    const std::string after = DescriptionText(ElementOf(*pair.after), name);
    if (before != after) {
        changes.Add(NodeChange(object, ChangeKind::Changed, Aspect::Description, Effect::None, before, after),
                    {});
    }
}

/// Puts the changes of blocks and functions into one list.
class CatalogComparison {
  public:
    explicit CatalogComparison(const DiffOptions& options) : options_(options) {}

    void CompareBlocks(const Counterparts<ZMTCatalog>& catalog) {
        for (const Counterparts<ZMTFBlock>& block :
             CounterpartsOf<ZMTFBlock>(catalog.before->Items(), catalog.after->Items())) {
            block_ = PlaceOf(block);
            function_.reset();
            CompareBlock(catalog, block);
        }
    }

    std::vector<Change> Take() { return std::move(changes_); }

  private:
    void CompareBlock(const Counterparts<ZMTCatalog>& catalog, const Counterparts<ZMTFBlock>& block) {
        FunctionChanges changes(options_);
        if (block.before == nullptr || block.after == nullptr) {
            const bool isAdded = block.before == nullptr;
            const unsigned lostBy =
                (isAdded ? catalog.before : catalog.after)->LostBlocks().MessageOf(block_.number);
            changes.Add(
                ExistenceChange(Object::Block, isAdded, Counted(block.Newest().Count(), "function"), lostBy),
                {});
            return Take(changes, nullptr);
        }
        CompareHeads(block, Object::Block, [&](Change change) { changes.Add(std::move(change), {}); });
        CompareDescriptions(block, Object::Block, "FBlockDescription", changes);
        Take(changes, nullptr);
        for (const Counterparts<ZMTFunction>& function :
             CounterpartsOf<ZMTFunction>(block.before->Items(), block.after->Items())) {
            function_ = PlaceOf(function);
            CompareFunction(block, function);
        }
    }

    void CompareFunction(const Counterparts<ZMTFBlock>& block, const Counterparts<ZMTFunction>& function) {
        FunctionChanges changes(options_);
        const auto& [before, after] = function;
        if (before == nullptr || after == nullptr) {
            const bool isAdded = before == nullptr;
            const unsigned lostBy =
                (isAdded ? block.before : block.after)->LostFunctions().MessageOf(function_->number);
            changes.Add(ExistenceChange(Object::Function, isAdded, WholeText(function.Newest()), lostBy), {});
            return Take(changes, &function);
        }
        CompareHeads(function, Object::Function, [&](Change change) { changes.Add(std::move(change), {}); });
        if (before->Class() != after->Class()) {
            changes.Add(NodeChange(Object::Function, ChangeKind::Changed, Aspect::Class, Effect::Meaning,
                                   ClassName(*before), ClassName(*after)),
                        {});
        }
        CompareDescriptions(function, Object::Function, "FunctionDescription", changes);
        CompareOperations(function, changes);
        Take(changes, &function);
    }

    void Take(FunctionChanges& found, const Counterparts<ZMTFunction>* function) {
        for (FunctionChange& part : found.Take()) {
            part.change.block = block_;
            part.change.function = function_;
            if (function != nullptr) {
                part.change.operations = NamesOfOperations(function->Newest(), part.operations);
            }
            Add(std::move(part));
        }
    }

    /// Definitions that many functions refer to change once.
    void Add(FunctionChange part) {
        const Origin& origin = part.origin;
        if (origin.before != nullptr || origin.after != nullptr) {
            std::string key = AddressText(origin.before) + AddressText(origin.after);
            key.append(std::to_string(part.operations)).append("\n").append(part.content);
            const auto [found, isNew] = shared_.try_emplace(std::move(key), changes_.size());
            if (!isNew) {
                ++changes_[found->second].alsoIn;
                return;
            }
        }
        changes_.push_back(std::move(part.change));
    }

    static std::string AddressText(const Element* element) {
        return std::to_string(std::bit_cast<std::uintptr_t>(element)) + "\n";
    }

    DiffOptions options_;
    Place block_;
    std::optional<Place> function_;
    std::vector<Change> changes_;
    kestrel::KeyedMap<std::string, std::size_t> shared_;  // changes by what they are about
};

}  // namespace

std::vector<Change> CompareCatalogs(const ZMTCatalog& before, const ZMTCatalog& after,
                                    const DiffOptions& options) {
    CatalogComparison comparison(options);
    comparison.CompareBlocks({&before, &after});
    return comparison.Take();
}

}  // namespace tarvex::review
