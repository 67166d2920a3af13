#include "page/skeleton.h"

#include <array>
#include <sodium.h>

#include "import/text/shown_text.h"
#include "page/chunk_writer.h"

namespace tarvex::page {
namespace {

// What stands in page.html for the parts of a page.
constexpr std::string_view kPolicy = "{{policy}}";
constexpr std::string_view kTitle = "{{title}}";
constexpr std::string_view kStyle = "{{style}}";
constexpr std::string_view kData = "{{data}}\n";
constexpr std::string_view kScript = "{{script}}";

/// The source of a Content-Security-Policy that allows this text alone.
std::string HashSource(std::string_view text) {
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(text.data()), text.size());
    return "'sha256-" + Base64({reinterpret_cast<const char*>(hash.data()), hash.size()}) + "'";
}

std::string Script() {
    std::string script = "\"use strict\";\n(() => {\n";
    for (const std::string_view file : kPageScripts) {
        script += file;
    }
    return script + "})();\n";
}

std::string Policy() {
    return "default-src 'none'; script-src " + HashSource(Script()) + "; style-src " +
           HashSource(kPageStyle) + "; img-src data:; base-uri 'none'; form-action 'none'";
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : Shown(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

/// The text up to the mark, which is taken off the front with it.
std::string_view TakeUntil(std::string_view& text, std::string_view mark) {
    const std::size_t end = text.find(mark);
    const std::string_view front = text.substr(0, end);
    text.remove_prefix(front.size() + mark.size());
    return front;
}

}  // namespace

std::string PageHead(std::string_view title) {
    std::string_view rest = kPageHtml;
    std::string head;
    head.append(TakeUntil(rest, kPolicy)).append(Policy());
    head.append(TakeUntil(rest, kTitle)).append(Escaped(title));
    head.append(TakeUntil(rest, kStyle)).append(kPageStyle);
    return head.append(TakeUntil(rest, kData));
}

std::string PageEnd() {
    std::string_view rest = kPageHtml;
    TakeUntil(rest, kData);
    std::string end(TakeUntil(rest, kScript));
    return end.append(Script()).append(rest);
}

}  // namespace tarvex::page
