/// What is searched, and where it stands.

#include "page/search_index.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kestrel/atomic_file.h"
#include "page/unpacked_page.h"
#include "support/temp_dir.h"

namespace tarvex::test::search_index_test {
namespace {

using nlohmann::json;
using page::Place;
using page::SearchIndex;
using page::Topic;

/// The pieces of an index with their topics.
std::vector<std::pair<Topic, json>> Pieces(const SearchIndex& index) {
    const TempDir dir;
    kestrel::AtomicFile file;
    EXPECT_TRUE(file.Open(dir.File("pieces")));
    page::ChunkWriter chunks(file);
    const std::vector<Topic> topics = index.Write(chunks);
    chunks.Finish();
    EXPECT_TRUE(file.Commit());
    auto pieces = PiecesOf(ReadFile(dir.File("pieces")));
    EXPECT_EQ(pieces.size(), topics.size());
    std::vector<std::pair<Topic, json>> result;
    for (std::size_t number = 0; number < topics.size(); ++number) {
        result.emplace_back(topics[number], pieces.at("search-" + std::to_string(number)));
    }
    return result;
}

TEST(SearchIndex, HasATextOnceWithAllItsPlaces) {
    SearchIndex index;
    index.Add(Topic::Parameter, "Code", "", Place::OfFunction(0));
    index.Add(Topic::Parameter, "Level", "Data", Place::OfFunction(1));
    index.Add(Topic::Parameter, "Code", "", Place::OfFunction(2));
    index.Add(Topic::Parameter, "Code", "", Place::OfFunction(2));
    index.Add(Topic::Parameter, "Code", "Data", Place::OfFunction(3));
    index.Add(Topic::Parameter, "", "", Place::OfFunction(3));
    const auto pieces = Pieces(index);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].first, Topic::Parameter);
    // A function has 17 places. Behind the number of places stands how far each is from the one before it.
    EXPECT_EQ(pieces[0].second, json::parse(R"({"lines": "Code\nLevel\nCode", "contexts": ["", "Data"],
        "contextOf": [0, 1, 1], "places": [2, 0, 34, 1, 17, 1, 51]})"));
}

TEST(SearchIndex, HasOperationsBehindTheirFunction) {
    SearchIndex index;
    index.Add(Topic::Signal, "Level", "", Place::OfOperation(1, 0));
    index.Add(Topic::Signal, "Level", "", Place::OfOperation(1, 15));
    EXPECT_EQ(Pieces(index)[0].second["places"], json::array({2, 18, 15}));
}

TEST(SearchIndex, HasTopicsInTheirOrder) {
    SearchIndex index;
    index.Add(Topic::Description, "How loud", "", Place::OfFunction(0));
    index.Add(Topic::Block, "Amp", "", Place::OfBlock(0));
    const auto pieces = Pieces(index);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].first, Topic::Block);
    EXPECT_EQ(pieces[1].first, Topic::Description);
}

TEST(SearchIndex, KeepsEachTextInALine) {
    SearchIndex index;
    index.Add(Topic::Value, "a\nb\tc", "", Place::OfFunction(0));
    // The importer keeps 4096 letters of a text, of up to three bytes.
    index.Add(Topic::Description, std::string(13000, 'x'), "", Place::OfFunction(0));
    index.Add(Topic::Value, std::string(13000, 'y') + page::kPartEnd, "", Place::OfFunction(0));
    const auto pieces = Pieces(index);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].second["lines"], "a b\tc\n" + std::string(13000, 'y') + "\t");
    EXPECT_EQ(pieces[1].second["lines"], std::string(12288, 'x'));
}

TEST(SearchIndex, IsPartedWhereItIsLong) {
    SearchIndex index;
    std::size_t length = 0;
    for (std::size_t number = 0; number < 400; ++number) {
        const std::string text = std::to_string(number) + std::string(3990, 'x');
        length += text.size();
        index.Add(Topic::Description, text, "", Place::OfFunction(number));
    }
    const auto pieces = Pieces(index);
    ASSERT_EQ(pieces.size(), 2U);
    std::size_t sum = 0;
    for (const auto& [topic, piece] : pieces) {
        EXPECT_EQ(topic, Topic::Description);
        sum += piece["lines"].get<std::string>().size() + 1;
    }
    EXPECT_EQ(sum, length + 400);
}

}  // namespace
}  // namespace tarvex::test::search_index_test
