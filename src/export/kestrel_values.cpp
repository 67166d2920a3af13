#include "export/kestrel_values.h"

#include <algorithm>

namespace tarvex {

char* GiveToKestrel(std::string_view text) {
    auto* copy = static_cast<char*>(kestrel_malloc(text.size() + 1));
    *std::ranges::copy(text, copy).out = '\0';
    return copy;
}

kestrel_attr_value_t NumberValue(double number) {
    return {.number = number};
}

kestrel_attr_value_t TextValue(std::string_view text) {
    return {.text = GiveToKestrel(text)};
}

void CopyName(char (&name)[kNameSize], std::string_view text) {
    std::ranges::fill(std::ranges::copy(text.substr(0, kNameSize), name).out, std::end(name), '\0');
}

}  // namespace tarvex
