/// Random bytes for every operation of a catalog: whatever they say, the items stay inside the message and
/// inside each other, and both reports can tell them. TARVEX_RANDOM_MESSAGES says how many, if not
/// the few of every test run.

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "capture/message_line.h"
#include "disasm/decoding.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"

namespace tarvex::test::random_test {
namespace {

constexpr std::size_t kMessages = 3000;
constexpr std::size_t kMaxBytes = 64;

std::size_t MessageCount() {
    const char* text = std::getenv("TARVEX_RANDOM_MESSAGES");
    return text == nullptr ? kMessages : std::max<std::size_t>(kMessages, std::strtoull(text, nullptr, 10));
}

/// An operation of every function, and one that does not exist.
std::vector<CapturedMessage> OperationsOf(const ZMTCatalog& catalog) {
    std::vector<CapturedMessage> operations;
    for (unsigned block = 0; block < catalog.Size(); ++block) {
        const ZMTFBlock* fBlock = catalog.GetAt(block);
        for (unsigned fkt = 0; fBlock != nullptr && fkt < fBlock->Size(); ++fkt) {
            const ZMTFunction* function = fBlock->GetAt(fkt);
            for (unsigned opType = 0; function != nullptr && opType < function->Size(); ++opType) {
                if (function->GetAt(opType) != nullptr) {
                    operations.push_back(
                        {.fBlockID = block, .instID = 1, .fktID = fkt, .opType = opType, .data = {}});
                }
            }
        }
    }
    return operations;
}

/// The items stand one behind the other between the bytes `begin` and `end`, and so do the items inside them.
bool StandsInside(const ZMostParameterListBaseInfo& items, std::size_t begin, std::size_t end) {
    std::size_t offset = begin;
    for (const auto& item : items.Items()) {
        const std::size_t itemEnd = item->Offset() + item->Bytes().size();
        const bool isBit = item->IsType(kParamBoolField);
        if (item->Offset() < begin || itemEnd > end || (!isBit && item->Offset() != offset)) {
            return false;
        }
        if (item->Members() != nullptr && !StandsInside(*item->Members(), item->Offset(), itemEnd)) {
            return false;
        }
        offset = isBit ? begin : itemEnd;
    }
    return true;
}

/// The bytes of the items are those of the message at their offsets.
bool BytesMatch(const ZMostParameterListBaseInfo& items, const std::vector<std::uint8_t>& data) {
    for (const auto& item : items.Items()) {
        const auto bytes = item->Bytes();
        if (!std::equal(bytes.begin(), bytes.end(),
                        data.begin() + static_cast<std::ptrdiff_t>(item->Offset()))) {
            return false;
        }
        if (item->Members() != nullptr && !BytesMatch(*item->Members(), data)) {
            return false;
        }
    }
    return true;
}

void ExpectSound(const ZMTCatalog& catalog, const CapturedMessage& message, bool withJson) {
    DecodedMessage decoded;
    DecodeMessage(catalog, message, decoded);
    std::string text;
    TextReport().Message({.file = "", .number = 1}, message, decoded, text);
    std::string json;
    JsonReport().Message({.file = "", .number = 1}, message, decoded, json);
    const std::string address = AddressText(message);
    const std::string line = address + " (" + HexText(message.data, " ") + ")";

    ASSERT_TRUE(StandsInside(decoded.items, 0, message.data.size())) << line << "\n" << Shown(decoded);
    ASSERT_TRUE(BytesMatch(decoded.items, message.data)) << line << "\n" << Shown(decoded);
    // One ends the reading; others tell of parameters that were read all the same.
    ASSERT_LE(decoded.faults.size(), 1U + decoded.items.CountOfAll()) << line << "\n" << Shown(decoded);
    // A message without fault is taken to its last byte.
    const auto& items = decoded.items.Items();
    const std::size_t end = items.empty() ? 0 : items.back()->Offset() + items.back()->Bytes().size();
    if (decoded.faults.empty()) {
        ASSERT_EQ(end, message.data.size()) << line << "\n" << Shown(decoded);
    }
    ASSERT_TRUE(text.starts_with(line)) << text;
    ASSERT_EQ(json.find('\n'), json.size() - 1) << json;
    if (withJson) {
        const nlohmann::json parsed = nlohmann::json::parse(json, nullptr, false);
        ASSERT_TRUE(parsed.is_object()) << json;
        ASSERT_EQ(parsed.at("message"), address);
        ASSERT_EQ(parsed.at("items").size(), items.size());
        ASSERT_EQ(parsed.at("errors").size(), decoded.faults.size());
    }
    // The header of the report is a message again.
    CapturedMessage again;
    ASSERT_EQ(ParseMessageLine(line, again), "");
    ASSERT_EQ(again.data, message.data);
}

TEST(RandomMessages, ItemsStayInsideTheMessage) {
    ZMostFCatManager manager;
    manager.Validate = false;
    std::string name;
    ASSERT_TRUE(manager.Import(name, TARVEX_EXAMPLES "/roadster.xml", 1, ""));
    const ZMTCatalog* catalog = manager.FindCatalog(name);
    ASSERT_NE(catalog, nullptr);
    const std::vector<CapturedMessage> operations = OperationsOf(*catalog);
    ASSERT_GT(operations.size(), 100U);

    std::mt19937 random(20240603);
    const std::size_t count = MessageCount();
    for (std::size_t i = 0; i < count; ++i) {
        CapturedMessage message = operations[i % operations.size()];
        message.data.resize(random() % (kMaxBytes + 1));
        // Half of the messages have small values, which more often mean something as a selector.
        const bool isSmall = random() % 2 == 0;
        for (std::uint8_t& byte : message.data) {
            byte = static_cast<std::uint8_t>(random() % (isSmall ? 6 : 256));
        }
        ExpectSound(*catalog, message, i % 16 == 0);
        if (HasFatalFailure()) {
            FAIL() << "message " << i;
        }
    }
}

/// Sizes that no catalog should have, and everything inside everything.
std::string OddCatalog() {
    const std::string definitions =
        R"(<Definition><TypeDef TypeID="minus"><TDefName>M</TDefName><TDefSize>-1</TDefSize></TypeDef>)"
        R"(<TypeDef TypeID="least"><TDefName>L</TDefName><TDefSize>-2147483648</TDefSize></TypeDef>)"
        R"(<TypeDef TypeID="none"><TDefName>N</TDefName><TDefSize>0</TDefSize></TypeDef>)"
        R"(<TypeDef TypeID="three"><TDefName>T</TDefName><TDefSize>3</TDefSize></TypeDef>)"
        R"(<TypeDef TypeID="most"><TDefName>H</TDefName><TDefSize>2147483647</TDefSize></TypeDef>)";
    std::string functions;
    int fktID = 0x100;
    const auto add = [&](const std::vector<ParamOf>& params) {
        functions += "<Function><FunctionID>" + std::to_string(fktID) + "</FunctionID><FunctionName>F" +
                     std::to_string(fktID) + "</FunctionName><FunctionClass><Property><PUnclassified>";
        ++fktID;
        int pos = 1;
        for (const ParamOf& param : params) {
            functions +=
                Param(param.name, param.type,
                      "<PReportStatus><ParamPos>" + std::to_string(pos++) + "</ParamPos></PReportStatus>");
        }
        functions += "</PUnclassified></Property></FunctionClass></Function>";
    };
    for (const char* size : {"minus", "least", "none", "three", "most"}) {
        const std::string number = Number(size);
        add({{"A", kUByte}, {"B", number}, {"C", kUByte}});
        add({{"L", Array("NMax", "E", number)}});
        add({{"Pos", number}, {"Data", Array("4", "E", kUByte)}});
        add({{"Pos", kUWord}, {"Data", Array("4", "E", number)}});
        add({{"Mode", number}, {"S", Stream(Case("Mode", "0..2", {{"1", "A", number}}))}});
    }
    const std::string pair = Record({{"Pos", kUWord}, {"Data", Array("3", "E", kSwitch)}});
    const std::string stream = Stream(Case("Pos", "0..1", {{"1", "T", Text("3")}}) +
                                      Case("Pos", "&gt;2", {{"1", "Pos", kUByte}, {"2", "Data", pair}}));
    add({{"Pos", kUWord},
         {"Data", Array("3", "R", Record({{"A", pair}, {"B", Array("2", "F", Bits(10))}}))}});
    add({{"Pos", kUWord}, {"Data", Record({{"A", Array("2", "I", Array("2", "E", kUByte))}, {"B", pair}})}});
    add({{"Pos", kUByte}, {"S", stream}, {"T", Text("")}});
    add({{"L", Array("NMax", "R", Record({{"Pos", kUByte}, {"S", stream}}))}});
    add({{"L", Array("NMax", "", Record({{"V", kVoid}, {"T", Text("0")}}))}});
    const std::string usual(kDefinitions);
    return CatalogOf(BlockOf(functions), definitions + usual.substr(usual.find('>') + 1));
}

TEST(RandomMessages, OddCatalogsDoNoHarm) {
    const Decoding decoding(OddCatalog());
    const std::vector<CapturedMessage> operations = OperationsOf(*decoding.Import().catalog);
    ASSERT_GE(operations.size(), 10U) << decoding.Import().log;
    std::mt19937 random(6);
    const std::size_t count = MessageCount();
    for (std::size_t i = 0; i < count; ++i) {
        CapturedMessage message = operations[i % operations.size()];
        message.data.resize(random() % 24);
        for (std::uint8_t& byte : message.data) {
            byte = static_cast<std::uint8_t>(random() % (random() % 3 == 0 ? 256 : 5));
        }
        ExpectSound(*decoding.Import().catalog, message, true);
        if (HasFatalFailure()) {
            FAIL() << "message " << i;
        }
    }
}

struct Alphabet {
    const char* what;
    std::string_view characters;
};
constexpr Alphabet kAlphabets[] = {
    {"digits", "0123456789ABCDEFabcdef"},
    {"marks", "0123456789AB.. ()[]:\t"},
    {"anything", "02C.() []:#gx-+\x01\x7f\xff\r"},
};

TEST(RandomLines, ParserAndReportsTakeEverything) {
    std::mt19937 random(7);
    for (const Alphabet& alphabet : kAlphabets) {
        SCOPED_TRACE(alphabet.what);
        const std::size_t count = MessageCount();
        for (std::size_t i = 0; i < count; ++i) {
            std::string line = random() % 2 == 0 ? "22.01.400.C " : "";
            for (std::size_t length = random() % 40; length > 0; --length) {
                line += alphabet.characters[random() % alphabet.characters.size()];
            }
            CapturedMessage message;
            const std::string fault = ParseMessageLine(line, message);
            if (fault.empty()) {
                // What was read says the same when it is written down.
                CapturedMessage again;
                ASSERT_EQ(
                    ParseMessageLine(AddressText(message) + " (" + HexText(message.data, " ") + ")", again),
                    "");
                ASSERT_EQ(AddressText(again), AddressText(message)) << line;
                ASSERT_EQ(again.data, message.data) << line;
            } else {
                std::string json;
                JsonReport().BadLine({.file = "", .number = 1}, line, fault, json);
                ASSERT_TRUE(nlohmann::json::accept(json)) << line;
            }
        }
    }
}

}  // namespace
}  // namespace tarvex::test::random_test
