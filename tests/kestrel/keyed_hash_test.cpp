/// Hashes that nobody can foresee.

#include "kestrel/keyed_hash.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>

namespace {

using kestrel::KeyedHash;

TEST(KeyedHash, EqualKeysHaveOneHash) {
    EXPECT_EQ(KeyedHash()(std::string("Volume")),
              KeyedHash()(std::string_view("Volume and more").substr(0, 6)));
    EXPECT_EQ(KeyedHash()(std::string_view()), KeyedHash()(""));
    EXPECT_EQ(KeyedHash()(4711U), KeyedHash()(4711U));
}

/// A long text is hashed in another way than a short one, and so is one without a whole word at its end.
TEST(KeyedHash, TextsOfEveryLengthHaveHashesOfTheirOwn) {
    std::set<std::size_t> hashes;
    for (std::size_t length = 0; length < 200; ++length) {
        hashes.insert(KeyedHash()(std::string(length, '\0')));
        std::string text(length, 'x');
        hashes.insert(KeyedHash()(text));
        for (char& letter : text) {
            letter = 'y';
            hashes.insert(KeyedHash()(text));
            letter = 'x';
        }
    }
    // One of zeros and one of "x" for each length, which are the same for none; and one for each place of the
    // "y".
    EXPECT_EQ(hashes.size(), 399U + 199U * 200U / 2);
}

/// 3,000 hashes of 64 bits: two are equal once in 4 * 10^12 runs.
TEST(KeyedHash, DifferentKeysHaveDifferentHashes) {
    std::set<std::size_t> hashes;
    for (std::uint32_t number = 0; number < 1000; ++number) {
        hashes.insert(KeyedHash()(number));
        hashes.insert(KeyedHash()(number << 20U));
        hashes.insert(KeyedHash()("name" + std::to_string(number)));
    }
    EXPECT_EQ(hashes.size(), 2999U);  // 0 << 20 is 0
}

/// The texts below have equal hashes in the C++ library, whatever stands behind them: it hashes 8 bytes at a
/// time, and this is a step that can be gone backwards.
class Colliding {
  public:
    /// Texts of 16 bytes of which all hashes of `std::hash` are equal.
    static std::vector<std::string> Make(std::size_t count) {
        std::vector<std::string> texts;
        const std::uint64_t wanted =
            Absorb(Start(), Letters(0));                       // state behind the first 8 bytes of text 0 ...
        const std::uint64_t end = Absorb(wanted, Letters(0));  // ... and behind all 16
        for (std::size_t number = 0; number < count; ++number) {
            const std::uint64_t first = Letters(number);
            const std::uint64_t state = Absorb(Start(), first);
            texts.push_back(Bytes(first) + Bytes(Unmix((end * Inverse(kMultiplier)) ^ state)));
        }
        return texts;
    }

  private:
    static constexpr std::uint64_t kMultiplier = 0xC6A4A7935BD1E995;
    static constexpr std::uint64_t kSeed = 0xC70F6907;
    static constexpr std::uint64_t kSize = 16;

    static std::uint64_t Start() { return kSeed ^ (kSize * kMultiplier); }
    static std::uint64_t Mix(std::uint64_t block) {
        block *= kMultiplier;
        return (block ^ block >> 47U) * kMultiplier;
    }
    static std::uint64_t Unmix(std::uint64_t mixed) {
        mixed *= Inverse(kMultiplier);
        return (mixed ^ mixed >> 47U) * Inverse(kMultiplier);
    }
    static std::uint64_t Absorb(std::uint64_t state, std::uint64_t block) {
        return (state ^ Mix(block)) * kMultiplier;
    }
    /// Of an odd number, modulo 2^64: each step doubles the correct bits.
    static std::uint64_t Inverse(std::uint64_t odd) {
        std::uint64_t inverse = odd;
        for (int step = 0; step < 6; ++step) {
            inverse *= 2 - odd * inverse;
        }
        return inverse;
    }
    static std::uint64_t Letters(std::size_t number) {
        return 0x0101010101010101 * (1 + number % 200) + number;
    }
    static std::string Bytes(std::uint64_t block) {
        std::string bytes(sizeof(block), '\0');
        std::memcpy(bytes.data(), &block, sizeof(block));
        return bytes;
    }
};

/// Of a container with these keys: how many stand in the fullest bucket.
template <class Container>
std::size_t FullestBucket(const Container& container) {
    std::size_t fullest = 0;
    for (std::size_t bucket = 0; bucket < container.bucket_count(); ++bucket) {
        fullest = std::max(fullest, container.bucket_size(bucket));
    }
    return fullest;
}

TEST(KeyedHash, TextsMadeToCollideStandApart) {
    const std::vector<std::string> texts = Colliding::Make(1000);
    const std::unordered_set<std::string> plain(texts.begin(), texts.end());
    ASSERT_EQ(plain.size(), 1000U);
    ASSERT_EQ(FullestBucket(plain), 1000U);  // what this is about
    const kestrel::KeyedSet<std::string> keyed(texts.begin(), texts.end());
    EXPECT_LT(FullestBucket(keyed), 20U);
}

/// The C++ library takes numbers for their own hashes.
TEST(KeyedHash, NumbersMadeToCollideStandApart) {
    std::unordered_set<std::uint32_t> plain;
    plain.reserve(1000);
    kestrel::KeyedSet<std::uint32_t> keyed;
    keyed.reserve(1000);
    for (std::uint32_t number = 0; number < 1000; ++number) {
        plain.insert(number * static_cast<std::uint32_t>(plain.bucket_count()));
        keyed.insert(number * static_cast<std::uint32_t>(keyed.bucket_count()));
    }
    ASSERT_EQ(FullestBucket(plain), 1000U);
    EXPECT_LT(FullestBucket(keyed), 20U);
}

}  // namespace
