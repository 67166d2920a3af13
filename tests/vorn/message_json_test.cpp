/// Messages as JSON.

#include "vorn/message_json.h"

#include <gtest/gtest.h>

#include "sample.h"
#include "vorn/selection.h"

namespace vorn::test {
namespace {

TEST(MessagesJson, IsAnObjectOnEachLine) {
    const auto database =
        Build({.definitions = {String("message", "FBlock", "Gene\"ral"), String("message", "Function", "")},
               .nodes = {{"Amp"}},
               .messages = {{kExtendedIdentifier | 0x22402C,
                             "Amp_Bass_Stat",
                             2,
                             {{"Bass", 7, 8, kBig}, {"Treble", 15, 8, kBig}},
                             "Amp",
                             {{"FBlock", "Amp"}, {"Function", "Bass"}}},
                            {0x1000000, "Wide"}}});
    EXPECT_EQ(MessagesJson(*database, Select(*database, {})),
              R"([
  {"address": "22.402.C", "fblock": "Amp", "function": "Bass", "optype": "", "identifier": 2244652, "extended": true, "name": "Amp_Bass_Stat", "length": 2, "node": "Amp", "signals": 2},
  {"address": "", "fblock": "Gene\"ral", "function": "", "optype": "", "identifier": 16777216, "extended": false, "name": "Wide", "length": 0, "node": null, "signals": 0}
]
)");
    EXPECT_EQ(MessagesJson(*database, {}), "[]\n");
}

}  // namespace
}  // namespace vorn::test
