#include "vorn/commands.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "drawing/style.h"
#include "import/text/shown_text.h"
#include "kestrel/csv_rows.h"
#include "kestrel/database_builder.h"
#include "kestrel/reader.h"
#include "vorn/check_report.h"
#include "vorn/compare.h"
#include "vorn/compare_report.h"
#include "vorn/describe.h"
#include "vorn/merge.h"
#include "vorn/message_json.h"
#include "vorn/output.h"
#include "vorn/subset.h"

namespace vorn {
namespace {

/// A table is written in blocks of about this size.
constexpr std::size_t kBlock = 1 << 20;

std::unique_ptr<kestrel::Database> Read(const std::string& path) {
    try {
        return kestrel::ReadDatabase(path);
    } catch (const kestrel::ReadError& error) {
        throw Trouble(path + ": " + error.what());
    }
}

void Print(const std::string& text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!isWritten || std::fflush(stdout) != 0) {
        throw Trouble(std::string("can't write the output: ") + std::strerror(errno));
    }
}

/// What a selection finds.
struct Selected {
    std::vector<const kestrel::Message*> messages;
    /// Something was looked for that there is not.
    bool isMissingSome = false;
};

/// The messages that the command line asks for. Says what of it there is not.
Selected SelectFrom(const kestrel::Database& database, const Arguments& arguments) {
    Selected selected{Select(database, arguments.selection)};
    std::vector<std::string> missing = Unanswered(database, arguments.selection);
    if (selected.messages.empty() && missing.empty() && !arguments.selection.IsEmpty()) {
        missing.emplace_back("no message is all of this at once");
    }
    for (const std::string& what : missing) {
        std::fprintf(stderr, "vorn: %s\n", tarvex::Shown(arguments.database + ": " + what).c_str());
    }
    selected.isMissingSome = !missing.empty();
    return selected;
}

void PrintCsv(const kestrel::Database& database, const std::vector<const kestrel::Message*>& messages) {
    kestrel::CsvRows rows(database);
    std::string csv(kestrel::kCsvHeader);
    for (const kestrel::Message* message : messages) {
        rows.Append(*message, csv);
        if (csv.size() > kBlock) {
            Print(csv);
            csv.clear();
        }
    }
    Print(csv);
}

/// All messages but those, in the order of the database, which they have, too.
std::vector<const kestrel::Message*> AllBut(const kestrel::Database& database,
                                            const std::vector<const kestrel::Message*>& messages) {
    std::vector<const kestrel::Message*> others;
    auto next = messages.begin();
    for (const kestrel::Message& message : database.Messages()) {
        if (next != messages.end() && *next == &message) {
            ++next;
        } else {
            others.push_back(&message);
        }
    }
    return others;
}

Status StatusOf(const Selected& selected) {
    return selected.isMissingSome ? kDifferent : kSame;
}

}  // namespace

Status Show(const Arguments& arguments) {
    const auto database = Read(arguments.database);
    const Style style = Style::OfStandardOutput(arguments.colouring);
    if (arguments.selection.IsEmpty()) {
        Print(DatabaseText(*database, style));
        return kSame;
    }
    const Selected selected = SelectFrom(*database, arguments);
    for (const kestrel::Message* message : selected.messages) {
        Print((message == selected.messages.front() ? "" : "\n") + MessageText(*message, style));
    }
    return StatusOf(selected);
}

Status List(const Arguments& arguments) {
    const auto database = Read(arguments.database);
    const Selected selected = SelectFrom(*database, arguments);
    if (arguments.format == "json") {
        Print(MessagesJson(*database, selected.messages));
    } else if (arguments.format == "csv") {
        PrintCsv(*database, selected.messages);
    } else {
        Print(MessageList(selected.messages));
    }
    return StatusOf(selected);
}

Status Convert(const Arguments& arguments) {
    RequireReplaceable(arguments.output, arguments.isForced);
    Write(*Read(arguments.database), arguments.output);
    return kSame;
}

Status Diff(const Arguments& arguments) {
    const auto before = Read(arguments.database);
    const auto after = Read(arguments.other);
    const auto comparison = Compare(*before, *after, {.withUniqueNames = arguments.withNames});
    if (arguments.format == "json") {
        Print(ChangesJson(comparison));
    } else if (arguments.format == "markdown") {
        Print(ChangesMarkdown(comparison));
    } else {
        Print(ChangesText(comparison, Style::OfStandardOutput(arguments.colouring)));
    }
    return AreSame(comparison) ? kSame : kDifferent;
}

Status Check(const Arguments& arguments) {
    const auto faults = FaultsOf(*Read(arguments.database));
    Print(arguments.format == "json" ? FaultsJson(faults) : FaultsText(faults));
    return faults.empty() ? kSame : kDifferent;
}

Status Subset(const Arguments& arguments) {
    RequireReplaceable(arguments.output, arguments.isForced);
    if (arguments.selection.IsEmpty()) {
        throw Trouble(
            "subset: nothing says which messages: --message, --fblock, --function, --optype or --node");
    }
    const auto database = Read(arguments.database);
    Selected selected = SelectFrom(*database, arguments);
    if (selected.isMissingSome) {
        return kDifferent;
    }
    if (arguments.isExcept) {
        selected.messages = AllBut(*database, selected.messages);
    }
    Write(*SubsetOf(*database, selected.messages), arguments.output);
    return kSame;
}

Status Merge(const Arguments& arguments) {
    RequireReplaceable(arguments.output, arguments.isForced);
    const auto first = Read(arguments.database);
    const auto second = Read(arguments.other);
    const Comparison conflicts = ConflictsOf(*first, *second);
    if (!AreSame(conflicts) && arguments.preferred.empty()) {
        Print(ChangesText(conflicts, Style::OfStandardOutput(arguments.colouring)));
        std::fputs(
            "vorn: these differ in both databases, or are definitions of one (+ and -) whose default "
            "would hold for the other; --prefer first or --prefer second merges all the same\n",
            stderr);
        return kDifferent;
    }
    try {
        const Preference preference =
            arguments.preferred == "second" ? Preference::Second : Preference::First;
        Write(*Merge(*first, *second, preference), arguments.output);
    } catch (const kestrel::BadRecord& error) {
        throw Trouble(arguments.output + ": can't be made of both: " + error.what());
    }
    return kSame;
}

}  // namespace vorn
