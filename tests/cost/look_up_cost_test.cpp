/// Looking records of a database up takes work that grows with the number of look-ups, not with its square.

#include <string>

#include <gtest/gtest.h>

#include "cost/work.h"
#include "kestrel/kestrel.h"

namespace tarvex::test::look_up_cost_test {
namespace {

void SetName(char (&name)[kNameSize], const std::string& text) {
    text.copy(name, kNameSize);
}

/// Creates `count` nodes, messages and signals, each looked for before it is named and found after it.
void FindAll(int count) {
    KestrelWriteManager manager(nullptr);
    const char* key = nullptr;
    manager.CreateDatabase("cabin", &key, nullptr);
    msgblk& owner = *manager.CreateMessage(key, 0);
    owner.identifier = 0x80000000;
    int found = 0;
    for (int number = 0; number < count; ++number) {
        const std::string name = "Name" + std::to_string(number);
        symblk& node = *manager.CreateNode(key, 0);
        sigblk& signal = *manager.CreateSignal(owner, 0);
        if (manager.GetNode(name.c_str(), key) == nullptr) {
            SetName(node.name, name);
        }
        if (manager.GetSignal(owner, name.c_str()) == nullptr) {
            SetName(signal.name, name);
        }
        if (manager.GetMessage(static_cast<unsigned>(number), nullptr) == nullptr) {
            manager.CreateMessage(key, 0)->identifier = static_cast<std::uint32_t>(number);
        }
    }
    for (int number = 0; number < count; ++number) {
        const std::string name = "Name" + std::to_string(number);
        found += manager.GetNode(name.c_str(), key) != nullptr ? 1 : 0;
        found += manager.GetSignal(owner, name.c_str()) != nullptr ? 1 : 0;
        found += manager.GetMessage(static_cast<unsigned>(number), key) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(found, 3 * count);
}

TEST(LookUpCost, GrowsInProportionToTheNumberOfLookUps) {
    EXPECT_TRUE(GrowsInProportion(WorkOf([] { FindAll(1000); }), WorkOf([] { FindAll(2000); })));
}

}  // namespace
}  // namespace tarvex::test::look_up_cost_test
