#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <map>
#include <string>

#include "catalog_text.h"

namespace {

using tarvex::bench::Shape;

const std::map<std::string, Shape> kShapes = {
    {"realistic", Shape::Realistic},
    {"plain", Shape::Plain},
    {"one-name", Shape::OneName},
    {"enumerations", Shape::Enumerations},
    {"small-functions", Shape::SmallFunctions},
    {"long-descriptions", Shape::LongDescriptions},
};

}  // namespace

int main(int argc, char** argv) try {
    tarvex::bench::CatalogPlan plan;
    double megabytes = 20;
    std::string shape = "realistic";
    CLI::App app("Writes a catalog of any size to standard output");
    app.add_option("--megabytes", megabytes, "size to reach, in millions of bytes")
        ->check(CLI::Range(0.01, 10'000.0))
        ->capture_default_str();
    app.add_option("--shape", shape, "what it has most of")
        ->check(CLI::IsMember(kShapes))
        ->capture_default_str();
    app.add_option("--blocks", plan.blocks, "function blocks; small-functions takes as many as it needs")
        ->check(CLI::Range(1, 256))
        ->capture_default_str();
    app.add_option("--seed", plan.seed, "the same seed gives the same bytes")->capture_default_str();
    app.add_flag("--doctype", plan.withDoctype, "declare the document type fcat.dtd");
    CLI11_PARSE(app, argc, argv);
    plan.shape = kShapes.at(shape);
    plan.bytes = static_cast<std::uint64_t>(megabytes * 1e6);
    tarvex::bench::CatalogText(plan, stdout).Write();
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0 ? 0 : 1;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "%s\n", exception.what());
    return 1;
}
