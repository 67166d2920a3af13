#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "catalog_text.h"
#include "export/exporter.h"
#include "import/import_manager.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/dom_error_handler.h"
#include "import/xml/transcode.h"
#include "kestrel/atomic_file.h"
#include "kestrel/json_text.h"
#include "kestrel/vorn_reader.h"
#include "kestrel/vorn_writer.h"
#include "params/catalog_vocabulary.h"

/// Times the parts of a conversion one by one: the small functions that every element goes through, and the
/// steps with a catalog of 1 MB.
namespace tarvex::bench {
namespace {

using Texts = std::vector<std::string_view>;

const Texts kIntegers = {"0", "1", "255", "0x200", "0x1F", " 4095 ", "-2", "100000", "0b101"};
const Texts kRanges = {"0x00", "12", "0x10..0x1F", "2...6", ">7", "#NULL#"};
const Texts kNames = {"Volume",       "Bass / Treble",     "Albumtitel (kurz)",
                      "SenderHandle", "Lautst\xC3\xA4rke", "no ChannelStation"};

/// A catalog in a directory of its own, its tree and its database.
class Sample {
  public:
    Sample();
    Sample(const Sample&) = delete;
    Sample& operator=(const Sample&) = delete;
    ~Sample() { std::filesystem::remove_all(directory_); }

    const std::string& CatalogPath() const { return catalogPath_; }
    const std::string& OutputPath() const { return outputPath_; }
    const ZMTCatalog& Tree() const { return *tree_; }
    const kestrel::Database& Database() const { return *database_; }

  private:
    std::filesystem::path directory_;
    std::string catalogPath_;
    std::string outputPath_;
    ZMostFCatManager manager_;
    const ZMTCatalog* tree_ = nullptr;
    std::unique_ptr<kestrel::Database> database_;
};

std::filesystem::path MakeDirectory() {
    std::string path = (std::filesystem::temp_directory_path() / "tarvex-pieces-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) {
        throw std::runtime_error("can't create a directory for the catalog");
    }
    return path;
}

void WriteCatalog(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
    if (file == nullptr) {
        throw std::runtime_error("can't write the catalog");
    }
    CatalogPlan plan;
    plan.bytes = 1'000'000;
    plan.shape = Shape::Plain;
    plan.blocks = 10;
    CatalogText(plan, file.get()).Write();
}

/// Imports a catalog into a manager; null when that fails.
const ZMTCatalog* Import(ZMostFCatManager& manager, const std::string& path) {
    manager.Validate = false;
    std::string name;
    return manager.Import(name, path, 1, "") ? manager.FindCatalog(name) : nullptr;
}

int Export(const ZMTCatalog& catalog, const std::string& path) {
    ExportFlags flags;
    flags.makeReadOnly = false;
    return ZVornExporter(&catalog, path, "", "", {}, {}, flags).Export();
}

Sample::Sample()
    : directory_(MakeDirectory()),
      catalogPath_((directory_ / "sample.xml").string()),
      outputPath_((directory_ / "sample.vorn").string()) {
    WriteCatalog(catalogPath_);
    tree_ = Import(manager_, catalogPath_);
    if (tree_ == nullptr || Export(*tree_, outputPath_) != 0) {
        throw std::runtime_error("can't convert the catalog");
    }
    database_ = kestrel::ReadVorn(outputPath_);
}

const Sample& TheSample() {
    static const Sample sample;
    return sample;
}

void CountBytes(benchmark::State& state, const std::string& path) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
}

/// Times a function with each of the texts.
template <class Container, class Function>
void TimeWith(benchmark::State& state, const Container& texts, Function function) {
    while (state.KeepRunning()) {
        for (const auto& text : texts) {
            benchmark::DoNotOptimize(function(text));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
}

void ParseIntegers(benchmark::State& state) {
    TimeWith(state, kIntegers, [](std::string_view text) {
        std::int32_t value = 0;
        return ParseInteger(text, value) ? value : -1;
    });
}
BENCHMARK(ParseIntegers);

void ParseRanges(benchmark::State& state) {
    TimeWith(state, kRanges, [](std::string_view text) {
        std::int32_t min = 0;
        std::int32_t max = 0;
        return ParseRange(text, min, max) ? max : min;
    });
}
BENCHMARK(ParseRanges);

void SanitizeNames(benchmark::State& state) {
    TimeWith(state, kNames, [](std::string_view text) { return SanitizeName(text); });
}
BENCHMARK(SanitizeNames);

void TranscodeTexts(benchmark::State& state) {
    std::vector<std::basic_string<XMLCh>> texts;
    for (const std::string_view name : kNames) {
        texts.push_back(ToDomText(name));
    }
    TimeWith(state, texts, [](const std::basic_string<XMLCh>& text) { return Transcode(text.c_str()); });
}
BENCHMARK(TranscodeTexts);

void QuoteTexts(benchmark::State& state) {
    std::string json;
    TimeWith(state, kNames, [&](std::string_view text) {
        json.clear();
        kestrel::AppendQuoted(json, text);
        return json.size();
    });
}
BENCHMARK(QuoteTexts);

void ReadDocument(benchmark::State& state) {
    const std::string& path = TheSample().CatalogPath();
    const auto reader = MakeXercesReader(CatalogVocabulary());
    reader->StartPlatform();
    while (state.KeepRunning()) {
        ZDOMErrorHandler handler;
        benchmark::DoNotOptimize(reader->Read(path, false, handler));
        reader->Release();
    }
    CountBytes(state, path);
}
BENCHMARK(ReadDocument)->Unit(benchmark::kMillisecond);

/// Reads the document, builds the tree and takes it down again.
void ImportCatalog(benchmark::State& state) {
    const std::string& path = TheSample().CatalogPath();
    while (state.KeepRunning()) {
        ZMostFCatManager manager;
        benchmark::DoNotOptimize(Import(manager, path));
    }
    CountBytes(state, path);
}
BENCHMARK(ImportCatalog)->Unit(benchmark::kMillisecond);

/// Builds the database. The catalog is no place for the output, so that the export ends before it writes.
void BuildDatabase(benchmark::State& state) {
    const Sample& sample = TheSample();
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(Export(sample.Tree(), sample.CatalogPath()));
    }
    CountBytes(state, sample.CatalogPath());
}
BENCHMARK(BuildDatabase)->Unit(benchmark::kMillisecond);

/// Writes a file that never takes the output's place, so that no flush to disk is measured.
void WriteVorn(benchmark::State& state) {
    const Sample& sample = TheSample();
    while (state.KeepRunning()) {
        kestrel::AtomicFile file;
        if (!file.Open(sample.OutputPath())) {
            state.SkipWithError("can't create the output");
            break;
        }
        kestrel::WriteVorn(sample.Database(), file);
    }
    CountBytes(state, sample.OutputPath());
}
BENCHMARK(WriteVorn)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvex::bench

BENCHMARK_MAIN();
