/// Names given to new signals of one message after the other.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "export/signal_names.h"
#include "kestrel/kestrel.h"

namespace tarvex::test {

class SignalNamer {
  public:
    explicit SignalNamer(bool unique) : names_(writer_, unique) {
        writer_.CreateDatabase("names", &database_, nullptr);
        StartMessage();
    }

    /// The signals added from here on are those of a new message.
    void StartMessage() {
        message_ = writer_.CreateMessage(database_, 0);
        signals_.clear();
        names_.StartMessage();
    }

    /// Adds a signal to the message, and gives its whole name.
    std::string Add(const std::string& base, const std::string& suffix, std::size_t maxLength) {
        signals_.push_back(writer_.CreateSignal(*message_, 0));
        const std::string name = names_.Make(*message_, base, suffix, maxLength);
        name.copy(signals_.back()->name, kNameSize);
        return name;
    }

    /// The names of the message's signals as their records hold them.
    std::vector<std::string> RecordNames() const {
        std::vector<std::string> names;
        for (const sigblk* signal : signals_) {
            const std::string whole(signal->name, kNameSize);
            names.push_back(whole.substr(0, whole.find('\0')));
        }
        return names;
    }

  private:
    KestrelWriteManager writer_{nullptr};
    const char* database_ = nullptr;
    SignalNames names_;
    msgblk* message_ = nullptr;
    std::vector<sigblk*> signals_;
};

}  // namespace tarvex::test
