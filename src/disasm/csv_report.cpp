#include "disasm/csv_report.h"

#include "disasm/bit_field_item.h"
#include "disasm/csv_text.h"
#include "disasm/enum_item.h"
#include "disasm/number_item.h"
#include "disasm/stream_item.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr const char* kHeader =
    "file,line,time,address,function_block,function,operation,item,raw,physical,unit,text,error\n";

void AppendPlaceCells(const LinePlace& place, std::string& out) {
    AppendCsvText(out, place.file);
    AppendNumber(out += ',', static_cast<std::int64_t>(place.number));
    out += ',';
}

/// Appends raw value, physical value and unit of an item, less those that it has not, with a comma behind
/// each.
void AppendValues(const ZMostParameter& item, std::string& out) {
    if (item.IsType(kParamNumber)) {
        const auto& number = static_cast<const ZMostParameterNumber&>(item);
        AppendNumber(out, number.SignedValue());
        out += ',';
        if (!number.IsPosition()) {
            number.AppendText(out);
        }
        AppendCsvText(out += ',', number.UnitText());
        out += ',';
        return;
    }
    if (item.IsType(kParamEnum)) {
        AppendNumber(out, item.RawValue());
    } else if (item.IsType(kParamBoolField)) {
        out += static_cast<const ZMostParameterBoolField&>(item).Value() ? '1' : '0';
    } else if (item.IsType(kParamStreamSignal)) {
        AppendNumber(out, static_cast<const ZMostParameterStreamSignal&>(item).Value());
    }
    out += ",,,";
}

/// Writes the rows of one message.
class RowWriter {
  public:
    /// `head`: the cells that all rows have in common.
    RowWriter(std::string head, std::size_t end, std::string& out)
        : head_(std::move(head)), end_(end), out_(out) {}

    void Items(const ZMostParameterListBaseInfo& items, const ZMostParameter* container) {
        std::size_t index = 0;
        for (const auto& item : items.Items()) {
            if (out_.size() > end_) {
                return;
            }
            const std::size_t before = path_.size();
            Enter(*item, container == nullptr ? 0 : container->EntryNumber(index++));
            if (item->IsType(kParamBitField) || item->IsType(kParamBool)) {
                Bits(static_cast<const ZMostParameterBitField&>(*item));
            } else if (item->Members() != nullptr && !item->Members()->Items().empty()) {
                Items(*item->Members(), item.get());
            } else {
                Row(*item);
            }
            path_.resize(before);
        }
    }
    void Fault(std::string_view fault) {
        out_.append(head_).append(",,,,,");
        AppendCsvText(out_, fault);
        out_ += '\n';
        hasRows_ = true;
    }
    /// The row of a message that has no others.
    void Finish() {
        if (!hasRows_) {
            out_.append(head_).append(",,,,,\n");
        }
    }

  private:
    void Enter(const ZMostParameter& item, unsigned entryNumber) {
        if (entryNumber > 0) {
            AppendNumber(path_ += '[', entryNumber);
            path_ += ']';
        }
        if (!item.GetName().empty()) {
            path_ += path_.empty() ? "" : ".";
            AppendShownName(path_, item.GetName());
        }
    }
    void Bits(const ZMostParameterBitField& field) {
        const std::size_t before = path_.size();
        for (unsigned bit = 0; bit < field.BitCount(); ++bit) {
            const ZMostParameterBoolField item = field.BitAt(bit);
            AppendNumber(path_ += "[bit", bit);
            path_ += ']';
            Enter(item, 0);
            Row(item);
            path_.resize(before);
        }
    }
    void Row(const ZMostParameter& item) {
        AppendCsvText(out_ += head_, path_);
        AppendValues(item, out_ += ',');
        const std::size_t text = out_.size();
        item.AppendText(out_);
        QuoteCsvText(out_, text);
        out_ += ",\n";
        hasRows_ = true;
    }

    std::string head_;
    std::size_t end_;
    std::string& out_;
    std::string path_;
    bool hasRows_ = false;
};

template <class Node>
void AppendNodeCell(const Node* node, std::string& out) {
    AppendCsvText(out, node == nullptr ? std::string_view() : std::string_view(node->GetName()));
    out += ',';
}

}  // namespace

void CsvReport::Begin(std::string& out) const {
    out += kHeader;
}

void CsvReport::AppendMessage(const LinePlace& place, const CapturedMessage& message,
                              const DecodedMessage& decoded, std::size_t end, std::string& out) const {
    std::string head;
    AppendPlaceCells(place, head);
    AppendCsvText(head, message.time);
    AppendAddress(message, head += ',');
    head += ',';
    AppendNodeCell(decoded.block, head);
    AppendNodeCell(decoded.function, head);
    AppendNodeCell(decoded.operation, head);
    RowWriter rows(std::move(head), end, out);
    rows.Items(decoded.items, nullptr);
    for (const std::string& fault : decoded.faults) {
        rows.Fault(fault);
    }
    rows.Finish();
}

void CsvReport::BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                        std::string& out) const {
    AppendPlaceCells(place, out);
    out += ",,,,,,,,,";
    AppendCsvText(out, ShownText(line));
    AppendCsvText(out += ',', fault);
    out += '\n';
}

}  // namespace tarvex
