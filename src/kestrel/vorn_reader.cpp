#include "kestrel/vorn_reader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "kestrel/database_builder.h"
#include "kestrel/errors.h"
#include "kestrel/excerpt.h"
#include "kestrel/json_members.h"
#include "kestrel/keyed_hash.h"
#include "kestrel/vorn_source.h"

namespace kestrel {

namespace {

/// No object has more keys.
constexpr std::size_t kMaxKeys = 1000;
/// Nothing is nested deeper than the value descriptions of a signal of a message.
constexpr std::size_t kMaxDepth = 7;

/// An object or list that has begun. The time for a key does not grow with the number of keys.
struct Collected {
    explicit Collected(Json empty) : value(std::move(empty)) {}

    /// The key of the next value of an object; false when it stands there already.
    bool TakeKey(std::string& name) {
        constexpr std::size_t kFew = 16;  // as nearly all objects have
        if (value.size() < kFew) {
            nextKey = std::move(name);
            return !value.contains(nextKey);
        }
        if (keys.empty()) {
            for (const auto& [key, ignored] : value.items()) {
                keys.insert(key);
            }
        }
        nextKey = std::move(name);
        return keys.insert(nextKey).second;
    }
    void Add(Json inner) {
        if (value.is_array()) {
            value.push_back(std::move(inner));
        } else {
            // By its index an object would look for the key once more.
            value.get_ref<Json::object_t&>().emplace_back(std::move(nextKey), std::move(inner));
        }
    }

    Json value;
    std::string nextKey;
    /// All keys of an object that has many.
    KeyedSet<std::string> keys;
};

/// Takes the parser's events, collects one record at a time and adds it to a database.
class VornHandler : public nlohmann::json_sax<Json> {
  public:
    VornHandler(DatabaseBuilder& builder, const VornSource& source) : builder_(builder), source_(source) {}

    bool null() override { return Value(nullptr); }
    bool boolean(bool value) override { return Value(value); }
    bool number_integer(number_integer_t value) override { return Value(value); }
    bool number_unsigned(number_unsigned_t value) override { return Value(value); }
    bool number_float(number_float_t value, const string_t&) override { return Value(value); }
    bool string(string_t& value) override { return Value(std::move(value)); }
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return Start(Json::object()); }
    bool start_array(std::size_t) override { return Start(Json::array()); }
    bool end_object() override { return End(); }
    bool end_array() override { return End(); }

    bool key(string_t& name) override {
        if (collected_.empty()) {
            if (nextSection_ == kSections.size() || name != kSections[nextSection_]) {
                Fail("the key \"" + Excerpt(name) + "\" is not expected here");
            }
            ++nextSection_;
        } else {
            Collected& object = collected_.back();
            if (object.value.size() == kMaxKeys) {
                Fail("an object has too many keys");
            }
            if (!object.TakeKey(name)) {
                Fail("the key \"" + Excerpt(object.nextKey) + "\" stands twice");
            }
        }
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) override {
        // Behind the last ": " of the place stands what was found and expected.
        const std::string text = error.what();
        const std::size_t begin = text.find("syntax error");
        constexpr std::size_t kMaxShown = 300;
        Fail(begin == std::string::npos ? "this is no JSON" : text.substr(begin, kMaxShown));
    }

    /// To be called when the whole file has been read: the database's own attributes stand before their
    /// definitions.
    void Finish() {
        if (!IsComplete()) {
            Fail("the file is not complete");
        }
        try {
            SetAttributes(builder_.Built().Attributes(), AttrObject::Database, databaseAttributes_);
        } catch (const BadRecord& error) {
            throw ReadError("line " + std::to_string(databaseAttributesLine_) + ": " + error.what());
        }
    }

    bool IsComplete() const { return nextSection_ == kSections.size() && depth_ == 0; }
    [[noreturn]] void Fail(const std::string& what) const {
        throw ReadError("line " + std::to_string(source_.Line()) + ": " + what);
    }

  private:
    static constexpr std::array<std::string_view, 7> kSections = {
        "format", "version", "database", "attributes", "attribute_definitions", "nodes", "messages"};

    std::string_view Section() const {
        return nextSection_ == 0 ? std::string_view() : kSections[nextSection_ - 1];
    }
    /// A section that is a list of records, each of which is collected for itself.
    bool IsListSection() const { return nextSection_ > 4; }

    bool Start(Json empty) {
        if (depth_ == kMaxDepth) {
            Fail("the file is nested too deep");
        }
        ++depth_;
        if (depth_ == 1) {
            if (!empty.is_object()) {
                Fail("a Vorn file is one object");
            }
        } else if (depth_ == 2 && collected_.empty() && IsListSection()) {
            if (!empty.is_array()) {
                Fail("\"" + std::string(Section()) + "\" is no list");
            }
        } else {
            collected_.emplace_back(std::move(empty));
        }
        return true;
    }

    bool End() {
        --depth_;
        if (collected_.empty()) {
            return true;
        }
        Json done = std::move(collected_.back().value);
        collected_.pop_back();
        return Value(std::move(done));
    }

    /// A value, or a finished object or list.
    bool Value(Json value) {
        if (!collected_.empty()) {
            collected_.back().Add(std::move(value));
            return true;
        }
        if (depth_ == 0) {
            Fail("a Vorn file is one object");
        }
        try {
            Record(value);
        } catch (const BadRecord& error) {
            Fail(error.what());
        }
        return true;
    }

    void Record(const Json& value) {
        const std::string_view section = Section();
        if (section == "format") {
            if (value != "Vorn") {
                throw BadRecord("this is no Vorn file");
            }
        } else if (section == "version") {
            if (value != 1) {
                throw BadRecord("version " + Excerpt(value.dump()) + " of Vorn is not known");
            }
        } else if (section == "database") {
            if (!value.is_string()) {
                throw BadRecord("\"database\" is no text");
            }
            builder_.SetName(value.get<std::string>());
        } else if (section == "attributes") {
            if (!value.is_object()) {
                throw BadRecord("\"attributes\" is no object");
            }
            databaseAttributes_ = value;  // their definitions come next
            databaseAttributesLine_ = source_.Line();
        } else if (section == "attribute_definitions") {
            AddDefinition(value);
        } else if (section == "nodes") {
            AddNode(value);
        } else if (section == "messages") {
            AddMessage(value);
        }
    }

    void AddDefinition(const Json& value) {
        JsonMembers members(value, "definition");
        DefinitionRecord record;
        record.object = members.Text("object");
        record.name = members.Text("name");
        record.type = members.Text("type");
        if (record.type == "integer") {
            record.minimum = members.Number("minimum");
            record.maximum = members.Number("maximum");
            record.defaultNumber = members.Number("default");
        } else {
            record.defaultText = members.Text("default");
        }
        if (record.type == "enumeration") {
            const Json& values = members.Get("values");
            if (!values.is_array()) {
                throw members.Wrong("values", "list");
            }
            for (const Json& name : values) {
                if (!name.is_string()) {
                    throw members.Wrong("values", "list of texts");
                }
                record.choices.push_back(name.get<std::string>());
            }
        }
        members.NoMore();
        builder_.AddDefinition(record);
    }

    void AddNode(const Json& value) {
        JsonMembers members(value, "node");
        Node& node = builder_.AddNode(members.Text("name"));
        SetAttributes(node.attributes, AttrObject::Node, members.Get("attributes"));
        members.NoMore();
    }

    void AddMessage(const Json& value) {
        JsonMembers members(value, "message");
        MessageRecord record;
        record.identifier = members.Unsigned<std::uint32_t>("identifier");
        record.extended = members.Flag("extended");
        record.name = members.Text("name");
        record.length = members.Unsigned<std::uint16_t>("length");
        if (!members.Get("node").is_null()) {
            record.node = &builder_.FindNode(JsonMembers(value, "message").Text("node"));
        }
        Message& message = builder_.AddMessage(record);
        SetAttributes(message.attributes, AttrObject::Message, members.Get("attributes"));
        const Json& signals = members.Get("signals");
        if (!signals.is_array()) {
            throw members.Wrong("signals", "list");
        }
        for (const Json& signal : signals) {
            AddSignal(message, signal);
        }
        members.NoMore();
    }

    void AddSignal(Message& message, const Json& value) {
        JsonMembers members(value, "signal");
        SignalRecord record;
        record.name = members.Text("name");
        record.startBit = members.Unsigned<std::uint16_t>("start_bit");
        record.length = members.Unsigned<std::uint16_t>("length");
        record.byteOrder = members.Text("byte_order");
        record.isSigned = members.Flag("signed");
        if (value.contains("multiplexor")) {
            record.isMultiplexor = members.Flag("multiplexor");
        }
        if (value.contains("multiplexer_value")) {
            record.multiplexerValue = members.Unsigned<std::uint32_t>("multiplexer_value");
        }
        Signal& signal = builder_.AddSignal(message, record);
        SetScaling(signal, value, members);
        if (const Json* values = members.Find("values")) {
            if (!values->is_array()) {
                throw members.Wrong("values", "list");
            }
            for (const Json& pair : *values) {
                if (!pair.is_array() || pair.size() != 2 || !pair[1].is_string()) {
                    throw members.Wrong("values", "list of pairs of a number and a text");
                }
                builder_.AddValue(signal, members.UnsignedIn<std::uint32_t>(pair[0], "values"),
                                  pair[1].get<std::string>());
            }
        }
        members.NoMore();
    }

    /// A signal that has one of the keys has a factor, too.
    void SetScaling(Signal& signal, const Json& value, JsonMembers& members) {
        constexpr std::array kKeys = {"factor", "minimum", "maximum", "step", "unit"};
        if (std::ranges::none_of(kKeys, [&](const char* key) { return value.contains(key); })) {
            return;
        }
        const auto number = [&](const char* key) {
            return value.contains(key) ? std::optional(members.Number(key)) : std::nullopt;
        };
        sigscale scaling;
        scaling.factor = members.Number("factor");
        scaling.minimum = number("minimum");
        scaling.maximum = number("maximum");
        scaling.step = number("step");
        if (value.contains("unit")) {
            scaling.unit = members.Text("unit");
        }
        builder_.SetScaling(signal, scaling);
    }

    void SetAttributes(AttrValues& values, AttrObject object, const Json& attributes) {
        if (!attributes.is_object()) {
            throw BadRecord("\"attributes\" is no object");
        }
        for (const auto& [name, value] : attributes.items()) {
            if (value.is_number()) {
                builder_.SetAttribute(values, object, name, value.get<double>());
            } else if (value.is_string()) {
                builder_.SetAttribute(values, object, name, value.get<std::string>());
            } else {
                throw BadRecord("the attribute '" + Excerpt(name) + "' is neither a number nor a text");
            }
        }
    }

    DatabaseBuilder& builder_;
    const VornSource& source_;
    /// How many of the sections have begun.
    std::size_t nextSection_ = 0;
    std::size_t depth_ = 0;
    /// The objects and lists that have begun and not ended.
    std::vector<Collected> collected_;
    Json databaseAttributes_ = Json::object();
    std::size_t databaseAttributesLine_ = 0;
};

}  // namespace

std::unique_ptr<Database> ReadVorn(const std::string& path) {
    VornSource source(path);
    DatabaseBuilder builder;
    VornHandler handler(builder, source);
    Json::sax_parse(VornSourceIterator(source), VornSourceIterator(), &handler);
    handler.Finish();
    return builder.Take();
}

}  // namespace kestrel
