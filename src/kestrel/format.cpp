#include "kestrel/format.h"

#include <algorithm>
#include <iterator>

namespace kestrel {
namespace {

char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view ExtensionOf(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view{} : name.substr(point);
}

bool HasExtension(std::string_view path, std::string_view extension) {
    return std::ranges::equal(ExtensionOf(path), extension, {}, ToLower, ToLower);
}

Format FormatOf(std::string_view path) {
    const auto* row = std::ranges::find_if(
        kFormats, [&](const FormatRow& each) { return HasExtension(path, each.extension); });
    return row == std::end(kFormats) ? Format::Vorn : row->format;
}

}  // namespace kestrel
