#include "review/fault_text.h"

#include <algorithm>
#include <stdexcept>

#include "import/text/shown_text.h"
#include "review/explanation_words.h"

namespace tarvex::review {

std::string PlaceText(const CatalogReading& reading, const Fault& fault) {
    std::string text = Shown(reading.FileOf(fault));
    if (fault.line > 0) {
        text += ":" + std::to_string(fault.line) + ":" + std::to_string(fault.column);
    }
    return text;
}

const ZMTCatalog& TreeOf(const CatalogReading& reading) {
    if (reading.Catalog() == nullptr) {
        throw std::runtime_error("the catalog could not be imported: " +
                                 FaultLine(reading, reading.Faults().back()));
    }
    return *reading.Catalog();
}

std::string FaultText(const Fault& fault) {
    std::string text = Shown(fault.text);
    std::ranges::replace(text, '\n', ' ');
    if (!fault.element.empty() && text.find("<" + fault.element + ">") == std::string::npos) {
        text += " (<" + Shown(fault.element) + ">)";
    }
    return text;
}

std::string FaultLine(const CatalogReading& reading, const Fault& fault, const vorn::Style& style) {
    std::string kind(KindName(fault.kind));
    if (fault.number != 0) {
        kind += " " + std::to_string(fault.number);
    }
    std::string line = style(vorn::Colour::Heading, PlaceText(reading, fault) + ":") + " " +
                       style(ColourOf(fault.kind), kind + ":") + " " + FaultText(fault);
    if (!fault.path.empty()) {
        line += " " + style(vorn::Colour::Faint, "[" + Shown(fault.path) + "]");
    }
    return line;
}

vorn::Colour ColourOf(Kind kind) {
    return kind == Kind::Warning ? vorn::Colour::Warning : vorn::Colour::Error;
}

std::string_view PathBelowCatalog(std::string_view path) {
    const std::size_t slash = path.find('/', 1);
    return slash == std::string_view::npos ? std::string_view() : path.substr(slash);
}

}  // namespace tarvex::review
