#include "kestrel/format.h"

#include <algorithm>
#include <string>

namespace kestrel {
namespace {

char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

Format FormatOf(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    std::string extension(dot == std::string_view::npos ? std::string_view{} : name.substr(dot));
    std::ranges::transform(extension, extension.begin(), ToLower);
    const auto* row = std::ranges::find(kFormats, extension, &FormatRow::extension);
    return row == std::end(kFormats) ? Format::Vorn : row->format;
}

}  // namespace kestrel
