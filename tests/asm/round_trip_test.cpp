/// There and back with random messages of the examples: bytes to values to bytes, and values to bytes to
/// values. TARVEX_RANDOM_MESSAGES says how many, if not the few of every test run.

#include <cstdlib>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "asm/assembly.h"
#include "capture/message_line.h"
#include "disasm/bit_field_item.h"
#include "disasm/classified_stream_item.h"
#include "disasm/enum_item.h"
#include "disasm/json_report.h"
#include "disasm/number_item.h"
#include "disasm/stream_item.h"
#include "disasm/string_item.h"
#include "disasm/text_report.h"
#include "import/text/wording.h"
#include "params/layout.h"

namespace tarvex::test::round_trip_test {
namespace {

constexpr std::size_t kMessages = 200;

std::size_t MessageCount() {
    const char* text = std::getenv("TARVEX_RANDOM_MESSAGES");
    return text == nullptr ? kMessages : std::max<std::size_t>(kMessages, std::strtoull(text, nullptr, 10));
}

struct Example {
    ZMostFCatManager manager;
    const ZMTCatalog* catalog = nullptr;
    std::vector<CapturedMessage> operations;
    // Data of their functions in the example's capture.
    std::vector<std::vector<std::vector<std::uint8_t>>> samples;
};

std::unique_ptr<Example> Import(const std::string& name) {
    auto example = std::make_unique<Example>();
    example->manager.Validate = false;
    example->manager.ReadNewer = true;
    std::string imported;
    EXPECT_TRUE(example->manager.Import(imported, TARVEX_EXAMPLES "/" + name + ".xml", 1, ""));
    example->catalog = example->manager.FindCatalog(imported);
    for (const ZMTFBlock& block : example->catalog->Items()) {
        for (const ZMTFunction& function : block.Items()) {
            for (const ZMTOperation& operation : function.Items()) {
                if (LayoutOf(operation) != Layout::Incomplete) {
                    example->operations.push_back({.fBlockID = block.FBlockID(),
                                                   .instID = 1,
                                                   .fktID = function.FunctionID(),
                                                   .opType = operation.OpType()});
                }
            }
        }
    }
    std::istringstream capture(ReadFile(TARVEX_EXAMPLES "/" + name + ".capture"));
    std::vector<CapturedMessage> captured;
    for (std::string line; std::getline(capture, line);) {
        CapturedMessage message;
        if (!IsCommentLine(line) && ParseMessageLine(line, message).empty()) {
            captured.push_back(message);
        }
    }
    for (const CapturedMessage& operation : example->operations) {
        std::vector<std::vector<std::uint8_t>> samples;
        for (const CapturedMessage& message : captured) {
            if (message.fBlockID == operation.fBlockID && message.fktID == operation.fktID) {
                samples.push_back(message.data);
            }
        }
        example->samples.push_back(std::move(samples));
    }
    return example;
}

/// How a line has the values.
enum class Style : unsigned {
    Bytes,   // so that their bytes come again
    Values,  // as people would write them
};

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
    }
    return quoted + '"';
}

std::string HexOfItem(const ZMostParameter& item) {
    return "hex:" + HexText(item.Bytes(), "");
}

std::string ValueOf(const ZMostParameter& item, Style style);

/// "Name=value" for each item, with its entry in front where it has one.
std::string FieldsOf(const ZMostParameterListBaseInfo& items, const ZMostParameter* container, Style style,
                     std::string_view separator) {
    std::string text;
    std::size_t index = 0;
    for (const auto& item : items.Items()) {
        const unsigned entry = container == nullptr ? 0 : container->EntryNumber(index++);
        if (item->IsType(kParamVoid)) {
            continue;
        }
        text += text.empty() ? "" : std::string(separator);
        text += entry == 0 ? "" : "[" + std::to_string(entry) + "]";
        text += std::string(item->GetName()) + "=" + ValueOf(*item, style);
    }
    return text;
}

std::string ListOf(const ZMostParameter& array, Style style) {
    std::string text;
    for (const auto& item : array.Members()->Items()) {
        text += (text.empty() ? "" : ",") + ValueOf(*item, style);
    }
    return "[" + text + "]";
}

std::string BitsOf(const ZMostParameterBitField& field, Style style) {
    if (style == Style::Bytes) {
        return "0x" + HexText(field.Bytes(), "");
    }
    std::string text;
    for (unsigned bit = 0; bit < field.BitCount(); ++bit) {
        const ZMostParameterBoolField item = field.BitAt(bit);
        text += text.empty() ? "" : ",";
        text += bit % 2 == 0 && !item.GetName().empty() ? std::string(item.GetName())
                                                        : "bit" + std::to_string(bit);
        text += "=" + Quoted(item.GetText());
    }
    return "{" + text + "}";
}

std::string ValueOf(const ZMostParameter& item, Style style) {
    const bool asBytes = style == Style::Bytes;
    switch (item.Kind()) {
        case ParamKind::Number: {
            const auto& number = static_cast<const ZMostParameterNumber&>(item);
            return asBytes               ? "0x" + HexText(item.Bytes(), "")
                   : number.IsPosition() ? Quoted(item.GetText())
                                         : Quoted(item.GetText() + " " + std::string(number.UnitText()));
        }
        case ParamKind::Enum:
            return asBytes ? std::to_string(item.RawValue()) : Quoted(item.GetText());
        case ParamKind::StreamSignal:
            return item.GetText();
        case ParamKind::Bool:
        case ParamKind::BitField:
            return BitsOf(static_cast<const ZMostParameterBitField&>(item), style);
        case ParamKind::String: {
            const std::string text = item.GetText();
            const bool isOpen = text.ends_with(" {NotTerm}");
            const auto first = item.Bytes()[0];
            const char* marks[] = {"utf16:", "latin9:", "utf8:"};
            if (isOpen || (asBytes && (text.find('.') != std::string::npos || first > kUtf8))) {
                return HexOfItem(item);
            }
            return (asBytes ? marks[first] : "") + Quoted(text);
        }
        case ParamKind::FktIDBitStream:
            return asBytes ? HexOfItem(item) : Quoted(item.GetText());
        case ParamKind::ClassifiedStream: {
            const auto& stream = static_cast<const ZMostParameterClassifiedStream&>(item);
            const std::string type = stream.MediaType();
            if (asBytes && (type.find('.') != std::string::npos ||
                            item.GetText().find('{') != std::string::npos || item.Bytes().size() == 2)) {
                return HexOfItem(item);
            }
            return item.GetText().find('{') != std::string::npos || item.Bytes().size() == 2
                       ? HexOfItem(item)
                       : "{media_type=" + Quoted(type) + ",content=hex:" + HexText(stream.Content(), "") +
                             "}";
        }
        case ParamKind::Array:
            return ListOf(item, style);
        case ParamKind::Stream:
        case ParamKind::ShortStream:
            if (item.Members()->Items().empty() ||
                (asBytes && item.Members()->Items().front()->IsType(kParamStreamSignal))) {
                const std::size_t length = item.IsType(kParamShortStream) && !item.Bytes().empty() ? 1 : 0;
                return "hex:" + HexText(item.Bytes().subspan(length), "");
            }
            return "{" + FieldsOf(*item.Members(), &item, style, ",") + "}";
        default:
            return "{" + FieldsOf(*item.Members(), &item, style, ",") + "}";
    }
}

/// Random bytes, of a sample or from nothing.
std::vector<std::uint8_t> RandomData(const std::vector<std::vector<std::uint8_t>>& samples, int attempt,
                                     std::mt19937& random) {
    std::vector<std::uint8_t> data(attempt % 2 == 0 ? random() % 16 : 48);
    const bool isSmall = random() % 2 == 0;
    for (std::uint8_t& byte : data) {
        byte = static_cast<std::uint8_t>(random() % (isSmall ? 6 : 256));
    }
    if (attempt % 3 == 0 && !samples.empty()) {
        data = samples[random() % samples.size()];
        for (std::size_t changes = random() % 4; changes > 0 && !data.empty(); --changes) {
            data[random() % data.size()] = static_cast<std::uint8_t>(random() % (isSmall ? 6 : 256));
        }
    }
    return data;
}

/// A message of random bytes that fits the operation; nothing when none was found.
std::optional<CapturedMessage> RandomMessage(const Example& example, std::size_t operation,
                                             std::mt19937& random) {
    for (int attempt = 0; attempt < 40; ++attempt) {
        CapturedMessage message = example.operations[operation];
        message.data = RandomData(example.samples[operation], attempt, random);
        for (int cut = 0; cut < 2; ++cut) {
            DecodedMessage decoded;
            DecodeMessage(*example.catalog, message, decoded);
            if (decoded.faults.empty()) {
                return message;
            }
            const std::size_t end = decoded.items.Offset();
            if (!decoded.faults.front().ends_with(" left over") || decoded.faults.size() > 1) {
                break;
            }
            message.data.resize(std::min(end, message.data.size()));
        }
    }
    return std::nullopt;
}

/// Bits of a field or boolean beyond those that it has, which no report shows.
bool HasHiddenBits(const ZMostParameterListBaseInfo& items) {
    for (const auto& item : items.Items()) {
        const bool isField = item->IsType(kParamBitField) || item->IsType(kParamBool);
        if (isField &&
            item->RawValue() >> static_cast<const ZMostParameterBitField&>(*item).BitCount() != 0) {
            return true;
        }
        if (!isField && item->Members() != nullptr && HasHiddenBits(*item->Members())) {
            return true;
        }
    }
    return false;
}

struct Counts {
    std::size_t messages = 0;
    std::size_t operations = 0;
};

template <class Check>
Counts ForRandomMessages(const char* name, unsigned seed, const Check& check) {
    const std::unique_ptr<Example> example = Import(name);
    std::mt19937 random(seed);
    Counts counts;
    std::vector<bool> seen(example->operations.size());
    const std::size_t count = MessageCount();
    for (std::size_t i = 0; counts.messages < count && i < 4 * count; ++i) {
        const std::size_t operation = i % example->operations.size();
        const auto message = RandomMessage(*example, operation, random);
        if (!message) {
            continue;
        }
        ++counts.messages;
        seen[operation] = true;
        DecodedMessage decoded;
        DecodeMessage(*example->catalog, *message, decoded);
        check(*example->catalog, *message, decoded);
        if (testing::Test::HasFatalFailure()) {
            ADD_FAILURE() << AddressText(*message) << " " << HexText(message->data, " ");
            break;
        }
    }
    counts.operations = static_cast<std::size_t>(std::ranges::count(seen, true));
    for (std::size_t i = 0; i < seen.size(); ++i) {
        EXPECT_TRUE(seen[i]) << AddressText(example->operations[i]) << " had no message";
    }
    EXPECT_EQ(counts.messages, count);
    return counts;
}

std::string CaptureLine(const CapturedMessage& message) {
    return AddressText(message) + " (" + HexText(message.data, " ") + ")\n";
}

/// The message with what became of a line for its data; nothing, and a failure, when nothing did.
std::optional<CapturedMessage> Become(const CapturedMessage& message, const std::string& assembled) {
    const std::size_t open = assembled.find('(');
    if (assembled.starts_with('!') || open == std::string::npos) {
        ADD_FAILURE() << assembled;
        return std::nullopt;
    }
    CapturedMessage again = message;
    again.data = BytesOf(assembled.substr(open + 1, assembled.find(')') - open - 1));
    return again;
}

/// Whatever range and step of the catalog do not forbid, passes without force, too.
void ExpectNoForceNeeded(const ZMTCatalog& catalog, const std::string& line, const std::string& forced) {
    const std::string checked = Assembled(catalog, line);
    if (checked.find(" is out of range, ") == std::string::npos &&
        checked.find(" is off the step, ") == std::string::npos) {
        EXPECT_EQ(checked, forced) << line;
    }
}

TEST(RoundTrip, BytesComeAgain) {
    for (const char* name : {"roadster", "convertible"}) {
        SCOPED_TRACE(name);
        ForRandomMessages(
            name, 1,
            [](const ZMTCatalog& catalog, const CapturedMessage& message, const DecodedMessage& decoded) {
                const std::string line =
                    AddressText(message) + " " + FieldsOf(decoded.items, nullptr, Style::Bytes, " ");
                const std::string assembled =
                    Assembled(catalog, decoded.items.Items().empty() ? AddressText(message) : line, true);
                ASSERT_EQ(assembled, CaptureLine(message)) << line;
                ExpectNoForceNeeded(catalog, line, assembled);
            });
    }
}

TEST(RoundTrip, ValuesComeAgain) {
    for (const char* name : {"roadster", "convertible"}) {
        SCOPED_TRACE(name);
        ForRandomMessages(
            name, 2,
            [](const ZMTCatalog& catalog, const CapturedMessage& message, const DecodedMessage& decoded) {
                if (test::Shown(decoded).find("{NotTerm}") != std::string::npos) {
                    return;  // where a text ends is up to the bytes behind it
                }
                const std::string line =
                    AddressText(message) + " " + FieldsOf(decoded.items, nullptr, Style::Values, " ");
                const std::string assembled = Assembled(catalog, line, true);
                const auto again = Become(message, assembled);
                ASSERT_TRUE(again) << line;
                ExpectNoForceNeeded(catalog, line, assembled);
                DecodedMessage said;
                DecodeMessage(catalog, *again, said);
                ASSERT_TRUE(said.faults.empty()) << line;
                // Sizes of texts may differ, as the encoding may; what is said may not.
                ASSERT_EQ(FieldsOf(said.items, nullptr, Style::Values, " "),
                          FieldsOf(decoded.items, nullptr, Style::Values, " "))
                    << line;
            });
    }
}

TEST(RoundTrip, ReportsGiveTheBytesAgain) {
    for (const char* name : {"roadster", "convertible"}) {
        SCOPED_TRACE(name);
        ForRandomMessages(
            name, 3,
            [](const ZMTCatalog& catalog, const CapturedMessage& message, const DecodedMessage& decoded) {
                std::string text;
                TextReport().Message({.file = "", .number = 1}, message, decoded, text);
                ASSERT_EQ(Assembled(catalog, text), CaptureLine(message)) << text;
                std::string json;
                JsonReport().Message({.file = "", .number = 1}, message, decoded, json);
                ASSERT_EQ(Assembled(catalog, json), CaptureLine(message)) << json;
                // From the values alone. Where a text ends is up to the bytes behind it.
                if (json.find("{NotTerm}") != std::string::npos) {
                    return;
                }
                nlohmann::json alone = nlohmann::json::parse(json);
                alone.erase("data");
                const std::string assembled = Assembled(catalog, alone.dump(), true);
                const auto again = Become(message, assembled);
                ASSERT_TRUE(again) << json;
                ExpectNoForceNeeded(catalog, alone.dump(), assembled);
                DecodedMessage said;
                DecodeMessage(catalog, *again, said);
                ASSERT_TRUE(said.faults.empty()) << json;
                std::string report;
                TextReport().Message({.file = "", .number = 1}, *again, said, report);
                ASSERT_EQ(report.substr(report.find('\n')), text.substr(text.find('\n'))) << json;
                // Their bytes are those of the message as far as the report has all of them.
                if (!HasHiddenBits(decoded.items) && json.find("\"string\"") == std::string::npos &&
                    json.find("classified") == std::string::npos &&
                    json.find("function_ids") == std::string::npos &&
                    json.find("\"signal\"") == std::string::npos) {
                    ASSERT_EQ(assembled, CaptureLine(message)) << json;
                }
            });
    }
}

}  // namespace
}  // namespace tarvex::test::round_trip_test
