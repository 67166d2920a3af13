#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "import/text/shown_text.h"
#include "kestrel/format.h"
#include "kestrel/reader.h"
#include "kestrel/writer.h"
#include "versions.h"
#include "vorn/check.h"
#include "vorn/compare.h"
#include "vorn/compare_report.h"
#include "vorn/describe.h"
#include "vorn/style.h"

namespace {

/// The exit status: as other programs that compare have it.
enum Status : int { kSame = 0, kDifferent = 1, kTrouble = 2 };

/// Ends the program with a text on standard error.
class Trouble : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct Arguments {
    std::string database;
    std::string other;
    std::string message;
    std::string node;
    std::string pattern;
    std::string format = "text";
    bool withNames = false;
};

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

Status Show(const std::string& path, const std::string& messageName) {
    const auto database = Read(path);
    const vorn::Style style = vorn::Style::OfStandardOutput();
    if (messageName.empty()) {
        Print(vorn::DatabaseText(*database, style));
        return kSame;
    }
    const kestrel::Message* message = vorn::FindMessage(*database, messageName);
    if (message == nullptr) {
        throw Trouble(path + ": there is no message '" + messageName + "'");
    }
    Print(vorn::MessageText(*message, style));
    return kSame;
}

Status List(const std::string& path, const std::string& node, const std::string& pattern) {
    Print(vorn::MessageList(*Read(path), node, pattern));
    return kSame;
}

Status Convert(const std::string& from, const std::string& to) {
    const auto database = Read(from);
    switch (kestrel::WriteDatabase(*database, to.c_str())) {
        case kKestrelOk:
            return kSame;
        case kKestrelCannotOpen:
            throw Trouble(to + ": can't be written");
        default:
            throw Trouble(to + ": could not be written; what was there before is unchanged");
    }
}

Status Diff(const Arguments& arguments) {
    const auto before = Read(arguments.database);
    const auto after = Read(arguments.other);
    const auto comparison = vorn::Compare(*before, *after, {.withUniqueNames = arguments.withNames});
    if (arguments.format == "json") {
        Print(vorn::ChangesJson(comparison));
    } else if (arguments.format == "markdown") {
        Print(vorn::ChangesMarkdown(comparison));
    } else {
        Print(vorn::ChangesText(comparison, vorn::Style::OfStandardOutput()));
    }
    return vorn::AreSame(comparison) ? kSame : kDifferent;
}

Status Check(const std::string& path) {
    const auto faults = vorn::Check(*Read(path));
    std::string text;
    for (const std::string& fault : faults) {
        text += fault + "\n";
    }
    Print(text);
    return faults.empty() ? kSame : kDifferent;
}

/// ".sqlite, .sqlite3, .db"
std::string Extensions(const std::function<bool(kestrel::Format)>& isWanted) {
    std::string list;
    for (const auto& [extension, format] : kestrel::kFormats) {
        if (isWanted(format)) {
            list.append(list.empty() ? "" : ", ").append(extension);
        }
    }
    return list;
}

/// Adds a command with its database.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* what, const char* databaseName,
                     Arguments& arguments) {
    CLI::App& command = *app.add_subcommand(name, what);
    command
        .add_option(databaseName, arguments.database,
                    "a database: Vorn, or SQLite (" + Extensions([](kestrel::Format format) {
                        return format == kestrel::Format::Sqlite;
                    }) + ")")
        ->required();
    return command;
}

Status Run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Looks into bus databases, converts and compares them");
    app.set_version_flag("--version", std::string("vorn ") + tarvex::kProgramVersion);
    app.require_subcommand(1);
    app.footer("Exit status: 0 nothing found, 1 differences or faults found, 2 trouble.");
    CLI::App& show =
        AddCommand(app, "show", "shows a database, or one message with its bits", "DB", arguments);
    show.add_option("--message", arguments.message, "a name, or an identifier (0x... or decimal)");
    CLI::App& list = AddCommand(app, "list", "lists messages", "DB", arguments);
    list.add_option("--node", arguments.node, "only those that this node sends");
    list.add_option("--match", arguments.pattern,
                    "only those whose name matches a pattern, as the shell has them: * ? [abc]");
    CLI::App& convert = AddCommand(app, "convert", "writes a database in another format", "IN", arguments);
    convert
        .add_option("OUT", arguments.other,
                    "its extension chooses the format: " + Extensions([](kestrel::Format /*format*/) {
                        return true;
                    }) + "; else Vorn")
        ->required();
    CLI::App& diff = AddCommand(app, "diff", "tells what differs between two databases", "OLD", arguments);
    diff.add_option("NEW", arguments.other, "the other database")->required();
    diff.add_option("--format", arguments.format, "text, json or markdown")
        ->check(CLI::IsMember({"text", "json", "markdown"}))
        ->capture_default_str();
    diff.add_flag("--names", arguments.withNames,
                  "also tells of names that differ only in what makes them unique");
    CLI::App& check = AddCommand(app, "check", "looks for faults in a database", "DB", arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = app.exit(error) == 0;
        std::cout.flush();
        return isAnswer && std::cout ? kSame : kTrouble;
    }
    if (show.parsed()) {
        return Show(arguments.database, arguments.message);
    }
    if (list.parsed()) {
        return List(arguments.database, arguments.node, arguments.pattern);
    }
    if (convert.parsed()) {
        return Convert(arguments.database, arguments.other);
    }
    if (diff.parsed()) {
        return Diff(arguments);
    }
    if (check.parsed()) {
        return Check(arguments.database);
    }
    return kTrouble;
}

/// In words that need no memory.
void TellOutOfMemory() {
    (void)std::fputs("vorn: there is not enough memory for this\n", stderr);
}

/// To take a large list apart the JSON library needs memory too, and cannot say when there is none. Nothing
/// has been written where files are read, so nothing is left behind.
[[noreturn]] void Terminate() {
    try {
        if (const std::exception_ptr exception = std::current_exception()) {
            std::rethrow_exception(exception);
        }
    } catch (const std::bad_alloc&) {
        TellOutOfMemory();
        std::_Exit(kTrouble);
    } catch (...) {
        std::abort();
    }
    std::abort();
}

}  // namespace

int main(int argc, char** argv) try {
    std::set_terminate(Terminate);
    (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a failed write like any other
    return Run(argc, argv);
} catch (const std::bad_alloc&) {
    TellOutOfMemory();
    return kTrouble;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "vorn: %s\n", tarvex::Shown(exception.what()).c_str());
    return kTrouble;
}
