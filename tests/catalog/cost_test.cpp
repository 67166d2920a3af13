/// Large catalogs take time that grows with their size, not with its square. The bound is far above what an
/// import needs even under sanitizers, and far below what a quadratic one would.

#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "params/enumeration.h"
#include "support/catalog_import.h"

namespace tarvex::test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kBound{10};

TEST(Cost, BlockOf4096Functions) {
    std::string functions;
    for (unsigned id = 0; id < 4096; ++id) {
        functions += VoidFunction(std::to_string(id), "FunctionWithALongCommonName" + std::to_string(id));
    }
    const std::string xml = CatalogOf(BlockOf(functions));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(NodeAt<ZMTFBlock>(imported->catalog, "Amp")->Count(), 4096U);
}

TEST(Cost, EnumerationOf5000Values) {
    std::string values;
    for (unsigned code = 1; code <= 5000; ++code) {
        const std::string text = std::to_string(code);
        values += "<TEnumValue Code=\"" + text + "\">Value" + text + "</TEnumValue>";
    }
    const std::string xml = CatalogOfParams(
        Param("Mode", "<TEnum TypeRef=\"type_enum\" TEnumMax=\"65535\">" + values + "</TEnum>"));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* mode = NodeAt<ZMTParamEnum>(imported->catalog, "Amp", "Volume", "Status", "Mode");
    ASSERT_NE(mode, nullptr);
    EXPECT_EQ(mode->Count(), 5000U);
}

TEST(Cost, ManyErrorFunctionsAndReferences) {
    std::string errors;
    std::string references;
    for (unsigned i = 0; i < 200; ++i) {
        const std::string id = std::string("E").append(std::to_string(i));
        errors += "<ERParam ParamDefId=\"" + id + "\"><ParamName>" + id +
                  "</ParamName><ERParamOPType><MReportError><ParamPos>" + std::to_string(i) +
                  "</ParamPos></MReportError></ERParamOPType><TVoid TypeRef=\"type_void\"/></ERParam>";
        references += "<ERParam ParamDefRef=\"" + id + "\"/>";
    }
    std::string functions;
    for (unsigned id = 0; id < 50; ++id) {
        functions += "<Function><FunctionID>" + std::to_string(id) + "</FunctionID><FunctionName>F" +
                     std::to_string(id) + "</FunctionName><FunctionClass><Method><MTrigger>" + references +
                     "</MTrigger></Method></FunctionClass></Function>";
    }
    const std::string xml = CatalogOf(errors + BlockOf(functions));
    const auto start = Clock::now();
    const auto imported = ImportText(xml);
    EXPECT_LT(Clock::now() - start, kBound);
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* operation = NodeAt<ZMTOperation>(imported->catalog, "Amp", "F49", "Error");
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->Count(), 200U);
}

}  // namespace
}  // namespace tarvex::test
