/// Every fault has the place at which a person finds it: tests/data/*.places has line, column, number and
/// element of each fault of a catalog, in the order in which they are told.

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/import_manager.h"
#include "params/catalog_vocabulary.h"
#include "support/temp_dir.h"

namespace tarvex::test::fault_places_test {
namespace {

FaultList FaultsOf(const std::string& catalogPath, bool isNewer) {
    FaultList faults;
    ZMostFCatManager manager(MakeXercesReader(FaultVocabulary()));
    manager.Validate = false;
    manager.ReadNewer = isNewer;
    manager.faults = &faults;
    std::string name;
    EXPECT_TRUE(manager.Import(name, catalogPath, kCatalogGroup, ""));
    return faults;
}

std::vector<std::string> RowsOf(const FaultList& faults) {
    std::vector<std::string> rows;
    for (const Fault& fault : faults.All()) {
        rows.push_back(std::to_string(fault.line) + ":" + std::to_string(fault.column) + " " +
                       std::to_string(fault.number) + " " + fault.element);
    }
    return rows;
}

std::vector<std::string> LinesOf(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(FaultPlaces, AreWhereAPersonFindsThem) {
    const std::string data = TARVEX_TEST_DATA;
    const struct {
        std::string catalog;
        std::string places;
        bool isNewer;
    } rows[] = {
        {data + "/faults.xml", data + "/faults.places", false},
        {data + "/newer_faults.xml", data + "/newer_faults.places", true},
        {data + "/../../examples/roadster.xml", data + "/example/roadster.places", false},
    };
    for (const auto& row : rows) {
        const std::vector<std::string> expected = LinesOf(row.places);
        const std::vector<std::string> found = RowsOf(FaultsOf(row.catalog, row.isNewer));
        ASSERT_FALSE(expected.empty()) << row.places;
        EXPECT_EQ(found.size(), expected.size()) << row.catalog;
        for (std::size_t i = 0; i < std::min(found.size(), expected.size()); ++i) {
            EXPECT_EQ(found[i], expected[i]) << row.places << ":" << i + 1;
        }
    }
}

}  // namespace
}  // namespace tarvex::test::fault_places_test
