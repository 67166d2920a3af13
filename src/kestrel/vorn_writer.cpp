#include "kestrel/vorn_writer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kestrel/atomic_file.h"
#include "kestrel/database.h"
#include "kestrel/json_text.h"
#include "kestrel/model_text.h"

namespace kestrel {

namespace {

void AppendName(std::string& json, const char (&name)[kNameSize]) {
    AppendQuoted(json, NameText(name));
}

void AppendText(std::string& json, const char* text) {
    AppendQuoted(json, text != nullptr ? text : "");
}

/// The parts of a definition that its values need, as JSON text: a message has a handful of values, so they
/// are made once and not for each value.
struct DefinitionText {
    explicit DefinitionText(const AttrDef& definition) {
        AppendName(name, definition.name);
        for (const std::string& choice : ChoiceNames(definition)) {
            AppendQuoted(names.emplace_back(), choice);
        }
        if (definition.value_type == AttrType::Integer) {
            AppendNumber(defaultValue, Finite(definition.default_number));
        } else {
            AppendText(defaultValue, definition.default_text);
        }
    }

    std::string name;
    /// Enumeration: the names of the values.
    std::vector<std::string> names;
    std::string defaultValue;
};

/// Writes one database. Text is put together in `line_` and handed to the file a line or so at a time.
class VornWriter {
  public:
    VornWriter(const Database& database, AtomicFile& file) : database_(database), file_(file) {
        for (const AttrDef& definition : database.AttrDefs()) {
            definitions_.emplace_back(definition);
        }
    }

    void Write() {
        line_ += "{\n\"format\": \"Vorn\",\n\"version\": 1,\n\"database\": ";
        AppendQuoted(line_, database_.Name());
        line_ += ",\n\"attributes\": ";
        AddAttributes(database_.Attributes());
        line_ += ",\n";
        AddList("attribute_definitions", database_.AttrDefs(), &VornWriter::AddDefinition);
        line_ += ",\n";
        AddList("nodes", database_.Nodes(), &VornWriter::AddNode);
        line_ += ",\n";
        AddList("messages", database_.Messages(), &VornWriter::AddMessage);
        line_ += "\n}\n";
        HandOver();
    }

  private:
    void HandOver() {
        file_.Append(line_);
        line_.clear();
    }

    /// Adds a top-level list with one record per line.
    template <class Records, class Record>
    void AddList(std::string_view key, const Records& records, void (VornWriter::*add)(const Record&)) {
        line_ += '"';
        line_ += key;
        line_ += records.empty() ? "\": [" : "\": [\n";
        bool first = true;
        for (const Record& record : records) {
            if (!first) {
                line_ += ",\n";
            }
            first = false;
            line_ += "  ";
            (this->*add)(record);
            HandOver();
            if (file_.Failed()) {
                return;
            }
        }
        line_ += records.empty() ? "]" : "\n]";
    }

    void AddDefinition(const AttrDef& definition) {
        const DefinitionText& text = definitions_[definition.position];
        line_ += R"({"object": ")";
        line_ += ObjectName(definition.object_kind);
        line_ += R"(", "name": )";
        line_ += text.name;
        switch (definition.value_type) {
            case AttrType::Integer:
                line_ += R"(, "type": "integer", "minimum": )";
                AppendNumber(line_, Finite(definition.minimum));
                line_ += R"(, "maximum": )";
                AppendNumber(line_, Finite(definition.maximum));
                break;
            case AttrType::String:
                line_ += R"(, "type": "string")";
                break;
            case AttrType::Enumeration:
                line_ += R"(, "type": "enumeration", "values": [)";
                for (const std::string& name : text.names) {
                    if (&name != &text.names.front()) {
                        line_ += ", ";
                    }
                    line_ += name;
                }
                line_ += ']';
                break;
        }
        line_ += R"(, "default": )";
        line_ += text.defaultValue;
        line_ += '}';
    }

    void AddAttributes(const AttrValues& attributes) {
        line_ += '{';
        bool first = true;
        for (const AttrValues::Value& entry : attributes.Values()) {
            if (!first) {
                line_ += ", ";
            }
            first = false;
            line_ += definitions_[entry.definition->position].name;
            line_ += ": ";
            AddValue(*entry.definition, entry.value);
        }
        line_ += '}';
    }

    void AddValue(const AttrDef& definition, kestrel_attr_value_t value) {
        if (definition.holdsTexts) {
            AppendText(line_, value.text);
        } else if (definition.value_type != AttrType::Enumeration) {
            AppendNumber(line_, Finite(value.number));
        } else {
            const DefinitionText& text = definitions_[definition.position];
            const bool isKnown = value.number >= 0 && value.number < static_cast<double>(text.names.size());
            line_ += isKnown ? text.names[static_cast<std::size_t>(value.number)] : text.defaultValue;
        }
    }

    void AddNode(const Node& node) {
        line_ += R"({"name": )";
        AppendName(line_, node.name);
        line_ += R"(, "attributes": )";
        AddAttributes(node.attributes);
        line_ += '}';
    }

    void AddMessage(const Message& message) {
        line_ += R"({"identifier": )";
        AppendInteger(line_, message.identifier & ~kExtendedIdentifier);
        line_ += R"(, "extended": )";
        line_ += (message.identifier & kExtendedIdentifier) != 0 ? "true" : "false";
        line_ += R"(, "name": )";
        AppendName(line_, message.name);
        line_ += R"(, "length": )";
        AppendInteger(line_, message.length);
        line_ += R"(, "node": )";
        if (message.node != nullptr) {
            AppendName(line_, message.node->name);
        } else {
            line_ += "null";
        }
        line_ += ",\n   \"attributes\": ";
        AddAttributes(message.attributes);
        line_ += ",\n   \"signals\": [";
        for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
            line_ += signal == message.firstSignal ? "\n     " : ",\n     ";
            AddSignal(*signal);
            HandOver();
        }
        line_ += message.firstSignal != nullptr ? "\n   ]}" : "]}";
    }

    void AddSignal(const Signal& signal) {
        line_ += R"({"name": )";
        AppendName(line_, signal.name);
        line_ += R"(, "start_bit": )";
        AppendInteger(line_, signal.start_bit);
        line_ += R"(, "length": )";
        AppendInteger(line_, signal.length);
        line_ += R"(, "byte_order": )";
        line_ += '"';
        line_ += ByteOrderName(signal);
        line_ += '"';
        line_ += R"(, "signed": )";
        line_ += (signal.flags & kSignalSigned) != 0 ? "true" : "false";
        if (signal.value_descriptions != nullptr) {
            AddValueDescriptions(signal);
        }
        if ((signal.flags & kSignalMultiplexor) != 0) {
            line_ += R"(, "multiplexor": true)";
        }
        if ((signal.flags & kSignalMultiplexed) != 0) {
            line_ += R"(, "multiplexer_value": )";
            AppendInteger(line_, signal.multiplexer_value);
        }
        if (signal.scaling != nullptr) {
            AddScaling(*signal.scaling);
        }
        line_ += '}';
    }

    void AddScaling(const sigscale& scaling) {
        AddKnownNumber("factor", scaling.factor);
        AddKnownNumber("minimum", scaling.minimum);
        AddKnownNumber("maximum", scaling.maximum);
        AddKnownNumber("step", scaling.step);
        if (!scaling.unit.empty()) {
            line_ += R"(, "unit": )";
            AppendQuoted(line_, scaling.unit);
        }
    }

    void AddKnownNumber(std::string_view key, const std::optional<double>& number) {
        if (number) {
            line_.append(R"(, ")").append(key).append(R"(": )");
            AppendShortNumber(line_, *number);
        }
    }

    void AddValueDescriptions(const Signal& signal) {
        line_ += R"(, "values": [)";
        for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
            line_ += entry == signal.value_descriptions ? "[" : ", [";
            AppendInteger(line_, entry->value);
            line_ += ", ";
            AppendName(line_, entry->text);
            line_ += ']';
        }
        line_ += ']';
    }

    const Database& database_;
    AtomicFile& file_;
    /// By the positions of the definitions.
    std::vector<DefinitionText> definitions_;
    std::string line_;
};

}  // namespace

void WriteVorn(const Database& database, AtomicFile& file) {
    VornWriter(database, file).Write();
}

}  // namespace kestrel
