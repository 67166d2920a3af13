#include "kestrel/keyed_hash.h"

#include <array>
#include <sodium.h>
#include <stdexcept>

namespace kestrel {

namespace {

using Key = std::array<unsigned char, crypto_shorthash_KEYBYTES>;

Key DrawKey() {
    if (sodium_init() < 0) {
        throw std::runtime_error("the system has no random numbers");
    }
    Key key{};
    crypto_shorthash_keygen(key.data());
    return key;
}

std::size_t HashOf(const void* bytes, std::size_t count) {
    static const Key key = DrawKey();
    std::array<unsigned char, crypto_shorthash_BYTES> hash{};
    crypto_shorthash(hash.data(), static_cast<const unsigned char*>(bytes), count, key.data());
    std::uint64_t number = 0;
    for (const unsigned char byte : hash) {
        number = number << 8U | byte;
    }
    return static_cast<std::size_t>(number);
}

}  // namespace

std::size_t KeyedHash::operator()(std::string_view text) const {
    return HashOf(text.data(), text.size());
}

std::size_t KeyedHash::operator()(std::uint32_t number) const {
    return HashOf(&number, sizeof(number));
}

}  // namespace kestrel
