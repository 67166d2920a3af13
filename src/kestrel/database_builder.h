/// Builds a database from what a file says. Everything that a file can get wrong is checked here, once for
/// all formats; readers add the place.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "kestrel/database.h"

namespace kestrel {

/// What is wrong with a record, without its place.
class BadRecord : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A definition as a file gives it.
struct DefinitionRecord {
    std::string object;
    std::string name;
    std::string type;
    /// Of integers; the default of others is a text.
    double minimum = 0;
    double maximum = 0;
    double defaultNumber = 0;
    std::string defaultText;
    std::vector<std::string> choices;
};

/// A message as a file gives it.
struct MessageRecord {
    std::uint32_t identifier = 0;
    bool extended = false;
    std::string name;
    std::uint16_t length = 0;
    Node* node = nullptr;
};

/// A signal as a file gives it.
struct SignalRecord {
    std::string name;
    std::uint16_t startBit = 0;
    std::uint16_t length = 0;
    std::string byteOrder;
    bool isSigned = false;
    bool isMultiplexor = false;
    std::optional<std::uint32_t> multiplexerValue;
};

/// The value of an attribute as a file gives it: a number for integers, else a text.
using AttributeText = std::variant<double, std::string>;

/// Every function throws `BadRecord` for a record that no database can hold.
class DatabaseBuilder {
  public:
    DatabaseBuilder() : database_(std::make_unique<Database>("")) {}

    void SetName(const std::string& name);
    void AddDefinition(const DefinitionRecord& record);
    Node& AddNode(const std::string& name);
    /// The first node of that name.
    Node& FindNode(const std::string& name);
    Message& AddMessage(const MessageRecord& record);
    Signal& AddSignal(Message& message, const SignalRecord& record);
    /// Appends to the list of the signal that was added last.
    void AddValue(Signal& signal, std::uint32_t value, const std::string& text);
    /// The numbers are finite.
    void SetScaling(Signal& signal, const sigscale& scaling);
    void SetAttribute(AttrValues& values, AttrObject object, const std::string& name,
                      const AttributeText& value);

    Database& Built() { return *database_; }
    std::unique_ptr<Database> Take() { return std::move(database_); }

  private:
    AttrDef& FindDefinition(AttrObject object, const std::string& name) const;

    std::unique_ptr<Database> database_;
    /// The values of an enumeration: how many, and the index of each name's first one.
    struct Choices {
        KeyedMap<std::string, std::size_t> indexes;
        std::size_t count = 0;
    };
    /// By the positions of the definitions.
    std::vector<Choices> choices_;
    /// The definitions for each kind of object, by name.
    std::map<AttrObject, KeyedMap<std::string, AttrDef*>> definitions_;
    /// The first node of each name.
    KeyedMap<std::string, Node*> nodes_;
    valdesc* lastValue_ = nullptr;
    const Signal* lastSignal_ = nullptr;
};

}  // namespace kestrel
