/// Names that crowd in the parser's tables, and those that do not.

#include "import/xml/name_buckets.h"

#include <string>

#include <gtest/gtest.h>

namespace tarvex::test::name_buckets_test {
namespace {

/// So many letters "az" or "bT" have one hash: 38 * 'a' + 'z' is 38 * 'b' + 'T'.
std::string CrowdedName(unsigned number) {
    std::string name;
    for (unsigned bit = 0; bit < 10; ++bit) {
        name += (number >> bit & 1U) != 0 ? "bT" : "az";
    }
    return name;
}

/// How many names the table takes; `most` if it takes all.
template <class Make>
std::size_t Taken(NameBuckets& buckets, std::size_t most, const Make& make) {
    std::size_t count = 0;
    while (count < most && buckets.Add(ToDomText(make(static_cast<unsigned>(count))).c_str())) {
        ++count;
    }
    return count;
}

TEST(NameBuckets, NamesOfOneHashAreFew) {
    for (const std::size_t buckets : {7U, 29U, 109U}) {
        NameBuckets names(buckets);
        EXPECT_EQ(Taken(names, 1000, CrowdedName), NameBuckets::kMostNames) << buckets << " buckets";
    }
}

TEST(NameBuckets, EqualNamesAreOne) {
    NameBuckets names(29);
    EXPECT_EQ(Taken(names, 10'000, [](unsigned /*number*/) { return std::string("name"); }), 10'000U);
}

TEST(NameBuckets, OrdinaryNamesAreAnyNumber) {
    struct Case {
        const char* what;
        std::string (*make)(unsigned number);
    };
    const Case cases[] = {
        {"numbers", [](unsigned number) { return "e" + std::to_string(number); }},
        {"pairs of numbers",
         [](unsigned number) { return std::to_string(number / 500) + "." + std::to_string(number % 500); }},
        {"letters",
         [](unsigned number) {
             return std::string{
                 static_cast<char>('a' + number % 26), static_cast<char>('A' + number / 26 % 26),
                 static_cast<char>('a' + number / 676 % 26), static_cast<char>('a' + number / 17576 % 26)};
         }},
    };
    for (const Case& row : cases) {
        NameBuckets names(109);
        NameBuckets full(7, NameBuckets::Load::Four);
        EXPECT_EQ(Taken(names, 100'000, row.make), 100'000U) << row.what;
        EXPECT_EQ(Taken(full, 100'000, row.make), 100'000U) << row.what << ", in a full table";
    }
}

/// They come into one bucket at one size of the table only: 109 buckets, that is, fewer than 82 names.
TEST(NameBuckets, NamesOfOneBucketAreFewUntilTheTableGrows) {
    NameBuckets names(109);
    const auto inFirstBucket = [](unsigned number) {
        // One letter of the number 109 * n is in bucket 0, as its hash is the letter itself.
        const char32_t letter = 109 * (number + 1);
        return std::string{static_cast<char>(0xE0 | letter >> 12U),
                           static_cast<char>(0x80 | (letter >> 6U & 0x3FU)),
                           static_cast<char>(0x80 | (letter & 0x3FU))};
    };
    EXPECT_EQ(Taken(names, 81, [&](unsigned number) { return inFirstBucket(number + 20); }),
              NameBuckets::kMostNames);
}

}  // namespace
}  // namespace tarvex::test::name_buckets_test
