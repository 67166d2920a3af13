/// Finding nodes, messages and signals.

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "support.h"

namespace {

class LookUp : public DatabaseTest {
  protected:
    symblk* Node(const char* name) { return manager_.GetNode(name, key_); }
    msgblk* Message(unsigned long identifier) { return manager_.GetMessage(identifier, key_); }

    /// Adds signals that no test asks for, so that the message has more than are searched one by one.
    void AddMany(msgblk& message) {
        for (int number = 0; number < 20; ++number) {
            AddSignal(message, "Other" + std::to_string(number));
        }
    }
};

TEST_F(LookUp, NodeIsFoundByTheNameGivenAfterItsCreation) {
    symblk& node = *manager_.CreateNode(key_, 0);
    SetName(node.name, "Radio");
    EXPECT_EQ(Node("Radio"), &node);
    EXPECT_EQ(Node("Radi"), nullptr);
    EXPECT_EQ(Node("Radios"), nullptr);
    EXPECT_EQ(Node("radio"), nullptr);
}

TEST_F(LookUp, NodeNamedAfterALookUpIsFoundByTheNextOne) {
    symblk& node = *manager_.CreateNode(key_, 0);
    EXPECT_EQ(Node("Radio"), nullptr);
    EXPECT_EQ(Node(""), &node);
    SetName(node.name, "Radio");
    EXPECT_EQ(Node("Radio"), &node);
    EXPECT_EQ(Node(""), nullptr);
}

TEST_F(LookUp, FirstCreatedOfTwoNodesWithOneNameIsFound) {
    symblk& first = AddNode("Radio");
    AddNode("Radio");
    EXPECT_EQ(Node("Radio"), &first);
    AddNode("Radio");
    EXPECT_EQ(Node("Radio"), &first);
}

TEST_F(LookUp, NodeCreatedFirstIsFoundThoughItWasNamedLast) {
    symblk& first = *manager_.CreateNode(key_, 0);
    symblk& second = AddNode("Radio");
    EXPECT_EQ(Node("Radio"), &second);
    SetName(first.name, "Radio");
    EXPECT_EQ(Node("Radio"), &first);
}

TEST_F(LookUp, FirstCreatedOfTwoNodesWithoutANameIsFound) {
    symblk& first = *manager_.CreateNode(key_, 0);
    symblk& second = *manager_.CreateNode(key_, 0);
    EXPECT_EQ(Node(""), &first);
    SetName(first.name, "Radio");
    EXPECT_EQ(Node(""), &second);
}

TEST_F(LookUp, NodeNameOf32BytesHasNoTerminator) {
    symblk& node = AddNode("ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
    EXPECT_EQ(Node("ABCDEFGHIJKLMNOPQRSTUVWXYZ012345"), &node);
    EXPECT_EQ(Node("ABCDEFGHIJKLMNOPQRSTUVWXYZ01234"), nullptr);
}

TEST_F(LookUp, NodeNameAskedForIsCutAt32Bytes) {
    symblk& node = AddNode("ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
    EXPECT_EQ(Node("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"), &node);
}

TEST_F(LookUp, NodeIsFoundOnlyInItsDatabase) {
    const char* other = nullptr;
    manager_.CreateDatabase("cabin", &other, nullptr);
    symblk& node = AddNode("Radio");
    EXPECT_EQ(manager_.GetNode("Radio", other), nullptr);
    EXPECT_EQ(manager_.GetNode("Radio", "unknown"), nullptr);
    EXPECT_EQ(manager_.GetNode("Radio", key_), &node);
    EXPECT_EQ(manager_.GetNode(nullptr, key_), nullptr);
}

TEST_F(LookUp, MessageIsFoundByTheIdentifierGivenAfterItsCreation) {
    msgblk& message = *manager_.CreateMessage(key_, 0);
    message.identifier = 0x80222004;
    EXPECT_EQ(Message(0x80222004), &message);
    EXPECT_EQ(Message(0x222004), nullptr);
    EXPECT_EQ(Message(0), nullptr);
}

TEST_F(LookUp, MessagesCreatedBetweenLookUpsAreFound) {
    msgblk& first = AddMessage(1, "First");
    EXPECT_EQ(Message(1), &first);
    EXPECT_EQ(Message(2), nullptr);
    msgblk& second = AddMessage(2, "Second");
    EXPECT_EQ(Message(2), &second);
    EXPECT_EQ(Message(1), &first);
}

TEST_F(LookUp, FirstCreatedOfTwoMessagesWithOneIdentifierIsFound) {
    msgblk& first = AddMessage(7, "First");
    AddMessage(7, "Second");
    EXPECT_EQ(Message(7), &first);
    AddMessage(7, "Third");
    EXPECT_EQ(Message(7), &first);
}

TEST_F(LookUp, IdentifierBeyond32BitsIsNotCut) {
    AddMessage(7, "Message");
    EXPECT_EQ(Message(0x100000007), nullptr);
}

TEST_F(LookUp, NullDatabaseMeansTheFirstCreatedMessageOfAll) {
    const char* other = nullptr;
    manager_.CreateDatabase("other", &other, nullptr);
    msgblk& first = *manager_.CreateMessage(other, 0);
    msgblk& second = *manager_.CreateMessage(key_, 0);
    msgblk& third = *manager_.CreateMessage(other, 0);
    msgblk& fourth = *manager_.CreateMessage(key_, 0);
    msgblk& fifth = *manager_.CreateMessage(other, 0);
    first.identifier = 7;
    second.identifier = 7;
    third.identifier = 8;
    fourth.identifier = 9;
    fifth.identifier = 9;
    EXPECT_EQ(manager_.GetMessage(7, nullptr), &first);
    EXPECT_EQ(manager_.GetMessage(8, nullptr), &third);
    EXPECT_EQ(manager_.GetMessage(9, nullptr), &fourth);
    EXPECT_EQ(manager_.GetMessage(9, other), &fifth);
    EXPECT_EQ(manager_.GetMessage(10, nullptr), nullptr);
    EXPECT_EQ(manager_.GetMessage(7, key_), &second);
    EXPECT_EQ(manager_.GetMessage(7, "unknown"), nullptr);
}

TEST_F(LookUp, SignalIsFoundAmongFewAndAmongMany) {
    msgblk& message = AddMessage(1, "Message");
    sigblk& level = AddSignal(message, "Level");
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &level);
    EXPECT_EQ(manager_.GetSignal(message, "Leve"), nullptr);
    AddMany(message);
    sigblk& last = AddSignal(message, "Last");
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &level);
    EXPECT_EQ(manager_.GetSignal(message, "Last"), &last);
    EXPECT_EQ(manager_.GetSignal(message, "Leve"), nullptr);
    EXPECT_EQ(manager_.GetSignal(message, nullptr), nullptr);
}

TEST_F(LookUp, SignalIsFoundOnlyInItsMessage) {
    msgblk& message = AddMessage(1, "Message");
    msgblk& other = AddMessage(2, "Other");
    AddSignal(message, "Level");
    EXPECT_EQ(manager_.GetSignal(other, "Level"), nullptr);
    AddMany(other);
    EXPECT_EQ(manager_.GetSignal(other, "Level"), nullptr);
}

TEST_F(LookUp, SignalWithoutANameIsFoundByTheEmptyName) {
    msgblk& message = AddMessage(1, "Message");
    EXPECT_EQ(manager_.GetSignal(message, ""), nullptr);
    sigblk& first = *manager_.CreateSignal(message, 0);
    EXPECT_EQ(manager_.GetSignal(message, ""), &first);
    AddMany(message);
    EXPECT_EQ(manager_.GetSignal(message, ""), &first);
    SetName(first.name, "Level");
    EXPECT_EQ(manager_.GetSignal(message, ""), nullptr);
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &first);
}

TEST_F(LookUp, FirstCreatedOfTwoSignalsWithOneNameIsFound) {
    msgblk& message = AddMessage(1, "Message");
    sigblk& unnamed = *manager_.CreateSignal(message, 0);
    sigblk& first = AddSignal(message, "Level");
    AddSignal(message, "Level");
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &first);
    AddMany(message);
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &first);
    SetName(unnamed.name, "Level");
    EXPECT_EQ(manager_.GetSignal(message, "Level"), &unnamed);
}

TEST_F(LookUp, SignalNameIsComparedWhole) {
    msgblk& message = AddMessage(1, "Message");
    sigblk& signal = AddSignal(message, "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
    for (int pass = 0; pass < 2; ++pass) {  // among few signals, then among many
        EXPECT_EQ(manager_.GetSignal(message, "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345"), &signal);
        EXPECT_EQ(manager_.GetSignal(message, "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234"), nullptr);
        EXPECT_EQ(manager_.GetSignal(message, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456"), nullptr);
        AddMany(message);
    }
}

}  // namespace
