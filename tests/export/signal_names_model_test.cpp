/// Signal names compared with a plain model that tries every number from 0 for every name. The bases are
/// pseudo-random but the same at every run: of few letters, so that numbered names meet names of other bases,
/// and of lengths around the cuts. Both have to give the same names in the same order.

#include <algorithm>
#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <unordered_set>

#include <gtest/gtest.h>

#include "export/signal_namer.h"

namespace tarvex::test::signal_names_model_test {
namespace {

class NameModel {
  public:
    explicit NameModel(bool unique) : unique_(unique) {}

    void StartMessage() { inMessage_.clear(); }

    std::string Add(std::string base, std::string suffix, std::size_t maxLength) {
        if (suffix.size() > maxLength - 4) {
            suffix = suffix.substr(0, maxLength - 4);
        }
        const std::size_t room = maxLength - suffix.size() - (unique_ ? 3 : 0);
        if (base.size() > room) {
            std::string shorter = base.substr(0, 3);
            for (const char c : base.substr(std::min<std::size_t>(3, base.size()))) {
                if (std::string("aeiou").find(c) == std::string::npos) {
                    shorter += c;
                }
            }
            base = shorter.substr(0, room);
        }
        for (unsigned n = 0;; ++n) {
            const std::string name = base + Letters(n) + suffix;
            // The new signal's own name is still empty.
            const bool isInMessage = name.empty() || inMessage_.contains(name);
            if (!isInMessage && !(unique_ && used_.contains(name))) {
                used_.insert(name);
                inMessage_.insert(name.substr(0, kNameSize));
                return name;
            }
        }
    }

  private:
    static std::string Letters(unsigned n) {
        std::string letters;
        for (; n > 0; n /= 26) {
            letters.insert(letters.begin(), static_cast<char>('A' + n % 26));
        }
        return letters;
    }

    bool unique_;
    std::unordered_set<std::string> used_;
    std::unordered_set<std::string> inMessage_;  // as the records hold them
};

/// The generator's numbers are the same with every library; distributions would not be.
class RandomStems {
  public:
    explicit RandomStems(unsigned seed) : random_(seed) {}

    std::size_t Below(std::size_t end) { return random_() % end; }

    /// Up to six letters that look like numbers, in front of them often a long piece.
    std::string Base() {
        static const std::array<std::string, 8> kPieces = {
            "",
            "T",
            "Temp",
            "TemperatureOfTheOutside",         // 23
            "BcdfghjklmnpqrstBcdfgh",          // 22
            "BcdfghjklmnpqrstBcdfghjkl",       // 25
            "BcdfghjklmnpqrstBcdfghjklmn",     // 27
            "BcdfghjklmnpqrstBcdfghjklmnpqr",  // 30
        };
        std::string base = kPieces[Below(kPieces.size())];
        for (std::size_t left = Below(7); left > 0; --left) {
            base += "ABCZaX_"[Below(7)];
        }
        return base;
    }

    std::string Suffix() {
        static const std::array<std::string, 8> kSuffixes = {
            "", "", "X", "B", "_M0", "_M1f", "BX", "_M0123456789abcdefghijklmnopqrs"};
        return kSuffixes[Below(kSuffixes.size())];
    }

    std::size_t MaxLength() {
        static const std::array<std::size_t, 6> kLengths = {32, 32, 26, 26, 8, 12};
        return kLengths[Below(kLengths.size())];
    }

  private:
    std::mt19937 random_;
};

/// Asks both for names in messages of 1 to `signals` signals each.
void ExpectEqualNames(unsigned seed, bool unique, unsigned count, std::size_t signals) {
    SCOPED_TRACE(::testing::Message() << "seed " << seed << (unique ? ", unique" : ""));
    RandomStems stems(seed);
    SignalNamer namer(unique);
    NameModel model(unique);
    for (std::size_t left = 0; count > 0; --count, --left) {
        if (left == 0) {
            left = 1 + stems.Below(signals);
            namer.StartMessage();
            model.StartMessage();
        }
        const std::string base = stems.Base();
        const std::string suffix = stems.Suffix();
        const std::size_t maxLength = stems.MaxLength();
        ASSERT_EQ(namer.Add(base, suffix, maxLength), model.Add(base, suffix, maxLength))
            << base << " and " << suffix << " in " << maxLength << ", " << count << " before the end";
    }
}

constexpr unsigned kNames = 3000;

TEST(SignalNamesModel, GivesTheSameNamesInSmallMessages) {
    for (const unsigned seed : {1U, 2U}) {
        ExpectEqualNames(seed, true, kNames, 20);
        ExpectEqualNames(seed, false, kNames, 20);
    }
}

TEST(SignalNamesModel, GivesTheSameNamesInLargeMessages) {
    ExpectEqualNames(3, true, kNames, 2000);
    ExpectEqualNames(3, false, kNames, 2000);
}

/// Of two letters and up to three characters: nearly every name meets another one.
TEST(SignalNamesModel, GivesTheSameNamesOfVeryShortBases) {
    for (const bool unique : {true, false}) {
        RandomStems stems(4);
        SignalNamer namer(unique);
        NameModel model(unique);
        for (unsigned call = 0; call < kNames; ++call) {
            if (call % 500 == 499) {
                namer.StartMessage();
                model.StartMessage();
            }
            std::string base;
            for (std::size_t left = stems.Below(4); left > 0; --left) {
                base += "AB"[stems.Below(2)];
            }
            const std::string suffix = stems.Below(3) == 0 ? "B" : "";
            ASSERT_EQ(namer.Add(base, suffix, 32), model.Add(base, suffix, 32))
                << base << " and " << suffix << " at " << call;
        }
    }
}

}  // namespace
}  // namespace tarvex::test::signal_names_model_test
