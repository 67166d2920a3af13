/// Which function blocks are exported: the include filter wants the name or the alias, the exclude filter
/// both.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/conversion.h"

namespace tarvex::test::exporter_filter_test {
namespace {

using Names = std::vector<std::string>;

struct FilterCase {
    const char* what;
    const char* aliases;
    NameSet include;
    NameSet exclude;
    Names blocks;  // catalog names of those exported
};

/// A catalog with the blocks Amp, Tuner and Phone, in this order.
void ExpectBlocks(const std::vector<FilterCase>& rows) {
    Conversion conversion(Block("0x22", "Amp") + Block("0x40", "Tuner") + Block("0x50", "Phone"));
    for (const FilterCase& row : rows) {
        SCOPED_TRACE(row.what);
        conversion.aliasNames = row.aliases;
        conversion.include = row.include;
        conversion.exclude = row.exclude;
        const nlohmann::json database = conversion.Database();
        Names blocks;
        for (const nlohmann::json& message : database["messages"]) {
            blocks.push_back(message["attributes"]["FBlock"]);
        }
        EXPECT_EQ(blocks, row.blocks);
        EXPECT_EQ(NamesIn(database["nodes"]), row.blocks);
    }
}

TEST(IncludeFilter, PassesBlocksWhoseNameOrAliasIsListed) {
    ExpectBlocks({
        {"empty: all", "", {}, {}, {"Amp", "Tuner", "Phone"}},
        {"empty: all, aliases or not", "Amp,Booster\n", {}, {}, {"Amp", "Tuner", "Phone"}},
        {"by name", "", {"Amp"}, {}, {"Amp"}},
        {"two names", "", {"Phone", "Amp"}, {}, {"Amp", "Phone"}},
        {"by name, although there is an alias", "Amp,Booster\n", {"Amp"}, {}, {"Amp"}},
        {"by alias", "Amp,Booster\n", {"Booster"}, {}, {"Amp"}},
        {"name and alias", "Amp,Booster\n", {"Amp", "Booster"}, {}, {"Amp"}},
        {"alias with blanks", "Amp, My Amp \n", {" My Amp "}, {}, {"Amp"}},
        {"alias with other blanks", "Amp, My Amp \n", {"My Amp"}, {}, {}},
        {"alias of one block, name of another", "Amp,Tuner\n", {"Tuner"}, {}, {"Amp", "Tuner"}},
        {"the name in a message is no matter", "Amp,My Amp\n", {"MyAmp"}, {}, {}},
        {"nobody of that name", "", {"Gateway"}, {}, {}},
        {"case counts", "", {"amp", "TUNER", "Phone"}, {}, {"Phone"}},
        {"functions and operations are no matter", "", {"Volume", "Get"}, {}, {}},
    });
}

TEST(ExcludeFilter, StopsBlocksWhoseNameAndAliasAreBothListed) {
    ExpectBlocks({
        {"no alias, name listed", "", {}, {"Amp"}, {"Tuner", "Phone"}},
        {"alias, only the name listed", "Amp,Booster\n", {}, {"Amp"}, {"Amp", "Tuner", "Phone"}},
        {"alias, only the alias listed", "Amp,Booster\n", {}, {"Booster"}, {"Amp", "Tuner", "Phone"}},
        {"alias, both listed", "Amp,Booster\n", {}, {"Amp", "Booster"}, {"Tuner", "Phone"}},
        {"no alias, another name listed", "", {}, {"Booster"}, {"Amp", "Tuner", "Phone"}},
        {"alias that is the name", "Amp,Amp\n", {}, {"Amp"}, {"Tuner", "Phone"}},
        {"alias that is another block's name, both listed", "Amp,Tuner\n", {}, {"Amp", "Tuner"}, {"Phone"}},
        {"alias that is another block's name, that one listed",
         "Amp,Tuner\n",
         {},
         {"Tuner"},
         {"Amp", "Phone"}},
        {"all", "", {}, {"Amp", "Tuner", "Phone"}, {}},
        {"case counts", "", {}, {"amp", "TUNER", "Phone"}, {"Amp", "Tuner"}},
    });
}

TEST(ExcludeFilter, StopsBlocksThatTheIncludeFilterPasses) {
    ExpectBlocks({
        {"by name", "", {"Amp", "Tuner"}, {"Amp"}, {"Tuner"}},
        {"included by alias, excluded by both", "Amp,Booster\n", {"Booster"}, {"Amp", "Booster"}, {}},
        {"included by alias, excluded by name only", "Amp,Booster\n", {"Booster"}, {"Amp"}, {"Amp"}},
        {"excluded but not included", "", {"Tuner"}, {"Amp"}, {"Tuner"}},
    });
}

}  // namespace
}  // namespace tarvex::test::exporter_filter_test
