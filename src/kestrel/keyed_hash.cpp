#include "kestrel/keyed_hash.h"

#include <array>
#include <cstring>
#include <sodium.h>
#include <stdexcept>

namespace kestrel {

namespace {

using Word = std::uint32_t;

/// Names have at most 32 bytes. Longer texts are rare and get the slower hash.
constexpr std::size_t kShortText = 64;

/// What a process draws once.
struct Secret {
    /// For the length, each word of a short text, and what is added at the beginning and multiplied at the
    /// end.
    std::array<std::uint64_t, kShortText / sizeof(Word) + 3> factors{};
    std::array<unsigned char, crypto_shorthash_KEYBYTES> key{};
};

Secret Draw() {
    if (sodium_init() < 0) {
        throw std::runtime_error("the system has no random numbers");
    }
    Secret secret;
    randombytes_buf(secret.factors.data(), sizeof(secret.factors));
    secret.factors.back() |= 1U;
    crypto_shorthash_keygen(secret.key.data());
    return secret;
}

const Secret& TheSecret() {
    static const Secret secret = Draw();
    return secret;
}

/// A sum of products with secret factors: who does not know them cannot find two texts with equal sums better
/// than by guessing. To hash all names as the long ones are would cost a large conversion 5 to 7 % of its
/// time.
class Sum {
  public:
    explicit Sum(std::size_t length) : sum_(factors_[0] + factors_[1] * length) {}

    void Add(Word word) { sum_ += factors_[next_++] * word; }
    /// Spreads the sum over all bits: containers look at the remainder.
    std::size_t Mixed() const {
        const std::uint64_t mixed = (sum_ ^ sum_ >> 32U) * factors_.back();
        return static_cast<std::size_t>(mixed ^ mixed >> 32U);
    }

  private:
    const decltype(Secret::factors)& factors_ = TheSecret().factors;
    std::size_t next_ = 2;
    std::uint64_t sum_;
};

std::size_t ShortHash(std::string_view text) {
    Sum sum(text.size());
    for (; text.size() >= sizeof(Word); text.remove_prefix(sizeof(Word))) {
        Word word = 0;
        std::memcpy(&word, text.data(), sizeof(word));
        sum.Add(word);
    }
    Word rest = 0;
    for (const char byte : text) {
        rest = rest << 8U | static_cast<unsigned char>(byte);
    }
    sum.Add(rest);
    return sum.Mixed();
}

std::size_t LongHash(std::string_view text) {
    static_assert(sizeof(std::size_t) <= crypto_shorthash_BYTES);
    std::array<unsigned char, crypto_shorthash_BYTES> bytes{};
    crypto_shorthash(bytes.data(), reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                     TheSecret().key.data());
    std::size_t hash = 0;
    std::memcpy(&hash, bytes.data(), sizeof(hash));
    return hash;
}

}  // namespace

std::size_t KeyedHash::operator()(std::string_view text) const {
    return text.size() < kShortText ? ShortHash(text) : LongHash(text);
}

std::size_t KeyedHash::operator()(std::uint32_t number) const {
    Sum sum(sizeof(number));
    sum.Add(number);
    return sum.Mixed();
}

}  // namespace kestrel
