#include "page/unpacked_page.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <zlib.h>

namespace tarvex::test {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string FromBase64(std::string_view letters) {
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char letter : letters) {
        if (letter == '=') {
            break;
        }
        const std::size_t value = kLetters.find(letter);
        if (value == std::string_view::npos) {
            throw std::runtime_error("no letter of base64 in the data of a page");
        }
        bits = bits << 6U | static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xFFU);
        }
    }
    return bytes;
}

std::string Inflated(const std::string& bytes) {
    std::string text(1000, '\0');
    for (;;) {
        uLongf size = text.size();
        const int result = uncompress(reinterpret_cast<Bytef*>(text.data()), &size,
                                      reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
        if (result != Z_BUF_ERROR) {
            if (result != Z_OK) {
                throw std::runtime_error("data of a page that can't be unpacked");
            }
            text.resize(size);
            return text;
        }
        text.resize(text.size() * 2);
    }
}

}  // namespace

std::map<std::string, nlohmann::json> PiecesOf(const std::string& page) {
    constexpr std::string_view kBegin = "<script type=\"application/octet-stream\" id=\"data-";
    std::map<std::string, nlohmann::json> pieces;
    for (std::size_t at = page.find(kBegin); at != std::string::npos; at = page.find(kBegin, at)) {
        at += kBegin.size();
        const std::size_t name = page.find('"', at);
        const std::size_t end = page.find("</script>", name);
        const std::string json =
            Inflated(FromBase64(std::string_view(page).substr(name + 2, end - name - 2)));
        pieces[page.substr(at, name - at)] = nlohmann::json::parse(json);
    }
    return pieces;
}

}  // namespace tarvex::test
