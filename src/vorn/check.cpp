#include "vorn/check.h"

#include <map>
#include <unordered_map>
#include <unordered_set>

#include "kestrel/model_text.h"
#include "vorn/describe.h"
#include "vorn/layout.h"
#include "vorn/style.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::Signal;

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
        std::unordered_set<std::string> names;
        for (const kestrel::Node& node : database_.nodes()) {
            const std::string name = kestrel::NameText(node.name);
            if (!names.insert(name).second)
                faults_.push_back("node " + Shown(name) + ": the name occurs twice");
        }
    }

    void CheckMessages() {
        std::unordered_set<std::string> names;
        std::unordered_map<std::uint32_t, const Message*> identifiers;
        for (const Message& message : database_.messages()) {
            if (!names.insert(kestrel::NameText(message.name)).second) Add(message, "the name occurs twice");
            const auto [other, is_new] = identifiers.try_emplace(message.identifier, &message);
            if (!is_new) {
                Add(message, "has the identifier " + IdentifierText(message.identifier) + " of " +
                                 NameOf(*other->second));
            }
            CheckSignals(message);
        }
    }

    void CheckSignals(const Message& message) {
        std::unordered_set<std::string> names;
        for (const Signal* signal = message.first_signal; signal != nullptr; signal = signal->next) {
            if (!names.insert(kestrel::NameText(signal->name)).second) {
                Add(message, "the name of signal " + NameOf(*signal) + " occurs twice");
            }
            if (EndByte(*signal) > message.length) {
                Add(message, "signal " + NameOf(*signal) + " needs " + std::to_string(EndByte(*signal)) +
                                 " bytes, the message has " + std::to_string(message.length));
            }
        }
        CheckOverlaps(message);
    }

    /// Looks at every bit once for each signal that takes it. Signals that are multiplexed for different
    /// values never meet, so there is a map of the bits for each value, and one for the signals that are
    /// always there.
    void CheckOverlaps(const Message& message) {
        std::unordered_map<BitPosition, const Signal*> always;
        std::map<std::uint32_t, std::unordered_map<BitPosition, const Signal*>> multiplexed;
        for (const Signal* signal = message.first_signal; signal != nullptr; signal = signal->next) {
            if ((signal->flags & kSignalMultiplexed) == 0) Claim(message, *signal, always, nullptr);
        }
        for (const Signal* signal = message.first_signal; signal != nullptr; signal = signal->next) {
            if ((signal->flags & kSignalMultiplexed) == 0) continue;
            Claim(message, *signal, multiplexed[signal->multiplexer_value], &always);
        }
    }

    /// One line tells of all bits that two signals share.
    void Claim(const Message& message, const Signal& signal,
               std::unordered_map<BitPosition, const Signal*>& bits,
               const std::unordered_map<BitPosition, const Signal*>* more) {
        const Signal* told = nullptr;
        for (const BitPosition bit : BitsOf(signal)) {
            const auto [owner, is_new] = bits.try_emplace(bit, &signal);
            const Signal* other = is_new ? nullptr : owner->second;
            if (other == nullptr && more != nullptr) {
                const auto found = more->find(bit);
                if (found != more->end()) other = found->second;
            }
            if (other == nullptr || other == told || other == &signal) continue;
            told = other;
            Add(message, "signals " + NameOf(*other) + " and " + NameOf(signal) + " overlap");
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
