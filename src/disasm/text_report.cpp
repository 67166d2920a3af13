#include "disasm/text_report.h"

#include "disasm/number_item.h"
#include "disasm/wording.h"

namespace tarvex {
namespace {

void AppendFault(std::string_view fault, std::string& out) {
    out.append("  error: ").append(fault).append("\n");
}

/// Entries of an array are told apart by their number.
std::string Label(const ZMostParameter& item, unsigned entryNumber) {
    std::string label = entryNumber > 0 ? "[" + std::to_string(entryNumber) + "]" : std::string();
    const std::string name = ShownName(item.GetLabel());
    if (!label.empty() && !name.empty()) {
        label += ' ';
    }
    return label + name;
}

void AppendItems(const ZMostParameterListBaseInfo& items, const ZMostParameter* container, std::size_t level,
                 std::size_t end, std::string& out) {
    std::size_t index = 0;
    for (const auto& item : items.Items()) {
        if (out.size() > end) {
            return;
        }
        const unsigned entryNumber = container == nullptr ? 0 : container->EntryNumber(index++);
        out.append(2 * level, ' ').append(Label(*item, entryNumber));
        const std::string text = item->GetText();
        if (!text.empty()) {
            out.append(" = ").append(text);
        }
        if (item->IsType(kParamNumber)) {
            const std::string unit = static_cast<const ZMostParameterNumber&>(*item).UnitText();
            if (!unit.empty()) {
                out.append(" ").append(unit);
            }
        }
        out += '\n';
        if (item->Members() != nullptr) {
            AppendItems(*item->Members(), item.get(), level + 1, end, out);
        }
    }
}

}  // namespace

void TextReport::AppendMessage(const LinePlace& /*place*/, const CapturedMessage& message,
                               const DecodedMessage& decoded, std::size_t end, std::string& out) const {
    out.append(AddressText(message)).append(" (").append(HexText(message.data, " ")).append(")");
    if (decoded.block != nullptr) {
        out.append(" ").append(decoded.block->GetName());
    }
    if (decoded.function != nullptr) {
        out.append(".").append(decoded.function->GetName());
    }
    if (decoded.operation != nullptr) {
        out.append(".").append(decoded.operation->GetName());
    }
    out += '\n';
    AppendItems(decoded.items, nullptr, 1, end, out);
    for (const std::string& fault : decoded.faults) {
        AppendFault(fault, out);
    }
}

void TextReport::BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                         std::string& out) const {
    out.append(ShownText(line)).append("\n");
    const std::string where = place.file.empty() ? std::string() : " of " + place.file;
    AppendFault("line " + std::to_string(place.number) + where + ": " + std::string(fault), out);
}

}  // namespace tarvex
