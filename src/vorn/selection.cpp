#include "vorn/selection.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>

#include "import/text/names.h"
#include "import/text/nearest_name.h"
#include "import/text/shown_text.h"
#include "kestrel/model_text.h"
#include "kestrel/most_columns.h"
#include "vorn/pattern.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::MostColumn;
using kestrel::NameText;

constexpr std::size_t kNearest = 3;

std::uint32_t NumberOf(const Message& message) {
    return message.identifier & ~kExtendedIdentifier;
}

/// The whole text as a number: hexadecimal after "0x", else decimal if that is wanted, too.
std::optional<std::uint32_t> ParseNumber(std::string_view text, bool mayBeDecimal) {
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (!isHexadecimal && !mayBeDecimal) {
        return std::nullopt;
    }
    const std::string_view digits = text.substr(isHexadecimal ? 2 : 0);
    std::uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, isHexadecimal ? 16 : 10);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

/// A part of an address as it stands in addresses: with zeros in front, unless it is a pattern.
std::string Padded(std::string_view part, std::size_t width) {
    const bool isPattern = part.find_first_of("*?[") != std::string_view::npos;
    const std::size_t missing = isPattern || part.size() >= width ? 0 : width - part.size();
    return std::string(missing, '0').append(part);
}

/// The pattern for addresses that a text stands for: without the instance. Empty for another text.
std::string AddressPattern(std::string_view text) {
    std::vector<std::string_view> parts = tarvex::SplitTokens(text, ".");
    const auto points = static_cast<std::size_t>(std::ranges::count(text, '.'));
    if (points + 1 != parts.size() || parts.size() < 3 || parts.size() > 4) {
        return "";
    }
    if (parts.size() == 4) {
        parts.erase(parts.begin() + 1);
    }
    return Padded(parts[0], 2) + "." + Padded(parts[1], 3) + "." + Padded(parts[2], 1);
}

/// A text that a message may answer to.
using Test = std::function<bool(const Message& message)>;

/// Makes tests of the texts of a selection, and tells what messages have in their place.
class Selector {
  public:
    explicit Selector(const kestrel::Database& database) : columns_(database) {}

    /// A property of messages that texts may ask for.
    struct Property {
        const char* what;
        std::vector<std::string> Selection::*texts;
        /// Whether the message is what the text says.
        std::function<Test(const std::string& text)> test;
        /// What the message would answer to; nodes have their own names.
        std::function<std::string(const Message& message, const std::string& text)> name;
        /// The text as it is compared with these names, where that is not the text itself.
        std::function<std::string(const std::string& text)> given = nullptr;
    };

    std::vector<Property> Properties() {
        return {
            {"message", &Selection::messages, [](const std::string& text) { return MessageTest(text); },
             [](const Message& message, const std::string& text) {
                 return AddressPattern(text).empty() ? NameText(message.name)
                                                     : kestrel::AddressText(message.identifier);
             },
             [](const std::string& text) {
                 const std::string address = AddressPattern(text);
                 return address.empty() ? text : address;
             }},
            Column("function block", &Selection::fblocks, MostColumn::FBlock, 16, 0xFF),
            Column("function", &Selection::functions, MostColumn::Function, 4, 0xFFF),
            Column("operation", &Selection::opTypes, MostColumn::OpType, 0, 0xF),
            {"node", &Selection::nodes,
             [](const std::string& text) {
                 return [text](const Message& message) {
                     return message.node != nullptr && Matches(text, NameText(message.node->name));
                 };
             },
             nullptr},
        };
    }

  private:
    static Test MessageTest(const std::string& text) {
        const std::string address = AddressPattern(text);
        const auto number = ParseNumber(text, true);
        return [=](const Message& message) {
            return Matches(text, NameText(message.name)) ||
                   (number && ((message.identifier ^ *number) & ~kExtendedIdentifier) == 0) ||
                   (!address.empty() && Matches(address, kestrel::AddressText(message.identifier)));
        };
    }

    /// A property that has an attribute and a part of the address.
    Property Column(const char* what, std::vector<std::string> Selection::*texts, MostColumn column,
                    int shift, std::uint32_t mask) {
        return {what, texts,
                [this, column, shift, mask](const std::string& text) -> Test {
                    const auto number = ParseNumber(text, false);
                    return [=, this](const Message& message) {
                        const bool hasAddress = !kestrel::AddressText(message.identifier).empty();
                        return Matches(text, columns_.WholeOf(message, column)) ||
                               (number && hasAddress && (NumberOf(message) >> shift & mask) == *number);
                    };
                },
                [this, column](const Message& message, const std::string&) {
                    return columns_.WholeOf(message, column);
                }};
    }

    kestrel::MostColumns columns_;
};

bool HasNode(const kestrel::Database& database, const std::string& text) {
    return std::ranges::any_of(database.Nodes(),
                               [&](const kestrel::Node& node) { return Matches(text, NameText(node.name)); });
}

/// "; the nearest are A, B and C", as far as there are some.
std::string NearestText(const kestrel::Database& database, const Selector::Property& property,
                        const std::string& text) {
    kestrel::KeyedSet<std::string> names;
    std::vector<std::string_view> inOrder;
    const auto add = [&](std::string name) {
        const auto [place, isNew] = names.insert(std::move(name));
        if (isNew && !place->empty()) {
            inOrder.push_back(*place);
        }
    };
    if (property.texts == &Selection::nodes) {  // also those that send nothing
        std::ranges::for_each(database.Nodes(), [&](const kestrel::Node& node) { add(NameText(node.name)); });
    } else {
        std::ranges::for_each(database.Messages(),
                              [&](const Message& message) { add(property.name(message, text)); });
    }
    const std::string given = property.given ? property.given(text) : text;
    const std::vector<std::string_view> nearest = tarvex::NearestNames(given, inOrder, kNearest);
    std::string list;
    for (std::size_t place = 0; place < nearest.size(); ++place) {
        list += place == 0 ? "" : place + 1 == nearest.size() ? " and " : ", ";
        list += tarvex::Shown(nearest[place]);
    }
    if (nearest.empty()) {
        return "";
    }
    return (nearest.size() == 1 ? "; the nearest is " : "; the nearest are ") + list;
}

}  // namespace

std::vector<const Message*> Select(const kestrel::Database& database, const Selection& selection) {
    const Utf8Locale locale;
    Selector selector(database);
    std::vector<std::vector<Test>> tests;
    for (const Selector::Property& property : selector.Properties()) {
        if (!(selection.*property.texts).empty()) {
            std::ranges::transform(selection.*property.texts, std::back_inserter(tests.emplace_back()),
                                   property.test);
        }
    }
    std::vector<const Message*> selected;
    for (const Message& message : database.Messages()) {
        const bool isAll = std::ranges::all_of(tests, [&](const std::vector<Test>& ofProperty) {
            return std::ranges::any_of(ofProperty, [&](const Test& test) { return test(message); });
        });
        if (isAll) {
            selected.push_back(&message);
        }
    }
    return selected;
}

std::vector<std::string> Unanswered(const kestrel::Database& database, const Selection& selection) {
    const Utf8Locale locale;
    Selector selector(database);
    std::vector<std::string> sentences;
    for (const Selector::Property& property : selector.Properties()) {
        for (const std::string& text : selection.*property.texts) {
            if (std::ranges::any_of(database.Messages(), property.test(text))) {
                continue;
            }
            if (property.texts == &Selection::nodes && HasNode(database, text)) {
                sentences.push_back("node '" + text + "' sends no message");
            } else {
                sentences.push_back(std::string("there is no ") + property.what + " '" + text + "'" +
                                    NearestText(database, property, text));
            }
        }
    }
    return sentences;
}

}  // namespace vorn
