#include "databases.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <libxml/parser.h>
#include <utility>

#include <nlohmann/json.hpp>

#include "kestrel/reader.h"
#include "kestrel/writer.h"
#include "support.h"
#include "vorn/check_report.h"
#include "vorn/compare.h"
#include "vorn/compare_report.h"
#include "vorn/describe.h"
#include "vorn/merge.h"
#include "vorn/message_json.h"
#include "vorn/selection.h"
#include "vorn/subset.h"

namespace tarvex::fuzz {
namespace {

std::string Write(const kestrel::Database& database, const std::string& name) {
    std::string path = ScratchFile(name);
    std::remove(path.c_str());
    Require(kestrel::WriteDatabase(database, path.c_str()) == kKestrelOk, "a database can be written");
    return path;
}

std::unique_ptr<kestrel::Database> WriteAndRead(const kestrel::Database& database, const std::string& name) {
    const std::string path = Write(database, name);
    try {
        return kestrel::ReadDatabase(path);
    } catch (const kestrel::ReadError& error) {
        Require(false, std::string("what was written can be read: ") + error.what());
    }
    return nullptr;
}

}  // namespace

std::string VornOf(const kestrel::Database& database) {
    return ReadFile(Write(database, "bytes.vorn"));
}

void RequireSameWhenReadAgain(const kestrel::Database& database, bool withSqlite) {
    const std::string vorn = VornOf(database);
    Require(nlohmann::json::accept(vorn), "a Vorn file is JSON");
    Require(VornOf(*WriteAndRead(database, "again.vorn")) == vorn, "a Vorn file stays the same");
    if (withSqlite) {
        Require(VornOf(*WriteAndRead(database, "again.sqlite")) == vorn, "a SQLite file says the same");
    }
}

void RequireKcd(const kestrel::Database& database) {
    const std::string kcd = ReadFile(Write(database, "again.kcd"));
    constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    xmlDoc* document = xmlReadMemory(kcd.data(), static_cast<int>(kcd.size()), nullptr, nullptr, kOptions);
    Require(document != nullptr, "a KCD file is XML");
    xmlFreeDoc(document);
}

Division DivisionOf(const kestrel::Database& database) {
    std::vector<const kestrel::Message*> some;
    std::vector<const kestrel::Message*> others;
    for (const kestrel::Message& message : database.Messages()) {
        (message.identifier % 3 == 0 ? some : others).push_back(&message);
    }
    return {vorn::SubsetOf(database, some), vorn::SubsetOf(database, others)};
}

/// Whether each message has a higher identifier than the one before it.
static bool AreInOrder(const kestrel::Database& database) {
    const auto& messages = database.Messages();
    const auto rank = [](const kestrel::Message& message) {
        return std::pair(message.identifier & ~kExtendedIdentifier, message.identifier & kExtendedIdentifier);
    };
    return std::ranges::adjacent_find(messages, std::ranges::greater_equal(), rank) == messages.end();
}

/// Requires that parts of the database make what they were.
static void RequireParts(const kestrel::Database& database) {
    Require(VornOf(*vorn::Merge(database, database, vorn::Preference::Second)) == VornOf(database),
            "a database merged with itself stays the same");
    const auto [part, rest] = DivisionOf(database);
    Require(part->Messages().size() + rest->Messages().size() == database.Messages().size(),
            "each message is in one part");
    const auto together = vorn::Merge(*part, *rest, vorn::Preference::First);
    Require(together->Messages().size() <= database.Messages().size(), "no message is there twice");
    if (AreInOrder(database) && vorn::AreSame(vorn::ConflictsOf(*part, *rest))) {
        Require(VornOf(*together) == VornOf(database), "parts without a conflict make the whole");
    }
    Require(
        nlohmann::json::accept(vorn::ChangesJson(vorn::Compare(*rest, database, {.withUniqueNames = true}))),
        "changes are JSON");
    vorn::ChangesMarkdown(vorn::ConflictsOf(*part, database));
}

void RequireCommands(const kestrel::Database& database) {
    const vorn::Style style(false);
    vorn::FaultsText(vorn::FaultsOf(database));
    Require(nlohmann::json::accept(vorn::FaultsJson(vorn::FaultsOf(database))), "faults are JSON");
    vorn::DatabaseText(database, style);
    const vorn::Selection selection{.messages = {"*a?", "2?.*.C"}, .fblocks = {"*o*"}, .nodes = {"[a-m]*"}};
    vorn::MessageList(vorn::Select(database, selection));
    vorn::Unanswered(database, selection);
    Require(nlohmann::json::accept(vorn::MessagesJson(database, vorn::Select(database, {}))),
            "messages are JSON");
    for (const kestrel::Message& message : database.Messages()) {
        vorn::MessageText(message, style);
    }
    const auto comparison = vorn::Compare(database, database);
    Require(vorn::Summary(comparison).empty(),
            "a database differs from itself: " + vorn::ChangesText(comparison, style));
    RequireParts(database);
    const kestrel::Database nothing("");
    Require(nlohmann::json::accept(vorn::ChangesJson(vorn::Compare(nothing, database))), "changes are JSON");
}

}  // namespace tarvex::fuzz
