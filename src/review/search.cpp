#include "review/search.h"

#include <algorithm>
#include <set>
#include <vector>

#include "import/text/names.h"
#include "params/enumeration.h"
#include "params/number.h"
#include "review/own_texts.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

/// Names in the tree have "_" where the catalog has a blank; those of values keep it.
char Folded(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' ? '_' : FoldCase(c);
}

std::string FoldedText(std::string_view text) {
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), Folded);
    return folded;
}

/// Of all names what the document has of them is looked at first, since no text has to be made for that.
class WordSearch {
  public:
    WordSearch(std::string_view word, const std::function<void(const FoundPlace& place)>& found)
        : inCatalog_(FoldedText(InOneLine(word))),
          inTree_(FoldedText(
              SanitizeName(TrimBlanks(word)).size() == TrimBlanks(word).size() ? TrimBlanks(word) : "")),
          found_(found) {}

    void LookThrough(const ZMTFBlock& block) {
        target_ = {&block};
        if (HasInName(block)) {
            Found("block");
        }
        for (const ZMTFunction& function : block.Items()) {
            target_.function = &function;
            if (HasInName(function)) {
                Found("function");
            }
            LookThrough(function);
        }
    }

  private:
    static bool IsIn(std::string_view text, std::string_view word) {
        const auto isSame = [](char inText, char inWord) { return Folded(inText) == inWord; };
        return !word.empty() &&
               std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) != text.end();
    }
    bool IsIn(std::string_view text) const { return IsIn(text, inCatalog_); }
    bool IsInTree(std::string_view name) const { return IsIn(name, inTree_); }
    template <class Node>
    bool HasInName(const Node& node) const {
        return IsInTree(node.GetName()) || (IsIn(RawName(node)) && IsIn(OwnName(node)));
    }

    void Found(std::string what) const { found_({target_, std::move(what)}); }

    void LookThrough(const ZMTFunction& function) {
        std::set<const Element*> seen;  // copies have the element of their original
        for (const ZMTOperation& operation : function.Items()) {
            for (const ZMTParam& param : operation.Items()) {
                if (param.GetElement() == nullptr || seen.insert(param.GetElement()).second) {
                    LookThrough(param);
                }
            }
        }
    }

    void LookThrough(const ZMTParam& param) {
        if (param.IsType(kParamBoolField)) {
            LookAtBit(static_cast<const ZMTParamBoolField&>(param));
            return;
        }
        path_.push_back(&param);
        // Cases and parameters without data have names of the program's own making.
        const bool isNamed = !param.IsType(kParamStreamCase) && !param.IsType(kParamVoid);
        if (isNamed && HasInName(param)) {
            Found(std::string(param.IsType(kParamStreamSignal) ? "signal " : "parameter ") + Path());
        }
        if (param.IsType(kParamNumber)) {
            const std::string unit = UnitText(static_cast<const ZMTParamNumber&>(param));
            if (IsIn(unit)) {
                Found("unit " + unit + " of " + Path());
            }
        }
        if (param.IsType(kParamEnum)) {
            LookAtValues(static_cast<const ZMTParamEnum&>(param));
        }
        VisitMembers(param, [this](const ZMTParam& member) { LookThrough(member); });
        path_.pop_back();
    }

    void LookAtValues(const ZMTParamEnum& enumeration) const {
        if (!MayHaveInValues(enumeration)) {
            return;
        }
        const std::vector<ValueTexts> texts = OwnValues(enumeration);
        auto text = texts.begin();
        for (const ZMTEnumValue& value : enumeration.Items()) {
            if (IsInTree(value.GetName()) || IsIn(text->name)) {
                Found("value " + CodesText(value) + " " + text->name + " of " + Path());
            }
            ++text;
        }
    }

    bool MayHaveInValues(const ZMTParamEnum& enumeration) const {
        for (const Element* child = FirstChildElement(ElementOfValues(enumeration)); child != nullptr;
             child = NextSiblingElement(*child)) {
            const auto isInOne = [&](const Attribute& attribute) { return IsIn(attribute.value); };
            if (IsIn(child->text) || std::ranges::any_of(child->attributes, isInOne)) {
                return true;
            }
        }
        return std::ranges::any_of(enumeration.Items(),
                                   [&](const ZMTEnumValue& value) { return IsInTree(value.GetName()); });
    }

    void LookAtBit(const ZMTParamBoolField& bit) const {
        const BitTexts texts = OwnTexts(bit);
        const auto hasIt = [&](const std::string& text) { return IsIn(text); };
        const std::string inTree[] = {bit.GetName(), bit.TrueDesc(), bit.FalseDesc()};
        if (!hasIt(texts.name) && !hasIt(texts.whenTrue) && !hasIt(texts.whenFalse) &&
            std::ranges::none_of(inTree, [&](const std::string& text) { return IsInTree(text); })) {
            return;
        }
        const std::string name = texts.name.empty() ? std::string() : texts.name + ": ";
        Found("bit " + std::to_string(bit.BitPos()) + " of " + Path() + ", " + name + texts.Meanings());
    }

    /// "Data.Trim"
    std::string Path() const {
        std::string path;
        for (const ZMTParam* param : path_) {
            if (!param->IsType(kParamStreamCase)) {
                path.append(path.empty() ? "" : ".").append(ShortestName(*param));
            }
        }
        return path;
    }

    std::string inCatalog_;  // folded, as the other
    std::string inTree_;     // empty for a word with letters that databases do not take
    const std::function<void(const FoundPlace& place)>& found_;
    Target target_;
    std::vector<const ZMTParam*> path_;
};

}  // namespace

void Search(const ZMTCatalog& catalog, std::string_view word,
            const std::function<void(const FoundPlace& place)>& found) {
    WordSearch search(word, found);
    for (const ZMTFBlock& block : catalog.Items()) {
        search.LookThrough(block);
    }
}

}  // namespace tarvex::review
