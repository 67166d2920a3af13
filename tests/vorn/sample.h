/// Databases as tables, for tests that show or compare them.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kestrel/database_builder.h"

namespace vorn::test {

inline constexpr std::uint16_t kLittle = 0;
inline constexpr std::uint16_t kBig = kSignalBigEndian;
inline constexpr std::uint16_t kSigned = kSignalSigned;
inline constexpr std::uint16_t kSelector = kSignalMultiplexor;
inline constexpr std::uint16_t kSelected = kSignalMultiplexed;

/// Attributes with their values: numbers for integers, else texts.
using AttributeRows = std::vector<std::pair<std::string, kestrel::AttributeText>>;

struct SignalRow {
    std::string name;
    std::uint16_t startBit = 0;
    std::uint16_t length = 0;
    /// `kBig` and so on.
    std::uint16_t flags = kLittle;
    /// Counts with `kSelected`.
    std::uint32_t multiplexerValue = 0;
    std::vector<std::pair<std::uint32_t, std::string>> values = {};
    std::optional<sigscale> scaling = {};
};

struct NodeRow {
    std::string name;
    AttributeRows attributes = {};
};

struct MessageRow {
    /// With `kExtendedIdentifier` where it applies.
    std::uint32_t identifier = 0;
    std::string name;
    std::uint16_t length = 0;
    std::vector<SignalRow> signals = {};
    /// The name of a node, or empty.
    std::string node = {};
    AttributeRows attributes = {};
};

struct Sample {
    std::string name = "cabin";
    std::vector<kestrel::DefinitionRecord> definitions = {};
    AttributeRows attributes = {};
    std::vector<NodeRow> nodes = {};
    std::vector<MessageRow> messages = {};
};

kestrel::DefinitionRecord Integer(const char* object, const char* name, double minimum, double maximum,
                                  double defaultNumber);
kestrel::DefinitionRecord String(const char* object, const char* name, const char* defaultText);
kestrel::DefinitionRecord Enumeration(const char* object, const char* name, std::vector<std::string> choices,
                                      const char* defaultText);

std::unique_ptr<kestrel::Database> Build(const Sample& sample);

/// A database with one message without node and attributes.
std::unique_ptr<kestrel::Database> BuildMessage(std::uint16_t length, std::vector<SignalRow> signals);

}  // namespace vorn::test
