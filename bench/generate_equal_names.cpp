#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iterator>
#include <string>

namespace {

constexpr unsigned kFunctionsPerBlock = 4096;
constexpr unsigned kBlocks = 256;
constexpr unsigned kMaxPerOperation = 200;
constexpr const char* kOperations[] = {"PReportStatus", "PCmdSet", "PCmdSetGet", "PCmdIncrement",
                                       "PCmdDecrement"};

struct Plan {
    unsigned parameters = 500'000;
    unsigned perOperation = 20;
    unsigned operations = 1;
    std::string name = "ErrorCode";
};

/// All operations of the function have the same parameters: enumerations without values, which are short to
/// write and become signals.
void WriteFunction(const Plan& plan, unsigned fktID, unsigned count) {
    std::printf(
        "<Function><FunctionID>%u</FunctionID><FunctionName>F%u</FunctionName>"
        "<FunctionClass><Property><PUnclassified>\n",
        fktID, fktID);
    for (unsigned pos = 1; pos <= count; ++pos) {
        std::printf("<PUParam><ParamName>%s</ParamName><PUParamOPType>", plan.name.c_str());
        for (unsigned i = 0; i < plan.operations; ++i) {
            std::printf("<%s><ParamPos>%u</ParamPos></%s>", kOperations[i], pos, kOperations[i]);
        }
        std::printf(
            "</PUParamOPType><PUParamType><TEnum TypeRef=\"t\" TEnumMax=\"1\"/></PUParamType>"
            "</PUParam>\n");
    }
    std::printf("</PUnclassified></Property></FunctionClass></Function>\n");
}

void WriteCatalog(const Plan& plan) {
    std::printf("<FunctionCatalog>\n");
    unsigned left = plan.parameters / plan.operations;
    for (unsigned block = 0; block < kBlocks && left > 0; ++block) {
        std::printf("<FBlock><FBlockID>%u</FBlockID><FBlockName>B%u</FBlockName>\n", block, block);
        for (unsigned fktID = 0; fktID < kFunctionsPerBlock && left > 0; ++fktID) {
            const unsigned count = std::min(left, plan.perOperation);
            WriteFunction(plan, fktID, count);
            left -= count;
        }
        std::printf("</FBlock>\n");
    }
    std::printf(
        "<Definition><TypeDef TypeID=\"t\"><TDefName>t</TDefName><TDefSize>1</TDefSize></TypeDef>"
        "</Definition>\n</FunctionCatalog>\n");
}

}  // namespace

int main(int argc, char** argv) try {
    Plan plan;
    CLI::App app("Writes a catalog whose parameters all have one name to standard output");
    app.add_option("--parameters", plan.parameters, "how many")
        ->check(CLI::Range(1, 10'000'000))
        ->capture_default_str();
    app.add_option("--per-operation", plan.perOperation, "how many of them in one operation")
        ->check(CLI::Range(10U, kMaxPerOperation))
        ->capture_default_str();
    app.add_option("--operations", plan.operations, "in how many operations of its function each one stands")
        ->check(CLI::Range(std::size_t{1}, std::size(kOperations)))
        ->capture_default_str();
    app.add_option("--name", plan.name, "their name")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    WriteCatalog(plan);
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0 ? 0 : 1;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "%s\n", exception.what());
    return 1;
}
