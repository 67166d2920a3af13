/// The parts of an explanation in words, for every format.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "review/explanations/explanation.h"

namespace tarvex::review {

/// "error"
std::string_view KindName(Kind kind);
/// Where the excerpt stands, as what follows "Example".
std::string_view FrameText(Frame frame);
/// "parameter"; what there is for nothing is "nothing".
std::string_view LossName(Loss loss);
/// Those that are not 0.
std::vector<unsigned> Listed(const Numbers& numbers);

/// A text and what it is about. Markdown, both of them.
struct Paragraph {
    std::string label;
    std::string text;
};
/// All that there is to say, without the example.
std::vector<Paragraph> Paragraphs(const Explanation& explanation);
/// What stands in front of the excerpt: "Example (the type of a parameter), followed by 129".
std::string ExampleLabel(const Explanation& explanation);

/// A text without the backquotes, which say nothing on a terminal.
std::string PlainText(std::string_view markdown);

/// The words of a text in lines of at most `width` bytes, unless a word is longer; lines behind the first
/// begin with the indent.
std::string Wrapped(std::string_view text, std::size_t width, std::string_view indent = "");

}  // namespace tarvex::review
