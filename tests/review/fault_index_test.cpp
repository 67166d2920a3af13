/// Faults are found by what they are about.

#include "review/fault_index.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "review/examples.h"

namespace tarvex::test::fault_index_test {
namespace {

using namespace review;

/// What the index has to find, by a look at every fault.
std::vector<const Fault*> AllAbout(const CatalogReading& reading, const std::string& path) {
    std::vector<const Fault*> faults;
    for (const Fault& fault : reading.Faults()) {
        if (fault.path == path || fault.path.starts_with(path + "/")) {
            faults.push_back(&fault);
        }
    }
    return faults;
}

TEST(FaultIndex, FindsTheFaultsOfANodeAndOfWhatIsInIt) {
    const FaultIndex index(Roadster());
    std::size_t found = 0;
    for (const ZMTFBlock& block : Roadster().Catalog()->Items()) {
        for (const ZMTFunction& function : block.Items()) {
            found += index.About(function.GetPath()).size();
            EXPECT_EQ(index.About(function.GetPath()), AllAbout(Roadster(), function.GetPath()));
        }
        EXPECT_EQ(index.About(block.GetPath()), AllAbout(Roadster(), block.GetPath()));
    }
    EXPECT_GT(found, 20U);
}

TEST(FaultIndex, DoesNotTakeTheBeginningOfANameForAName) {
    const FaultIndex index(Roadster());
    EXPECT_EQ(index.About("/roadster").size(), Roadster().Faults().size());
    EXPECT_EQ(index.About("/roadster/Phone").size(), 15U);
    EXPECT_EQ(index.About("/roadster/Phon").size(), 0U);
    EXPECT_EQ(index.About("").size(), Roadster().Faults().size());
}

}  // namespace
}  // namespace tarvex::test::fault_index_test
