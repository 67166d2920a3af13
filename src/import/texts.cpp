#include "import/texts.h"

namespace tarvex {

TextHolder& LoadText(TextHolder& holder, Text number, bool copy) {
    const std::string_view text = TextOf(number).substr(0, kMaxTextLength);
    holder.text_ = std::make_unique<char[]>((copy ? text.size() : kMaxTextLength) + 1);
    text.copy(holder.text_.get(), text.size());
    return holder;
}

}  // namespace tarvex
