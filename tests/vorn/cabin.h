/// A small database that tests change and compare with itself.

#pragma once

#include "sample.h"

namespace vorn::test {

inline constexpr std::uint32_t kVolume = kExtendedIdentifier | 0x22400C;

inline Sample Cabin() {
    return {.definitions = {Integer("node", "Slot", 0, 255, 0), String("message", "Function", ""),
                            Enumeration("message", "Kind", {"Get", "Status"}, "Get"),
                            String("database", "Author", "nobody")},
            .nodes = {{"Amp", {{"Slot", 1.0}}}, {"Tuner"}},
            .messages = {{kVolume,
                          "Amp_Volume_Status",
                          2,
                          {{"Volume", 7, 8, kBig, 0, {{0, "Off"}, {1, "On"}}},
                           {"Case", 8, 2, kSelector},
                           {"Low", 12, 4, kSelected, 1}},
                          "Amp",
                          {{"Function", "Volume"}, {"Kind", "Status"}}},
                         {0x10, "Ping", 0}}};
}

}  // namespace vorn::test
