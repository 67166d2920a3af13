#include "review/explanation_words.h"

#include <algorithm>

namespace tarvex::review {
namespace {

/// "87 and 129", "21, 32 and 129"
std::string Enumerated(const Numbers& numbers) {
    const std::vector<unsigned> listed = Listed(numbers);
    std::string text;
    for (std::size_t i = 0; i < listed.size(); ++i) {
        const bool isLast = i + 1 == listed.size();
        text += i == 0 ? "" : isLast ? " and " : ", ";
        text += std::to_string(listed[i]);
    }
    return text;
}

void AddIfAny(std::vector<Paragraph>& paragraphs, std::string_view label, std::string_view text) {
    if (!text.empty()) {
        paragraphs.push_back({std::string(label), std::string(text)});
    }
}

}  // namespace

std::string_view KindName(Kind kind) {
    switch (kind) {
        case Kind::Fatal:
            return "fatal error";
        case Kind::Error:
            return "error";
        case Kind::Warning:
            return "warning";
    }
    return "";
}

std::string_view FrameText(Frame frame) {
    switch (frame) {
        case Frame::Document:
            return "the whole catalog";
        case Frame::Definition:
            return "in `Definition`";
        case Frame::Block:
            return "in `FunctionCatalog`, behind the block `Amp` (0x22) with the function `fkt_mute`";
        case Frame::Function:
            return "in a block, behind the function `Mute` (0x400), whose FktDefId is `fkt_mute`";
        case Frame::ManyErrors:
            return "in a catalog with 4097 `ERParam`, the last of which has the ParamDefId `Last`";
        case Frame::Parameter:
            return "in a property, behind the parameters `Kind` and `Mode` at positions 1 and 2";
        case Frame::Type:
            return "the type of a parameter";
        case Frame::StreamCase:
            return "in a `TStream`, behind the parameters `Kind` and `Mode`";
    }
    return "";
}

std::string_view LossName(Loss loss) {
    switch (loss) {
        case Loss::Nothing:
            return "nothing";
        case Loss::Part:
            return "part";
        case Loss::Parameter:
            return "parameter";
        case Loss::Operation:
            return "operation";
        case Loss::Function:
            return "function";
        case Loss::Block:
            return "block";
        case Loss::Definition:
            return "definition";
        case Loss::Catalog:
            return "catalog";
    }
    return "";
}

std::vector<unsigned> Listed(const Numbers& numbers) {
    std::vector<unsigned> listed;
    for (const unsigned number : numbers) {
        if (number != 0) {
            listed.push_back(number);
        }
    }
    return listed;
}

std::vector<Paragraph> Paragraphs(const Explanation& explanation) {
    std::vector<Paragraph> paragraphs;
    AddIfAny(paragraphs, "When", explanation.when);
    AddIfAny(paragraphs, "What TARVEX does", explanation.becomes);
    if (explanation.isIncomplete) {
        AddIfAny(paragraphs, "With `SafeLayout=1`",
                 "Signals end where the layout is not sure any more, and the message's attribute `Layout` "
                 "says `Incomplete`.");
    }
    AddIfAny(paragraphs, "With `FCatImportNewer=1`", explanation.newer);
    if (explanation.isNewer) {
        AddIfAny(paragraphs, "Only", "with `FCatImportNewer=1`, and in `tarvex-disasm`.");
    }
    AddIfAny(paragraphs, "How to mend it", explanation.repair);
    AddIfAny(paragraphs, "Example", explanation.noExcerpt);
    return paragraphs;
}

std::string ExampleLabel(const Explanation& explanation) {
    std::string label = "Example (" + std::string(FrameText(explanation.frame)) + ")";
    if (explanation.behind.front() != 0) {
        label += ", behind " + Enumerated(explanation.behind);
    }
    if (explanation.followers.front() != 0) {
        label += ", followed by " + Enumerated(explanation.followers);
    }
    return label;
}

std::string PlainText(std::string_view markdown) {
    std::string text(markdown);
    std::erase(text, '`');
    return text;
}

std::string Wrapped(std::string_view text, std::size_t width, std::string_view indent) {
    std::string lines;
    std::size_t column = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (word.empty()) {
            continue;
        }
        if (lines.empty()) {
            column = 0;
        } else if (column + 1 + word.size() > width) {
            lines.append("\n").append(indent);
            column = indent.size();
        } else {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += word.size();
    }
    return lines;
}

}  // namespace tarvex::review
