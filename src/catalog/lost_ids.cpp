#include "catalog/lost_ids.h"

#include <string>

#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

void LostIDs::Note(const Element& element, std::string_view idElement, std::int32_t end, unsigned message) {
    std::string text;
    std::int32_t id = 0;
    if (GetChildElementText(element, idElement, text) && ParseInteger(text, id) && id >= 0 && id < end) {
        Note(static_cast<unsigned>(id), message);
    }
}

}  // namespace tarvex
