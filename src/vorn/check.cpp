#include "vorn/check.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "drawing/layout.h"
#include "kestrel/json_text.h"
#include "kestrel/keyed_hash.h"
#include "kestrel/model_text.h"
#include "vorn/describe.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::NameText;
using kestrel::Signal;

/// Of one message so many overlaps are told, and so many pairs of runs compared: real messages have a few
/// hundred signals, of which none or a handful overlap.
constexpr std::size_t kMaxOverlaps = 1000;
constexpr std::size_t kMaxComparisons = 20'000'000;

Fault FaultOf(Cause cause, const kestrel::Node& node) {
    return {cause, "node", NameText(node.name)};
}

Fault FaultOf(Cause cause, const Message& message) {
    return {cause, "message", NameText(message.name), message.identifier};
}

void Note(Fault& fault, const std::string& example, const std::string& sentence) {
    if (++fault.count == 1) {
        fault.sentence = sentence;
    }
    if (fault.examples.size() < kMaxExamples) {
        fault.examples.push_back(example);
    }
}

std::string Bytes(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

/// A run of bits and the signal that has it.
struct Run {
    BitRange range;
    const Signal* signal;
    std::size_t number;  // of the signal
};

std::vector<Run> RunsOf(const Message& message) {
    std::vector<Run> runs;
    std::size_t number = 0;
    for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next, ++number) {
        for (const BitRange& range : RangesOf(*signal)) {
            runs.push_back({range, signal, number});
        }
    }
    std::ranges::stable_sort(runs, {}, [](const Run& run) { return run.range.begin; });
    return runs;
}

/// Runs that have not ended where the next one begins.
class OpenRuns {
  public:
    /// Those that have bits of this one while it is there, in the order in which they were added. Runs come
    /// in the order of their beginnings.
    std::vector<const Run*> Meeting(const Run& run) {
        std::vector<const Run*> meeting;
        if ((run.signal->flags & kSignalMultiplexed) == 0) {
            for (auto group = groups_.begin(); group != groups_.end();) {
                AppendOpen(group->second, run, meeting);
                group = group->second.empty() ? groups_.erase(group) : std::next(group);
            }
        } else {
            for (const Key key : {Key(), Key(run.signal->multiplexer_value)}) {
                if (const auto group = groups_.find(key); group != groups_.end()) {
                    AppendOpen(group->second, run, meeting);
                }
            }
        }
        std::ranges::sort(meeting);  // they lie behind each other
        return meeting;
    }

    void Add(const Run& run) {
        const bool isMultiplexed = (run.signal->flags & kSignalMultiplexed) != 0;
        groups_[isMultiplexed ? Key(run.signal->multiplexer_value) : Key()].push_back(&run);
    }

  private:
    using Key = std::optional<std::uint32_t>;
    using Group = std::vector<const Run*>;

    static void AppendOpen(Group& group, const Run& run, Group& open) {
        std::erase_if(group, [&](const Run* other) { return other->range.end <= run.range.begin; });
        open.insert(open.end(), group.begin(), group.end());
    }

    /// By the value of the multiplexor; those of signals that are always there by none.
    std::map<Key, Group> groups_;
};

/// Collects faults, and names that occur twice.
class Checker {
  public:
    explicit Checker(const kestrel::Database& database) : database_(database) {}

    std::vector<Fault> Faults() {
        kestrel::KeyedMap<std::string, Seen<kestrel::Node>> nodes;
        for (const kestrel::Node& node : database_.Nodes()) {
            CheckName(node, nodes);
        }
        kestrel::KeyedMap<std::string, Seen<Message>> names;
        kestrel::KeyedMap<std::uint32_t, const Message*> identifiers;
        for (const Message& message : database_.Messages()) {
            CheckName(message, names);
            const auto [other, isNew] = identifiers.try_emplace(message.identifier, &message);
            if (!isNew) {
                const std::string name = NameText(other->second->name);
                Fault fault = FaultOf(Cause::Identifier, message);
                Note(fault, name, "has the identifier " + IdentifierText(message.identifier) + " of " + name);
                Keep(std::move(fault));
            }
            CheckSignals(message);
        }
        return std::move(faults_);
    }

  private:
    static constexpr std::size_t kNoFault = static_cast<std::size_t>(-1);

    void Keep(Fault fault) {
        if (fault.count > 0) {
            faults_.push_back(std::move(fault));
        }
    }

    /// A name that has been seen.
    template <class Record>
    struct Seen {
        const Record* first;
        std::size_t fault = kNoFault;
    };

    template <class Record>
    void CheckName(const Record& record, kestrel::KeyedMap<std::string, Seen<Record>>& names) {
        const auto [entry, isNew] = names.try_emplace(NameText(record.name), Seen<Record>{&record});
        if (isNew) {
            return;
        }
        if (entry->second.fault == kNoFault) {
            entry->second.fault = faults_.size();
            faults_.push_back(FaultOf(Cause::Name, record));
            AddExample(faults_.back(), *entry->second.first);
        }
        Fault& fault = faults_[entry->second.fault];
        ++fault.count;
        AddExample(fault, record);
    }

    /// Messages of one name are told apart by their identifiers, nodes not at all.
    static void AddExample(Fault& /*fault*/, const kestrel::Node& /*node*/) {}
    static void AddExample(Fault& fault, const Message& message) {
        if (fault.examples.size() < kMaxExamples) {
            fault.examples.push_back(IdentifierText(message.identifier));
        }
    }

    void CheckSignals(const Message& message) {
        Fault name = FaultOf(Cause::SignalName, message);
        Fault end = FaultOf(Cause::End, message);
        Fault range = FaultOf(Cause::Range, message);
        kestrel::KeyedSet<std::string> names;
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            const std::string text = NameText(signal->name);
            if (!names.insert(text).second) {
                Note(name, text, "the name of signal " + text + " occurs twice");
            }
            if (const std::size_t bytes = EndByte(*signal); bytes > message.length) {
                Note(end, text + " (" + Bytes(bytes) + ")",
                     "signal " + text + " needs " + Bytes(bytes) + ", the message has " +
                         std::to_string(message.length));
            }
            CheckRange(*signal, text, range);
        }
        Keep(std::move(name));
        Keep(std::move(end));
        Keep(std::move(range));
        CheckMultiplexor(message);
        CheckOverlaps(message);
    }

    static void CheckRange(const Signal& signal, const std::string& name, Fault& fault) {
        const sigscale* scaling = signal.scaling;
        if (scaling == nullptr || !scaling->minimum || !scaling->maximum ||
            *scaling->minimum <= *scaling->maximum) {
            return;
        }
        std::string sentence = "the minimum of signal " + name + ", ";
        kestrel::AppendShortNumber(sentence, *scaling->minimum);
        kestrel::AppendShortNumber(sentence += ", is above its maximum, ", *scaling->maximum);
        Note(fault, name, sentence);
    }

    void CheckMultiplexor(const Message& message) {
        Fault fault = FaultOf(Cause::Multiplexor, message);
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            if ((signal->flags & kSignalMultiplexor) != 0) {
                return;
            }
            if ((signal->flags & kSignalMultiplexed) != 0) {
                const std::string name = NameText(signal->name);
                Note(fault, name, "signal " + name + " is multiplexed, but there is no multiplexor");
            }
        }
        Keep(std::move(fault));
    }

    /// Goes through the runs of bits from the beginning of the message to its end, and compares each with
    /// those that have not ended.
    void CheckOverlaps(const Message& message) {
        Fault fault = FaultOf(Cause::Overlap, message);
        std::set<std::pair<std::size_t, std::size_t>> told;
        OpenRuns open;
        std::size_t comparisons = 0;
        const std::vector<Run> runs = RunsOf(message);
        for (const Run& run : runs) {
            const std::vector<const Run*> meeting = open.Meeting(run);
            comparisons += meeting.size();
            fault.isAtLeast = told.size() >= kMaxOverlaps || comparisons > kMaxComparisons;
            if (fault.isAtLeast) {
                break;
            }
            for (const Run* other : meeting) {
                const auto pair = std::minmax(run.number, other->number);
                if (pair.first != pair.second && told.emplace(pair).second) {
                    const bool isFirst = run.number == pair.first;
                    NoteOverlap(fault, isFirst ? *run.signal : *other->signal,
                                isFirst ? *other->signal : *run.signal);
                }
            }
            open.Add(run);
        }
        Keep(std::move(fault));
    }

    static void NoteOverlap(Fault& fault, const Signal& first, const Signal& second) {
        const std::string pair = NameText(first.name) + " and " + NameText(second.name);
        Note(fault, pair, "signals " + pair + " overlap");
    }

    const kestrel::Database& database_;
    std::vector<Fault> faults_;
};

}  // namespace

std::vector<Fault> FaultsOf(const kestrel::Database& database) {
    return Checker(database).Faults();
}

}  // namespace vorn
