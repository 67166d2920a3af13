/// Texts made with formats in the manner of printf.

#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <type_traits>

namespace tarvex {

/// Size in bytes of the buffer that every formatted text passes through, its terminating zero included.
inline constexpr std::size_t kFormatBufferSize = 980;

namespace detail {

inline const char* PrintfArgument(const std::string& text) {
    return text.c_str();
}
inline const char* PrintfArgument(const char* text) {
    return text;
}
template <class T>
requires(std::is_floating_point_v<T> || (std::is_integral_v<T> && sizeof(T) <= sizeof(int))) constexpr T
    PrintfArgument(T value) {
    return value;
}

}  // namespace detail

/// Formats in the manner of printf. The format must come from the program itself; an empty one gives an empty
/// text. A result of more than 979 bytes is cut to 979.
template <class... Args>
std::string FormatText(const char* format, const Args&... args) {
    std::array<char, kFormatBufferSize> buffer;  // NOLINT(*-member-init): snprintf fills it
    buffer[0] = '\0';
    // The extra 0 is never read by a matching format; it keeps the call valid when there are no arguments.
    std::snprintf(buffer.data(), buffer.size(), format, detail::PrintfArgument(args)..., 0);
    return buffer.data();
}

/// True when a format takes exactly arguments of these types in this order: %s a text, %d %u %x %X an integer
/// of at most 32 bits, %f a double. Used to check the message texts against their arguments at compile time.
template <class... Args>
consteval bool FormatTakes(std::string_view format) {
    constexpr char kKinds[] = {(std::is_floating_point_v<Args>                            ? 'f'
                                : std::is_integral_v<Args> && sizeof(Args) <= sizeof(int) ? 'd'
                                : std::is_integral_v<Args>                                ? '?'
                                                                                          : 's')...,
                               '\0'};
    std::size_t argument = 0;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            continue;
        }
        i = format.find_first_not_of("0123456789.", i + 1);
        if (i == std::string_view::npos) {
            return false;
        }
        if (format[i] == '%') {
            continue;
        }
        const char wanted = format[i] == 's' || format[i] == 'f' ? format[i] : 'd';
        if (argument >= sizeof...(Args) || kKinds[argument++] != wanted) {
            return false;
        }
    }
    return argument == sizeof...(Args);
}

/// What printf would make of a text used as its format, without ever reading an argument or writing memory:
/// "%%" gives "%", a numeric conversion prints as if its argument were 0, %c and %s print nothing (padded to
/// their width), %p prints as if null, %n prints nothing, anything malformed stands as it is. Width and
/// precision are honoured up to 255; "*" counts as 0.
std::string RenderAsFormat(std::string_view text);

}  // namespace tarvex
