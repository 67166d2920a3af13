#include "vorn/check.h"

#include <algorithm>
#include <set>

#include "drawing/layout.h"
#include "import/text/shown_text.h"
#include "kestrel/json_text.h"
#include "kestrel/keyed_hash.h"
#include "kestrel/model_text.h"
#include "vorn/describe.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::Signal;
using tarvex::Shown;

/// Of one message so many overlaps are told, and so many pairs of runs compared: real messages have a few
/// hundred signals, of which none or a handful overlap.
constexpr std::size_t kMaxOverlaps = 1000;
constexpr std::size_t kMaxComparisons = 20'000'000;

std::string NameOf(const Signal& signal) {
    return Shown(kestrel::NameText(signal.name));
}

std::string NameOf(const Message& message) {
    return Shown(kestrel::NameText(message.name));
}

/// Collects faults, and names that occur twice.
class Checker {
  public:
    explicit Checker(const kestrel::Database& database) : database_(database) {}

    std::vector<std::string> Run() {
        CheckNodes();
        CheckMessages();
        return std::move(faults_);
    }

  private:
    void CheckNodes() {
        kestrel::KeyedSet<std::string> names;
        for (const kestrel::Node& node : database_.Nodes()) {
            const std::string name = kestrel::NameText(node.name);
            if (!names.insert(name).second) {
                faults_.push_back("node " + Shown(name) + ": the name occurs twice");
            }
        }
    }

    void CheckMessages() {
        kestrel::KeyedSet<std::string> names;
        kestrel::KeyedMap<std::uint32_t, const Message*> identifiers;
        for (const Message& message : database_.Messages()) {
            if (!names.insert(kestrel::NameText(message.name)).second) {
                Add(message, "the name occurs twice");
            }
            const auto [other, isNew] = identifiers.try_emplace(message.identifier, &message);
            if (!isNew) {
                Add(message, "has the identifier " + IdentifierText(message.identifier) + " of " +
                                 NameOf(*other->second));
            }
            CheckSignals(message);
        }
    }

    void CheckSignals(const Message& message) {
        kestrel::KeyedSet<std::string> names;
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            if (!names.insert(kestrel::NameText(signal->name)).second) {
                Add(message, "the name of signal " + NameOf(*signal) + " occurs twice");
            }
            if (EndByte(*signal) > message.length) {
                Add(message,
                    "signal " + NameOf(*signal) + " needs " + std::to_string(EndByte(*signal)) +
                        (EndByte(*signal) == 1 ? " byte, the message has " : " bytes, the message has ") +
                        std::to_string(message.length));
            }
            CheckRange(message, *signal);
        }
        CheckOverlaps(message);
    }

    void CheckRange(const Message& message, const Signal& signal) {
        const sigscale* scaling = signal.scaling;
        if (scaling != nullptr && scaling->minimum && scaling->maximum &&
            *scaling->minimum > *scaling->maximum) {
            std::string text = "the minimum of signal " + NameOf(signal) + ", ";
            kestrel::AppendShortNumber(text, *scaling->minimum);
            kestrel::AppendShortNumber(text += ", is above its maximum, ", *scaling->maximum);
            Add(message, text);
        }
    }

    /// Goes through the runs of bits from the beginning of the message to its end, and compares each with
    /// those that have not ended.
    void CheckOverlaps(const Message& message) {
        struct Run {
            BitRange range;
            const Signal* signal;
            std::size_t number;  // of the signal
        };
        std::vector<Run> runs;
        std::size_t number = 0;
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next, ++number) {
            for (const BitRange& range : RangesOf(*signal)) {
                runs.push_back({range, signal, number});
            }
        }
        std::ranges::stable_sort(runs, {}, [](const Run& run) { return run.range.begin; });
        std::set<std::pair<std::size_t, std::size_t>> told;
        std::vector<Run> open;
        std::size_t comparisons = 0;
        for (const Run& run : runs) {
            std::erase_if(open, [&](const Run& other) { return other.range.end <= run.range.begin; });
            comparisons += open.size();
            if (told.size() >= kMaxOverlaps || comparisons > kMaxComparisons) {
                Add(message, "more signals may overlap");
                return;
            }
            for (const Run& other : open) {
                const auto [first, second] = std::minmax(run.number, other.number);
                if (first == second || !CanMeet(*run.signal, *other.signal)) {
                    continue;
                }
                if (!told.emplace(first, second).second) {
                    continue;
                }
                const bool isFirst = run.number == first;
                Add(message, "signals " + NameOf(isFirst ? *run.signal : *other.signal) + " and " +
                                 NameOf(isFirst ? *other.signal : *run.signal) + " overlap");
            }
            open.push_back(run);
        }
    }

    void Add(const Message& message, const std::string& what) {
        faults_.push_back("message " + NameOf(message) + ": " + what);
    }

    const kestrel::Database& database_;
    std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> Check(const kestrel::Database& database) {
    return Checker(database).Run();
}

}  // namespace vorn
