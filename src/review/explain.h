/// Explanations of messages as people and programs read them.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/style.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

using Explanations = std::vector<const Explanation*>;

/// Those that a word asks for: a number as logs have it ("93", "0093", "#0093"), or "fatal". Two messages may
/// share a number.
Explanations FindExplanations(std::string_view word);
/// All of them, in the order of their groups.
Explanations AllExplanations();
/// Why there are none for a word: which numbers are near.
std::string NotExplained(std::string_view word);

/// For a terminal: blocks of lines with an empty line between them.
std::string ExplanationText(const Explanations& explanations, const vorn::Style& style);
/// A list of objects.
std::string ExplanationJson(const Explanations& explanations);
/// Sections of a document.
std::string ExplanationMarkdown(const Explanations& explanations);
/// The document about all messages, docs/messages.md.
std::string MessagesDocument();

}  // namespace tarvex::review
