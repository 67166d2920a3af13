#include "review/search.h"

#include <algorithm>
#include <set>
#include <vector>

#include "import/text/names.h"
#include "params/enumeration.h"
#include "params/number.h"
#include "review/param_members.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

/// Names in the tree have "_" where the catalog has a blank; those of values keep it.
char Folded(char c) {
    return c == ' ' ? '_' : FoldCase(c);
}

std::string FoldedText(std::string_view text) {
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), Folded);
    return folded;
}

class WordSearch {
  public:
    WordSearch(std::string_view word, const std::function<void(const FoundPlace& place)>& found)
        : inNames_(FoldedText(SanitizeName(TrimBlanks(word)))),
          inUnits_(FoldedText(TrimBlanks(word))),
          found_(found) {}

    void LookThrough(const ZMTFBlock& block) {
        target_ = {&block};
        if (IsIn(block.GetName())) {
            Found("block");
        }
        for (const ZMTFunction& function : block.Items()) {
            target_.function = &function;
            if (IsIn(function.GetName())) {
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
    bool IsIn(std::string_view name) const { return IsIn(name, inNames_); }

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
        if (isNamed && IsIn(param.GetName())) {
            Found(std::string(param.IsType(kParamStreamSignal) ? "signal " : "parameter ") + Path());
        }
        if (param.IsType(kParamNumber)) {
            const std::string unit = UnitText(static_cast<const ZMTParamNumber&>(param));
            if (IsIn(unit, inUnits_)) {
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
        for (const ZMTEnumValue& value : enumeration.Items()) {
            if (IsIn(value.GetName())) {
                Found("value " + CodesText(value) + " " + value.GetName() + " of " + Path());
            }
        }
    }

    void LookAtBit(const ZMTParamBoolField& bit) const {
        if (!IsIn(bit.GetName()) && !IsIn(bit.TrueDesc()) && !IsIn(bit.FalseDesc())) {
            return;
        }
        const std::string name = bit.GetName().empty() ? std::string() : bit.GetName() + ": ";
        Found("bit " + std::to_string(bit.BitPos()) + " of " + Path() + ", " + name + BitText(bit));
    }

    /// "Data.Trim"
    std::string Path() const {
        std::string path;
        for (const ZMTParam* param : path_) {
            if (!param->IsType(kParamStreamCase)) {
                path.append(path.empty() ? "" : ".").append(param->GetName());
            }
        }
        return path;
    }

    std::string inNames_;
    std::string inUnits_;
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
