#include "disasm/text_report.h"

#include "capture/line_prefix.h"
#include "disasm/bit_field_item.h"
#include "disasm/number_item.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

void AppendFault(const LinePlace& place, std::string_view fault, std::string& out) {
    AppendNumber(out.append("  error: line "), static_cast<std::int64_t>(place.number));
    if (!place.file.empty()) {
        out.append(" of ").append(place.file);
    }
    out.append(": ").append(fault).append("\n");
}

/// Entries of an array are told apart by their number.
void AppendEntryLabel(const ZMostParameter& item, unsigned entryNumber, std::string& out) {
    if (entryNumber > 0) {
        AppendNumber(out += '[', entryNumber);
        out += "] ";
    }
    const std::size_t name = out.size();
    item.AppendLabel(out);
    if (entryNumber > 0 && out.size() == name) {
        out.pop_back();
    }
}

/// Appends " = " and the value, if there is one.
void AppendValueText(const ZMostParameter& item, std::string& out) {
    constexpr std::string_view kEquals = " = ";
    const std::size_t text = out.append(kEquals).size();
    item.AppendText(out);
    if (out.size() == text) {
        out.resize(text - kEquals.size());
    }
    if (item.IsType(kParamNumber)) {
        const std::string_view unit = static_cast<const ZMostParameterNumber&>(item).UnitText();
        out.append(unit.empty() ? "" : " ").append(unit);
    }
    out += '\n';
}

/// A line for each bit that the catalog describes, and one for the others.
void AppendBitLines(const ZMostParameterBitField& field, std::size_t level, std::string& out) {
    for (unsigned bit = 0; bit < field.BitCount(); ++bit) {
        const ZMostParameterBoolField item = field.BitAt(bit);
        if (item.IsDescribed()) {
            item.AppendLabel(out.append(2 * level, ' '));
            AppendValueText(item, out);
        }
    }
    const std::size_t begin = out.append(2 * level, ' ').size();
    field.AppendOtherBits(out);
    if (out.size() == begin) {
        out.resize(begin - 2 * level);
    } else {
        out += '\n';
    }
}

void AppendItemLines(const ZMostParameterListBaseInfo& items, const ZMostParameter* container,
                     std::size_t level, std::size_t end, std::string& out) {
    std::size_t index = 0;
    for (const auto& item : items.Items()) {
        if (out.size() > end) {
            return;
        }
        out.append(2 * level, ' ');
        AppendEntryLabel(*item, container == nullptr ? 0 : container->EntryNumber(index++), out);
        AppendValueText(*item, out);
        if (item->IsType(kParamBitField) || item->IsType(kParamBool)) {
            AppendBitLines(static_cast<const ZMostParameterBitField&>(*item), level + 1, out);
        } else if (item->Members() != nullptr) {
            AppendItemLines(*item->Members(), item.get(), level + 1, end, out);
        }
    }
}

}  // namespace

void TextReport::AppendMessage(const LinePlace& place, const CapturedMessage& message,
                               const DecodedMessage& decoded, std::size_t end, std::string& out) const {
    AppendPrefix(message, out);
    AppendAddress(message, out);
    AppendHex(out.append(" ("), message.data, " ");
    out += ')';
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
    AppendItemLines(decoded.items, nullptr, 1, end, out);
    for (const std::string& fault : decoded.faults) {
        AppendFault(place, fault, out);
    }
}

void TextReport::BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                         std::string& out) const {
    out.append(ShownText(line)).append("\n");
    AppendFault(place, fault, out);
}

}  // namespace tarvex
