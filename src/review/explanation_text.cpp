#include <algorithm>
#include <string>

#include "review/explain.h"
#include "review/explanation_words.h"

namespace tarvex::review {
namespace {

constexpr std::size_t kTerminalWidth = 80;
constexpr std::string_view kExcerptIndent = "    ";

std::string Indented(std::string_view lines) {
    std::string text(kExcerptIndent);
    for (const char character : lines) {
        text += character;
        if (character == '\n') {
            text += kExcerptIndent;
        }
    }
    return text;
}

/// "93 warning: Ambiguous length of bitfield"
std::string Head(const Message& message) {
    std::string head = message.number == 0 ? "" : std::to_string(message.number) + " ";
    return head.append(KindName(message.kind)).append(": ").append(message.text);
}

}  // namespace

std::string ExplanationText(const Explanations& explanations, const vorn::Style& style) {
    std::string text;
    for (const Explanation* explanation : explanations) {
        text += text.empty() ? "" : "\n\n";
        text += style(vorn::Colour::Heading, Wrapped(Head(*explanation->message), kTerminalWidth)) + "\n";
        for (const Paragraph& paragraph : Paragraphs(*explanation)) {
            text += "\n" + Wrapped(PlainText(paragraph.label + ": " + paragraph.text), kTerminalWidth) + "\n";
        }
        if (!explanation->excerpt.empty()) {
            text += "\n" + Wrapped(PlainText(ExampleLabel(*explanation) + ":"), kTerminalWidth) + "\n\n";
            text += Indented(explanation->excerpt) + "\n";
        }
    }
    return text;
}

}  // namespace tarvex::review
