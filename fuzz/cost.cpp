/// What a catalog costs, from its import to the database in each format: calls of functions, memory and bytes
/// of files are bounded by its size. A few KB of input stand for larger catalogs: see expansion.h.

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "catalog_files.h"
#include "catalog_mutator.h"
#include "catalogs.h"
#include "expansion.h"
#include "export/exporter.h"
#include "work.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

constexpr std::size_t kMaxCatalog = std::size_t{256} << 10;

struct CostBound {
    std::uint64_t least;
    std::uint64_t perByte;
    std::uint64_t For(std::size_t bytes) const { return least + perByte * bytes; }
};
constexpr CostBound kSteps{100'000'000, 1000};
constexpr CostBound kAllocated{1'000'000'000, 1000};
constexpr CostBound kWritten{128'000'000, 64};

bool isShown = false;

std::uint64_t SizeOf(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

class Run {
  public:
    explicit Run(std::size_t bytes) : bytes_(bytes) {
        StopAt({kSteps.For(bytes), kAllocated.For(bytes), 0});
        before_ = WorkSoFar();
    }
    void Wrote(const std::string& path) { written_ += SizeOf(path); }
    void End(const char* what) {
        Work work = WorkSoFar();
        work.steps -= before_.steps;
        work.allocated -= before_.allocated;
        if (isShown) {
            std::fprintf(stderr, "%8s %8zu B, steps %12" PRIu64 " (%8.1f), allocated %12" PRIu64 " (%8.1f), written %12" PRIu64 " (%8.1f)\n",
                what, bytes_, work.steps, double(work.steps)/double(bytes_), work.allocated, double(work.allocated)/double(bytes_), written_, double(written_)/double(bytes_));
        }
        Require(written_ <= kWritten.For(bytes_), "written bytes are bounded by the size of the input");
    }
  private:
    std::size_t bytes_;
    Work before_;
    std::uint64_t written_ = 0;
};

/// One run of the program.
void Convert(const std::string& path, std::size_t bytes, bool validate, const char* extension) {
    const std::string logPath = ScratchFile("catalog.log");
    const std::string treePath = ScratchFile("catalog.tree");
    const std::string output = ScratchFile("cost") + extension;
    std::filesystem::remove(output);
    std::filesystem::remove(treePath);
    Run run(bytes);
    {
        const auto manager = MakeManager();
        manager->Validate = validate;
        std::string name;
        const bool imported = manager->Import(name, path, 1, logPath);
        run.Wrote(logPath);
        if (imported) {
            manager->WriteTreeLog(treePath);
            run.Wrote(treePath);
            if (extension != std::string()) {
                ExportFlags flags;
                flags.makeReadOnly = false;
                ZVornExporter exporter(manager->FindCatalog(name), output, "", "", {}, {}, flags);
                Require(exporter.Export() == 0, "a catalog can be converted");
                run.Wrote(output);
            }
        }
    }
    run.End(extension);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    for (int i = 1; i < *count; ++i) {
        isShown = isShown || std::strcmp((*arguments)[i], "--show") == 0;
    }
    RequireKnownWords();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    return MutateCatalog(data, size, maxSize, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = Expanded(TextOf(data, size), isShown ? std::size_t{64} << 20 : kMaxCatalog);
    const std::string path = WriteCatalog(input);
    Convert(path, input.size(), true, "");
    for (const char* extension : {".vorn", ".sqlite", ".kcd"}) {
        Convert(path, input.size(), false, extension);
    }
    return 0;
}
