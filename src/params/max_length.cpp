#include "params/max_length.h"

#include <string>

#include "catalog/import_context.h"
#include "catalog/param.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

std::uint32_t ReadMaxLength(const ZMTParam& param, const Element& stream, ImportContext& context) {
    std::string text;
    GetAttribute(stream, "MaxLength", text);
    std::int32_t value = 0;
    if (!ParseInteger(text, value)) {
        param.Raise<kMaxLengthUnreadable>(context.At(stream), text);
    }
    return value > 0 ? static_cast<std::uint32_t>(value) : kNoMaxLength;
}

}  // namespace tarvex
