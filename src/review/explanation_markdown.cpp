#include <algorithm>
#include <string>

#include "review/explain.h"
#include "review/explanation_words.h"
#include "review/explanations/explanations.h"

namespace tarvex::review {
namespace {

constexpr std::size_t kDocumentWidth = 120;

/// A message's own text: what looks like a tag would be one.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        escaped.append(character == '<' ? "\\" : "").push_back(character);
    }
    return escaped;
}

std::string Section(const Explanation& explanation) {
    const Message& message = *explanation.message;
    std::string text = "\n### ";
    text += message.number == 0 ? "" : std::to_string(message.number) + " ";
    text.append(KindName(message.kind)).append(": ").append(Escaped(message.text)).append("\n");
    for (const Paragraph& paragraph : Paragraphs(explanation)) {
        text += "\n" + Wrapped("**" + paragraph.label + ":** " + paragraph.text, kDocumentWidth) + "\n";
    }
    if (!explanation.excerpt.empty()) {
        text += "\n" + Wrapped("**" + ExampleLabel(explanation) + ":**", kDocumentWidth) + "\n";
        text.append("\n```xml\n").append(explanation.excerpt).append("\n```\n");
    }
    return text;
}

std::string Introduction(const Group& group) {
    return group.introduction.empty() ? "" : "\n" + Wrapped(group.introduction, kDocumentWidth) + "\n";
}

}  // namespace

std::string ExplanationMarkdown(const Explanations& explanations) {
    std::string text;
    for (const Group& group : Groups()) {
        std::string sections;
        for (const Explanation& explanation : group.explanations) {
            if (std::ranges::find(explanations, &explanation) != explanations.end()) {
                sections += Section(explanation);
            }
        }
        if (!sections.empty()) {
            text += text.empty() ? "" : "\n";
            text.append("## ").append(group.heading).append("\n") += Introduction(group) + sections;
        }
    }
    return text;
}

}  // namespace tarvex::review
