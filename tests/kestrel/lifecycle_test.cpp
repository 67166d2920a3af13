/// Databases and their keys, and what happens without one.

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "support.h"

namespace {

using Lifecycle = DatabaseTest;

TEST_F(Lifecycle, DatabaseNeedsANameAndAPlaceForItsKey) {
    const char* other = nullptr;
    EXPECT_EQ(manager_.CreateDatabase(nullptr, &other, nullptr), kKestrelBadArgument);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(manager_.CreateDatabase("cabin", nullptr, nullptr), kKestrelBadArgument);
    EXPECT_EQ(manager_.CreateDatabase("", &other, nullptr), 0);
    EXPECT_NE(other, nullptr);
}

TEST_F(Lifecycle, DatabasesOfOneNameHaveDifferentKeys) {
    const char* other = nullptr;
    ASSERT_EQ(manager_.CreateDatabase("cabin", &other, nullptr), 0);
    EXPECT_STRNE(key_, other);
    AddNode("Radio");
    const std::string path = directory_ / "other.vorn";
    ASSERT_EQ(manager_.WriteDatabase(other, path.c_str()), 0);
    EXPECT_EQ(ReadFile(path), R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {},
"attribute_definitions": [],
"nodes": [],
"messages": []
}
)");
}

TEST_F(Lifecycle, KeyIsATextThatMayBeCopied) {
    const std::string copy = key_;
    EXPECT_NE(manager_.CreateAttrDefinition(copy.c_str(), 0), nullptr);
    EXPECT_EQ(manager_.CloseDatabase(copy.c_str(), false), 0);
    EXPECT_EQ(manager_.CreateAttrDefinition(key_, 0), nullptr);
}

TEST_F(Lifecycle, ClosedDatabaseIsUnknown) {
    const std::string path = directory_ / "closed.vorn";
    EXPECT_EQ(manager_.CloseDatabase(key_, true), 0);
    EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelUnknownDatabase);
    EXPECT_EQ(manager_.CloseDatabase(key_, false), kKestrelUnknownDatabase);
    EXPECT_TRUE(directory_.Names().empty());
}

TEST_F(Lifecycle, ClosingOneDatabaseLeavesTheOther) {
    const char* other = nullptr;
    manager_.CreateDatabase("other", &other, nullptr);
    symblk& node = AddNode("Radio");
    EXPECT_EQ(manager_.CloseDatabase(other, false), 0);
    EXPECT_EQ(manager_.GetNode("Radio", key_), &node);
}

TEST_F(Lifecycle, UnknownKeysFail) {
    const std::string path = directory_ / "unknown.vorn";
    for (const char* unknown : {static_cast<const char*>(nullptr), "", "cabin", "unknown"}) {
        EXPECT_EQ(manager_.CreateAttrDefinition(unknown, 0), nullptr);
        EXPECT_EQ(manager_.WriteDatabase(unknown, path.c_str()), kKestrelUnknownDatabase);
        EXPECT_EQ(manager_.CloseDatabase(unknown, false), kKestrelUnknownDatabase);
    }
    EXPECT_TRUE(directory_.Names().empty());
    EXPECT_EQ(manager_.WriteDatabase(key_, nullptr), kKestrelBadArgument);
}

TEST_F(Lifecycle, RecordsWithoutADatabaseCanBeFilledAndFoundButAreNotWritten) {
    DefineInteger(AttrObject::Node, "Slot", 0, 9, 0);
    DefineInteger(AttrObject::Message, "Period", 0, 9, 0);
    for (const char* unknown : {static_cast<const char*>(nullptr), "unknown"}) {
        symblk* node = manager_.CreateNode(unknown, 0);
        msgblk* message = manager_.CreateMessage(unknown, 0);
        ASSERT_NE(node, nullptr);
        ASSERT_NE(message, nullptr);
        sigblk* signal = manager_.CreateSignal(*message, 0);
        ASSERT_NE(signal, nullptr);
        SetName(node->name, unknown == nullptr ? "Null" : "Unknown");
        message->identifier = unknown == nullptr ? 1 : 2;
        SetName(signal->name, "Level");
        signal->value_descriptions = Describe(0, "Off", Describe(1, "On"));
        manager_.SetAttrValue(unknown, "Slot", Number(1));
        manager_.SetAttrValue(*node, "Slot", Number(1));
        manager_.SetAttrValue(*message, "Period", Number(1));
        EXPECT_EQ(manager_.GetNode(unknown == nullptr ? "Null" : "Unknown", unknown), node);
        EXPECT_EQ(manager_.GetMessage(unknown == nullptr ? 1 : 2, unknown), message);
        EXPECT_EQ(manager_.GetSignal(*message, "Level"), signal);
    }
    EXPECT_EQ(Written(), R"({
"format": "Vorn",
"version": 1,
"database": "cabin",
"attributes": {},
"attribute_definitions": [
  {"object": "node", "name": "Slot", "type": "integer", "minimum": 0, "maximum": 9, "default": 0},
  {"object": "message", "name": "Period", "type": "integer", "minimum": 0, "maximum": 9, "default": 0}
],
"nodes": [],
"messages": []
}
)");
}

TEST_F(Lifecycle, NewRecordsAreEmpty) {
    const msgblk& message = *manager_.CreateMessage(key_, 0);
    EXPECT_EQ(message.identifier, 0U);
    EXPECT_EQ(message.length, 0);
    EXPECT_EQ(message.node, nullptr);
    const sigblk& signal = *manager_.CreateSignal(*manager_.CreateMessage(key_, 0), 0);
    EXPECT_EQ(signal.start_bit, 0);
    EXPECT_EQ(signal.flags, 0);
    EXPECT_EQ(signal.value_descriptions, nullptr);
    const attr_def& definition = *manager_.CreateAttrDefinition(key_, 0);
    EXPECT_EQ(definition.value_type, AttrType::Integer);
    EXPECT_EQ(definition.minimum, 0);
    EXPECT_EQ(definition.default_number, 0);
}

TEST_F(Lifecycle, RecordsKeepTheirAddressesWhileMoreAreCreated) {
    symblk& node = AddNode("Radio");
    msgblk& message = AddMessage(1, "Message");
    sigblk& signal = AddSignal(message, "Level");
    for (std::uint32_t number = 2; number < 5000; ++number) {
        AddNode("Other");
        AddSignal(AddMessage(number, "Other"), "Other");
    }
    EXPECT_EQ(manager_.GetNode("Radio", key_), &node);
    EXPECT_EQ(manager_.GetMessage(1, key_), &message);
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &signal);
}

TEST(Allocation, GivesMemoryEvenForNoBytes) {
    void* memory = kestrel_malloc(0);
    EXPECT_NE(memory, nullptr);
    kestrel_free(memory);
    kestrel_free(nullptr);
}

}  // namespace
