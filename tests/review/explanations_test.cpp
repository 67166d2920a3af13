/// The explanations of messages: their excerpts raise what they say, and what they say of it is so.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalog/catalog.h"
#include "catalog/definitions.h"
#include "catalog/op_types.h"
#include "import/import_manager.h"
#include "params/layout.h"
#include "review/explain.h"
#include "review/explanation_words.h"
#include "review/frames.h"
#include "support/temp_dir.h"

namespace tarvex::test::explanations_test {
namespace {

using review::Explanation;
using review::Frame;
using review::Loss;

/// An entry of the import log, which has two lines: "Error #0087 in '/Cat/Amp':" and the text.
struct Entry {
    unsigned number;  // 0 for fatal errors
    std::string text;
};

std::vector<Entry> EntriesIn(const std::string& log) {
    std::vector<Entry> entries;
    for (std::size_t line = 0; line < log.size(); line = log.find('\n', line) + 1) {
        const std::string_view rest = std::string_view(log).substr(line);
        if (!rest.starts_with("Error #") && !rest.starts_with("Warning #") &&
            !rest.starts_with("Fatal error in ")) {
            continue;
        }
        const std::size_t mark = rest.find_first_of("#'");
        const std::size_t text = rest.find("\n  ") + 3;
        entries.push_back(
            {rest[mark] == '#' ? static_cast<unsigned>(std::stoul(std::string(rest.substr(mark + 1, 4)))) : 0,
             std::string(rest.substr(text, rest.find('\n', text) - text))});
    }
    return entries;
}

/// What the frames with parameters have in "Status", the last of them from the excerpt.
Loss LossInVolume(const ZMTFunction* volume) {
    constexpr unsigned kStatus = 12;
    constexpr unsigned kParams = 3;
    if (volume == nullptr) {
        return Loss::Function;
    }
    const ZMTOperation* status = volume->GetAt(kStatus);
    if (status == nullptr) {
        return Loss::Operation;
    }
    return status->Count() < kParams ? Loss::Parameter : Loss::Nothing;
}

Loss LossInAmp(const ZMTFBlock& amp) {
    constexpr unsigned kMute = 0x400;
    for (const ZMTFunction& function : amp.Items()) {
        if (function.FunctionID() != kMute) {
            return function.Count() == 0 ? Loss::Operation : Loss::Nothing;
        }
    }
    return Loss::Function;
}

std::size_t Occurrences(std::string_view text, std::string_view what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, at + 1)) {
        ++count;
    }
    return count;
}

/// The frames have one block before that of the excerpt.
Loss LossInBlocks(std::string_view excerpt, const ZMTCatalog& catalog) {
    if (catalog.Count() < 1 + Occurrences(excerpt, "</FBlock>")) {
        return Loss::Block;
    }
    std::size_t functions = 0;
    for (const ZMTFBlock& block : catalog.Items()) {
        functions += block.Count();
    }
    return functions < 1 + Occurrences(excerpt, "<Function>") + Occurrences(excerpt, "<Function FktDefRef")
               ? Loss::Function
               : Loss::Nothing;
}

/// What the tree lacks of the excerpt, as far as the frame tells; the parts of parameters are not looked at.
Loss LossIn(Frame frame, std::string_view excerpt, const ZMTCatalog& catalog) {
    constexpr unsigned kAmp = 0x22;
    constexpr unsigned kVolume = 0x401;
    constexpr unsigned kDefinitionsOfFrame = 16;
    const ZMTFBlock& amp = *catalog.GetAt(kAmp);
    const unsigned definitions =
        catalog.Definitions()->Types().Count() + catalog.Definitions()->Units().Count();
    switch (frame) {
        case Frame::Definition:
            return definitions == kDefinitionsOfFrame ? Loss::Definition : Loss::Nothing;
        case Frame::Block:
            return LossInBlocks(excerpt, catalog);
        case Frame::Function:
        case Frame::ManyErrors:
            return LossInAmp(amp);
        case Frame::Parameter:
        case Frame::Type:
        case Frame::StreamCase:
            return LossInVolume(amp.GetAt(kVolume));
        case Frame::Document:
            break;
    }
    return Loss::Nothing;
}

/// One that is in the tree, or has lost all that it had.
bool HasIncompleteOperation(const ZMTFunction& function) {
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const ZMTOperation* operation = function.GetAt(opType);
        if (operation != nullptr ? LayoutOf(*operation) == Layout::Incomplete
                                 : function.LostParams().FirstOf(opType) != nullptr) {
            return true;
        }
    }
    return false;
}

bool HasIncompleteOperation(const ZMTCatalog& catalog) {
    return std::ranges::any_of(catalog.Items(), [](const ZMTFBlock& block) {
        return std::ranges::any_of(
            block.Items(), [](const ZMTFunction& function) { return HasIncompleteOperation(function); });
    });
}

/// What came of an import.
struct Outcome {
    std::vector<Entry> entries;
    std::vector<unsigned> numbers;
    Loss loss = Loss::Catalog;
    bool isIncomplete = false;
};

/// Imports one catalog after the other: to start with an importer of their own would take most of their time.
class Importer {
  public:
    Outcome Import(Frame frame, std::string_view excerpt, bool readNewer = false) {
        const std::string path = dir_.Write("Cat.xml", InFrame(frame, excerpt));
        const std::string logPath = dir_.File("Cat.log");
        std::string name;
        manager_.Clear();
        manager_.ReadNewer = readNewer;
        Outcome outcome;
        if (manager_.Import(name, path, kCatalogGroup, logPath)) {
            const ZMTCatalog& catalog = *manager_.FindCatalog(name);
            outcome.loss = LossIn(frame, excerpt, catalog);
            outcome.isIncomplete = HasIncompleteOperation(catalog);
        }
        outcome.entries = EntriesIn(ReadFile(logPath));
        for (const Entry& entry : outcome.entries) {
            outcome.numbers.push_back(entry.number);
        }
        return outcome;
    }

  private:
    TempDir dir_;
    ZMostFCatManager manager_;
};

/// An excerpt, imported as its explanation has it and once more with the other setting of the newer forms.
struct Case {
    const Explanation* explanation;
    Outcome import;
    Outcome otherImport;
};

/// Several tests look at all of them.
const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = [] {
        Importer importer;
        std::vector<Case> made;
        for (const Explanation* one : review::AllExplanations()) {
            if (!one->excerpt.empty()) {
                made.push_back({one, importer.Import(one->frame, one->excerpt, one->isNewer),
                                importer.Import(one->frame, one->excerpt, !one->isNewer)});
            }
        }
        return made;
    }();
    return cases;
}

std::string NameOf(const Explanation& explanation) {
    return std::to_string(explanation.message->number) + " " + std::string(explanation.message->text);
}

/// The numbers that an explanation promises.
std::vector<unsigned> Promised(const Explanation& explanation) {
    std::vector<unsigned> numbers = review::Listed(explanation.behind);
    numbers.push_back(explanation.message->number);
    const std::vector<unsigned> followers = review::Listed(explanation.followers);
    numbers.insert(numbers.end(), followers.begin(), followers.end());
    return numbers;
}

TEST(Explanations, FramesHaveNoFaultsOfTheirOwn) {
    constexpr std::string_view kVoid = R"(<TVoid TypeRef="type_void"/>)";
    constexpr std::string_view kCase =
        R"(<StreamCase><PosDescription PosX="Kind" PosY="1"/><StreamParam><ParamName ParamIdx="1"/>
           <TVoid TypeRef="type_void"/></StreamParam></StreamCase>)";
    constexpr std::pair<Frame, std::string_view> kSane[] = {
        {Frame::Definition, ""}, {Frame::Block, ""},   {Frame::Function, ""},      {Frame::ManyErrors, ""},
        {Frame::Parameter, ""},  {Frame::Type, kVoid}, {Frame::StreamCase, kCase},
    };
    Importer importer;
    for (const auto& [frame, excerpt] : kSane) {
        const Outcome outcome = importer.Import(frame, excerpt);
        EXPECT_THAT(outcome.numbers, testing::IsEmpty()) << review::FrameText(frame);
        EXPECT_NE(outcome.loss, Loss::Catalog) << review::FrameText(frame);
    }
}

TEST(Explanations, HaveAllPartsOrSayWhyTheyHaveNoExcerpt) {
    for (const Explanation* one : review::AllExplanations()) {
        EXPECT_FALSE(one->when.empty()) << NameOf(*one);
        EXPECT_EQ(one->excerpt.empty(), !one->noExcerpt.empty()) << NameOf(*one);
        EXPECT_TRUE(one->excerpt.empty() || !one->becomes.empty()) << NameOf(*one);
        EXPECT_TRUE(one->excerpt.empty() || !one->repair.empty()) << NameOf(*one);
    }
}

TEST(Explanations, ExcerptsRaiseExactlyWhatTheySay) {
    for (const Case& one : Cases()) {
        EXPECT_THAT(one.import.numbers, testing::ElementsAreArray(Promised(*one.explanation)))
            << NameOf(*one.explanation);
    }
}

/// Two messages share a number, and fatal errors have none.
TEST(Explanations, ExcerptsRaiseTheMessageItself) {
    for (const Case& one : Cases()) {
        const Message& message = *one.explanation->message;
        const std::string_view start = message.text.substr(0, message.text.find('%'));
        EXPECT_THAT(one.import.entries,
                    testing::Contains(testing::AllOf(
                        testing::Field(&Entry::number, message.number),
                        testing::Field(&Entry::text, testing::StartsWith(std::string(start))))))
            << NameOf(*one.explanation);
    }
}

TEST(Explanations, SayWhatIsLost) {
    for (const Case& one : Cases()) {
        const Loss told = one.explanation->loss == Loss::Part ? Loss::Nothing : one.explanation->loss;
        EXPECT_EQ(review::LossName(one.import.loss), review::LossName(told)) << NameOf(*one.explanation);
    }
}

TEST(Explanations, SayWhereTheLayoutIsNotSure) {
    for (const Case& one : Cases()) {
        EXPECT_EQ(one.import.isIncomplete, one.explanation->isIncomplete) << NameOf(*one.explanation);
    }
}

TEST(Explanations, SayWhatIsDifferentWithTheNewerForms) {
    for (const Case& one : Cases()) {
        const bool isToldDifferent = one.explanation->isNewer || !one.explanation->newer.empty();
        EXPECT_EQ(one.import.numbers != one.otherImport.numbers, isToldDifferent)
            << NameOf(*one.explanation) << testing::PrintToString(one.otherImport.numbers);
    }
}

}  // namespace
}  // namespace tarvex::test::explanations_test
