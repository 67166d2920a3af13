#include <string>

#include "review/explain.h"
#include "review/explanation_words.h"
#include "review/explanations/explanations.h"

namespace tarvex::review {
namespace {

constexpr std::size_t kDocumentWidth = 120;

constexpr std::string_view kIntroduction = R"(# Importer messages

<!-- Written by: tarvex-catalog explain --all --format markdown -->

What the import log says, by number. There is a log with `FCatImportLog=1` in `TARVEX.ini`; without, the console has the
number of errors and warnings alone. `FCatImportLogExclude` keeps numbers out of the log; they still count in the result.
`tarvex-catalog explain 93` shows what stands here about 93.

**What becomes of the element** is said of each message. As a rule a warning leaves it in place, and an error leaves out
the element that could not be read. The exceptions: the warnings 22, 33, 91, 97 and 213 leave out the second of two
elements, and after the errors 78, 80, 123, 126 and 127, and 11 of a void parameter, the element is still there. An element
that is left out takes along what it stands in, or not, as the messages say; further messages (7, 8, 32, 46, 53, 81, 92, 98,
120, 129, 145, 148, 149) then tell it, from the inside out. The tables say what is lost of the example: a part of a
parameter, the parameter, its operation, its function, its block.

**What moves.** Without `SafeLayout` the parameters of an operation behind one that was left out move up, and the signals
with them: they stand at other bits than in the real message. Of that only 102 tells, where the lost one stood at position 1
or between others: not for position 0, nor for the last one. So look for 129, 128, 130 and 135 before you trust the signals
of a function, or set `SafeLayout=1`: signals end then in front of what is missing, and the message has the attribute
`Layout` with the value `Incomplete`.

**What nobody tells.** A parameter whose OPType element names no operation that is known, or one twice, is not in that
operation. A `TDefSize`, `UnitDefCode`, `Exponent`, `RangeMin`, `RangeMax` or `Step` that is no number counts as 0, and a
`MaxSize` that is none as no limit.

A fatal error has no number and ends the conversion.

The path behind a message is that of the node that raised it: catalog, block, function, parameter, and from the second
pass (9, 27, 47, 57, 58, 102, 103) on also the operation. 128 and 129 come from the function: 128 names the parameter
nowhere, of 129 the message before it does. A node whose name had not been read yet shows an empty name.

An element that is there without a text counts as missing where its text is wanted.

**The examples** raise the message in a catalog that has no other fault, and beside it only what is named with them: messages
that it follows from, and those that follow from it. Where there is none, the program looks for something that no catalog
can bring about, or no small one.
)";

/// As code, so that nothing in it means anything.
std::string Code(std::string_view text) {
    return "`" + std::string(text) + "`";
}

std::string Section(const Explanation& explanation) {
    const Message& message = *explanation.message;
    std::string text = "### ";
    text += message.number == 0 ? "" : std::to_string(message.number) + " ";
    text.append(KindName(message.kind)).append(": ").append(Code(message.text)).append("\n\n");
    for (const Paragraph& paragraph : Paragraphs(explanation)) {
        text += Wrapped("- **" + paragraph.label + ":** " + paragraph.text, kDocumentWidth, "  ") + "\n";
    }
    if (!explanation.excerpt.empty()) {
        text += "\n" + Wrapped("**" + ExampleLabel(explanation) + ":**", kDocumentWidth) + "\n";
        text.append("\n```xml\n").append(explanation.excerpt).append("\n```\n");
    }
    return text;
}

std::string Row(const Explanation& explanation) {
    const Message& message = *explanation.message;
    std::string row = "| " + (message.number == 0 ? "" : std::to_string(message.number)) + " | ";
    row.append(KindName(message.kind)).append(" | ").append(Code(message.text)).append(" | ");
    row.append(explanation.excerpt.empty() ? "" : LossName(explanation.loss)).append(" |\n");
    return row;
}

std::string Chapter(const Group& group) {
    std::string text = "## " + std::string(group.heading) + "\n\n";
    if (!group.introduction.empty()) {
        text += Wrapped(group.introduction, kDocumentWidth) + "\n\n";
    }
    text += "| No. | Kind | Text | What is lost |\n|---|---|---|---|\n";
    for (const Explanation& explanation : group.explanations) {
        text += Row(explanation);
    }
    for (const Explanation& explanation : group.explanations) {
        text += "\n" + Section(explanation);
    }
    return text;
}

}  // namespace

std::string ExplanationMarkdown(const Explanations& explanations) {
    std::string text;
    for (const Explanation* explanation : explanations) {
        text += (text.empty() ? "" : "\n") + Section(*explanation);
    }
    return text;
}

std::string MessagesDocument() {
    std::string text(kIntroduction);
    for (const Group& group : Groups()) {
        text += "\n" + Chapter(group);
    }
    return text;
}

}  // namespace tarvex::review
