/// What a catalog costs, from its import to the database in each format, and what it costs then to take the
/// database apart, to put it together and to compare: calls of functions, memory and bytes of files are
/// bounded by the size. A few KB of input stand for larger catalogs: see expansion.h. With
/// `--show` the program tells what the inputs cost.

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "catalog_files.h"
#include "catalog_mutator.h"
#include "catalogs.h"
#include "databases.h"
#include "expansion.h"
#include "export/exporter.h"
#include "import/text/run_allowance.h"
#include "kestrel/reader.h"
#include "vorn/compare.h"
#include "vorn/compare_report.h"
#include "vorn/merge.h"
#include "work.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

constexpr std::size_t kMaxExpanded = std::size_t{1} << 20;

// The bounds. What a run may take altogether (RunAllowance) comes to about a second for a tiny catalog and to
// two or three for one of 5 MB, in the release build. Calls are counted here with none of them inlined: up to
// 14 for a step. Ordinary catalogs (the examples, the corpus of the target `catalog`, all
// shapes of generate-catalog) take up to 15 calls, 40 bytes allocated, 16 held and 4 written for each byte.
// What is held is the document as the parser has it, then the tree, then the database.
#ifdef __OPTIMIZE__
constexpr Bound kSteps{700'000'000, 150};
#else  // every character that is looked at is a call
constexpr Bound kSteps{7'000'000'000, 1500};
#endif
constexpr Bound kAllocated{700'000'000, 300};
constexpr Bound kHeld{150'000'000, 64};
constexpr Bound kWritten = RunAllowance::kWritten;

constexpr Work kUnbounded{UINT64_MAX / 2, UINT64_MAX / 2, INT64_MAX / 2, 0};

bool isShown = false;

std::uint64_t SizeOf(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

void Show(const char* what, std::size_t bytes, const Work& work) {
    if (isShown) {
        std::fprintf(stderr,
                     "%-12s %9zu bytes: %11" PRIu64 " steps, %11" PRIu64 " allocated, %11" PRIi64
                     " held, %11" PRIu64 " written\n",
                     what, bytes, work.steps, work.allocated, work.held, work.written);
    }
}

/// What was spent before and what an action, which tells how many bytes it has written, costs on top of it.
/// The process ends when that is too much for a catalog of so many bytes.
template <class Action>
Work Spend(const char* what, std::size_t bytes, const Work& spent, const Action& action) {
    const Work more{kSteps.For(bytes) - spent.steps, kAllocated.For(bytes) - spent.allocated,
                    static_cast<std::int64_t>(kHeld.For(bytes)) - spent.held, 0};
    StopBeyond(isShown ? kUnbounded : more);
    const Work before = WorkSoFar();
    const std::uint64_t written = action();
    const Work after = WorkSoFar();
    Work sum{spent.steps + after.steps - before.steps, spent.allocated + after.allocated - before.allocated,
             spent.held + MostHeld() - before.held, spent.written + written};
    Show(what, bytes, sum);
    sum.held = spent.held + after.held - before.held;  // the most of it may be gone already
    Require(isShown || sum.written <= kWritten.For(bytes),
            "a catalog costs no more bytes of files than its size allows");
    return sum;
}

/// An import with both logs, and its catalog. It may fail.
class Import {
  public:
    Import(const std::string& path, std::size_t bytes, bool validate) : manager_(MakeManager()) {
        const std::string logPath = ScratchFile("cost.log");
        const std::string treePath = ScratchFile("cost.tree");
        manager_->Validate = validate;
        manager_->ReadNewer = true;
        work_ = Spend(validate ? "validated" : "import", bytes, {}, [&] {
            std::string name;
            if (!manager_->Import(name, path, 1, logPath)) {
                return SizeOf(logPath);
            }
            catalog_ = manager_->FindCatalog(name);
            manager_->WriteTreeLog(treePath);
            return SizeOf(logPath) + SizeOf(treePath);
        });
    }
    /// Null when it has failed.
    const ZMTCatalog* Catalog() const { return catalog_; }
    const Work& Cost() const { return work_; }

  private:
    std::unique_ptr<ZMostFCatManager> manager_;
    const ZMTCatalog* catalog_ = nullptr;
    Work work_;
};

/// Subset, merge and diff, of which each is bounded by the size of the database.
void Compare(const std::string& path) {
    const std::size_t bytes = SizeOf(path);
    const auto database = kestrel::ReadDatabase(path);
    Division parts;
    const Work spent = Spend("subset", bytes, {}, [&] {
        parts = DivisionOf(*database);
        return 0U;
    });
    std::unique_ptr<kestrel::Database> together;
    Spend("merge", bytes, {.held = spent.held}, [&] {
        together = vorn::Merge(*parts.part, *parts.rest, vorn::Preference::First);
        return 0U;
    });
    Spend("merge, equal", bytes, {}, [&] {
        vorn::Merge(*database, *together, vorn::Preference::Second);
        return 0U;
    });
    Spend("diff, equal", bytes, {},
          [&] { return vorn::ChangesText(vorn::Compare(*database, *together), vorn::Style(false)).size(); });
    Spend("diff", bytes, {}, [&] { return vorn::ChangesJson(vorn::Compare(*parts.rest, *database)).size(); });
    Spend("diff, other", bytes, {},
          [&] { return vorn::ChangesMarkdown(vorn::Compare(*parts.rest, *parts.part)).size(); });
}

void Convert(const Import& import, std::size_t bytes, const char* fileName) {
    const std::string path = ScratchFile(fileName);
    ExportFlags flags;
    flags.makeReadOnly = false;
    flags.safeLayout = true;
    flags.writeScaling = true;
    Spend(fileName, bytes, import.Cost(), [&] {
        ZVornExporter exporter(import.Catalog(), path, "", "", {}, {}, flags);
        Require(exporter.Export() == 0, "a catalog can be converted");
        return SizeOf(path);
    });
    if (path.ends_with(".vorn")) {
        Compare(path);
    }
    std::filesystem::remove(path);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    isShown = std::any_of(*arguments, *arguments + *count,
                          [](const char* argument) { return argument == std::string_view("--show"); });
    RequireKnownWords();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    constexpr unsigned kTimesMutations = 4;  // one in so many
    if (seed % kTimesMutations == 0) {
        const std::string changed = MutateTimes(TextOf(data, size), seed / kTimesMutations);
        if (!changed.empty() && changed.size() <= maxSize) {
            std::ranges::copy(changed, data);
            return changed.size();
        }
    }
    return MutateCatalog(data, size, maxSize, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMaxShown = std::size_t{64} << 20;
    const std::string input = Expanded(TextOf(data, size), isShown ? kMaxShown : kMaxExpanded);
    const std::string path = WriteCatalog(input);
    if (input.find("<!DOCTYPE") != std::string::npos) {
        const Import validated(path, input.size(), true);
    }
    const Import import(path, input.size(), false);
    if (import.Catalog() != nullptr) {
        for (const char* fileName : {"cost.vorn", "cost.sqlite", "cost.kcd"}) {
            Convert(import, input.size(), fileName);
        }
    }
    StopBeyond(kUnbounded);
    return 0;
}
