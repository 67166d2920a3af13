#include <algorithm>
#include <string_view>
#include <utility>

#include "import/text/format_text.h"
#include "import/text/shown_text.h"
#include "kestrel/model_text.h"
#include "review/fault_text.h"
#include "review/own_texts.h"
#include "review/param_text.h"
#include "review/param_words.h"
#include "review/show.h"
#include "review/text_table.h"

namespace tarvex::review {
namespace {

using vorn::Colour;
using Row = std::vector<std::string>;

constexpr const char* kIndent = "  ";

std::string AddressOf(const Target& target) {
    std::string text = FormatText("%02X", target.block->FBlockID());
    if (target.function != nullptr) {
        text += FormatText(".%03X", target.function->FunctionID());
    }
    return target.opType ? text + FormatText(".%X", *target.opType) : text;
}

std::string NameOf(const Target& target) {
    std::string text = ShownName(target.block->GetName());
    if (target.function != nullptr) {
        text += "." + ShownName(target.function->GetName());
    }
    if (target.opType) {
        text += std::string(".") + OperationName(target.function->Class(), *target.opType);
    }
    return text;
}

void AddTo(std::string& list, const std::string& text) {
    if (!text.empty()) {
        list.append(list.empty() ? "" : ", ").append(text);
    }
}

/// "property PUnclassified"
std::string ClassText(const ZMTFunction& function, const FunctionTexts& texts) {
    const std::string kind(ClassName(function.Class()));
    return texts.functionClass.empty() ? kind : kind + " " + texts.functionClass;
}

/// "0 Set"
std::string OperationText(const OperationView& operation) {
    return FormatText("%X ", operation.address.opType) + operation.name;
}

/// "3", "3+" where more follows, "3?" where nobody knows.
std::string BytesText(const OperationView& operation) {
    return std::to_string(operation.KnownBytes()) +
           (operation.end ? (operation.end->letter == '~' ? "+" : "?") : "");
}

class FunctionText {
  public:
    FunctionText(const CatalogReading& reading, const vorn::Style& style, const FunctionView& view)
        : reading_(reading), style_(style), view_(view) {}

    std::string All() {
        Head();
        text_ += "\n" + TableText(Table());
        Parameters();
        Drawings();
        Faults();
        return std::move(text_);
    }

  private:
    void Head() {
        const FunctionTexts texts = CatalogTexts::Of(*view_.target.function);
        text_ = style_(Colour::Heading, AddressOf(view_.target) + kIndent + NameOf(view_.target));
        // Names of the tree lack what databases do not take.
        const bool isOther = !texts.name.empty() && texts.name != view_.target.function->GetName();
        text_ += isOther ? "  \"" + ShownName(texts.name) + "\"\n" : "\n";
        std::string line = ClassText(*view_.target.function, texts);
        AddTo(line, texts.section.empty() ? "" : "section " + ShownName(texts.section));
        text_ +=
            kIndent + line + "\n" + IndentedText(Shown(texts.description), std::string_view(kIndent).size());
    }

    /// Columns have the names of their parameters where there is room for them.
    bool AreNumbered() const {
        std::size_t width = 0;
        for (const ZMTParam* param : view_.parameters) {
            width += 2 + ShownName(ShortestName(*param)).size();
        }
        constexpr std::size_t kRoom = 60;
        return width > kRoom;
    }

    std::string Heading(std::size_t place) const {
        return AreNumbered() ? "[" + std::to_string(place + 1) + "]"
                             : ShownName(ShortestName(*view_.parameters[place]));
    }

    std::vector<Row> Table() const {
        std::vector<Row> rows{{"OPType"}};
        for (std::size_t place = 0; place < view_.parameters.size(); ++place) {
            rows.front().push_back(Heading(place));
        }
        rows.front().insert(rows.front().end(), {"Bytes", "Layout", "Identifier", "Message"});
        for (const OperationView& operation : view_.operations) {
            Row row{OperationText(operation)};
            for (std::size_t place = 0; place < operation.positions.size(); ++place) {
                const unsigned position = operation.positions[place];
                row.push_back(position == 0
                                  ? "-"
                                  : std::to_string(operation.positionsInCatalog[place].value_or(position)));
            }
            row.push_back(BytesText(operation));
            row.emplace_back(operation.operation == nullptr ? "lost" : LayoutWord(operation.layout));
            if (operation.message != nullptr) {
                row.push_back(FormatText("0x%X", operation.message->identifier & ~kExtendedIdentifier));
                row.push_back(Shown(kestrel::NameText(operation.message->name)));
            }
            rows.push_back(std::move(row));
        }
        return rows;
    }

    void Parameters() {
        const bool areNumbered = AreNumbered();
        for (std::size_t place = 0; place < view_.parameters.size(); ++place) {
            text_ += (place == 0 ? "\n" : "") + (areNumbered ? Heading(place) + " " : std::string()) +
                     ParamText(*view_.parameters[place]);
        }
    }

    /// Operations that look alike have one drawing.
    void Drawings() {
        std::vector<std::pair<std::string, std::string>> drawings;  // and whose they are
        for (const OperationView& operation : view_.operations) {
            std::string drawing = Drawing(operation);
            if (drawing.empty()) {
                continue;
            }
            const auto found =
                std::ranges::find(drawings, drawing, &std::pair<std::string, std::string>::first);
            if (found == drawings.end()) {
                drawings.emplace_back(std::move(drawing), OperationText(operation));
            } else {
                AddTo(found->second, OperationText(operation));
            }
        }
        for (const auto& [drawing, operations] : drawings) {
            text_ += "\n" + style_(Colour::Heading, operations) + drawing;
        }
    }

    /// Nothing for a message without bytes.
    std::string Drawing(const OperationView& operation) const {
        if (operation.message == nullptr || (operation.message->length == 0 && !operation.end)) {
            return {};
        }
        const std::vector<vorn::DrawnSignal> signals = vorn::LetterSignals(*operation.message);
        std::string text = vorn::Drawings(*operation.message, signals, style_, operation.end);
        for (const vorn::DrawnSignal& signal : signals) {
            text += style_(Colour::Changed, signal.letters) + " " +
                    Shown(kestrel::NameText(signal.signal->name)) + "\n";
        }
        return text;
    }

    void Faults() {
        for (const Fault* fault : view_.faults) {
            text_ += (fault == view_.faults.front() ? "\n" + style_(Colour::Heading, "Faults") + "\n" : "") +
                     kIndent + FaultLine(reading_, *fault, style_) + "\n";
        }
    }

    const CatalogReading& reading_;
    const vorn::Style& style_;
    const FunctionView& view_;
    std::string text_;
};

class ShowText : public ShowReport {
  public:
    ShowText(const CatalogReading& reading, const vorn::Style& style)
        : reading_(reading), style_(style), texts_(reading) {}

    std::string Of(const CatalogView& catalog) override {
        std::string text = style_(Colour::Heading, Shown(reading_.ShownPath()));
        const std::string version = VersionText(texts_.CatalogVersion());
        text += (version.empty() ? "" : "  release " + ShownName(version)) + "\n\n";
        std::vector<Row> rows{{"ID", "Block", "Kind", "Version", "Functions", "Faults"}};
        for (const BlockView& view : catalog.blocks) {
            const BlockTexts texts = texts_.Of(*view.block);
            rows.push_back({AddressOf({view.block}), NameOf({view.block}), OrNone(texts.kind),
                            OrNone(VersionText(texts.version)), std::to_string(view.block->Count()),
                            std::to_string(view.faults)});
        }
        text += TableText(rows);
        if (catalog.otherFaults > 0) {
            text += "\nOutside of these: " + std::to_string(catalog.otherFaults) + " fault" +
                    (catalog.otherFaults == 1 ? "" : "s") + "\n";
        }
        return text;
    }

    std::string Of(const std::vector<Answer>& answers) override {
        std::string text;
        for (const Answer& answer : answers) {
            if (answer.IsFound()) {
                text += (text.empty() ? "" : "\n") + OfOne(answer);
            }
        }
        return text;
    }

  private:
    /// For a cell of a table.
    static std::string OrNone(const std::string& text) { return text.empty() ? "-" : ShownName(text); }

    std::string OfOne(const Answer& answer) const {
        std::string text;
        for (const BlockView& block : answer.blocks) {
            text += OfBlock(block);
        }
        for (const FunctionView& function : answer.functions) {
            text += FunctionText(reading_, style_, function).All();
        }
        std::vector<Row> rows;
        for (const Target& target : answer.targets) {
            rows.push_back({AddressOf(target), NameOf(target)});
        }
        for (const FoundPlace& place : answer.places) {
            rows.push_back({AddressOf(place.target), NameOf(place.target), ShownName(place.what)});
        }
        return text + TableText(rows);
    }

    std::string OfBlock(const BlockView& view) const {
        const BlockTexts texts = texts_.Of(*view.block);
        std::string text =
            style_(Colour::Heading, AddressOf({view.block}) + kIndent + NameOf({view.block})) + "\n";
        std::string line = ShownName(texts.kind);
        const std::string version = VersionText(texts.version);
        AddTo(line, version.empty() ? "" : "version " + ShownName(version));
        AddTo(line, std::to_string(view.faults) + " fault" + (view.faults == 1 ? "" : "s"));
        text += kIndent + line + "\n" +
                IndentedText(Shown(texts.description), std::string_view(kIndent).size()) + "\n";
        std::vector<Row> rows{{"ID", "Function", "Class", "Operations"}};
        for (const ZMTFunction& function : view.block->Items()) {
            std::string operations;
            for (const ZMTOperation& operation : function.Items()) {
                AddTo(operations, operation.GetName());
            }
            rows.push_back({FormatText("%03X", function.FunctionID()), ShownName(function.GetName()),
                            ClassText(function, CatalogTexts::Of(function)), operations});
        }
        return text + TableText(rows);
    }

    const CatalogReading& reading_;
    vorn::Style style_;
    CatalogTexts texts_;
};

}  // namespace

std::unique_ptr<ShowReport> MakeShowText(const CatalogReading& reading, const vorn::Style& style) {
    return std::make_unique<ShowText>(reading, style);
}

}  // namespace tarvex::review
