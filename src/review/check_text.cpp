#include <algorithm>
#include <map>

#include "import/text/shown_text.h"
#include "review/check.h"
#include "review/counted.h"
#include "review/explain.h"
#include "review/explanation_words.h"
#include "review/fault_text.h"

namespace tarvex::review {
namespace {

std::size_t CountOf(const std::vector<const Fault*>& faults, Kind kind) {
    return static_cast<std::size_t>(std::ranges::count(faults, kind, &Fault::kind));
}

/// "1 fatal error, 3 errors, 2 warnings"; "no faults"
std::string Totals(const CheckedCatalog& catalog) {
    std::string text;
    for (const Kind kind : {Kind::Fatal, Kind::Error, Kind::Warning}) {
        if (const std::size_t count = CountOf(catalog.faults, kind); count > 0) {
            text += (text.empty() ? "" : ", ") + Counted(count, std::string(KindName(kind)));
        }
    }
    if (catalog.known > 0) {
        text = (text.empty() ? "nothing" : text) + " new, " + std::to_string(catalog.known) + " known";
    }
    return text.empty() ? "no faults" : text;
}

std::string LossText(const Verdicts& verdicts) {
    std::string text;
    const auto add = [&](std::size_t count, const std::string& what) {
        if (count > 0) {
            text += (text.empty() ? "" : ", ") + Counted(count, what);
        }
    };
    add(verdicts.lostBlocks, "block");
    add(verdicts.lostFunctions, "function");
    add(verdicts.lostMessages, "message");
    return text.empty() ? "nothing lost" : text + " lost";
}

class CheckText : public CheckReport {
  public:
    CheckText(Print print, const vorn::Style& style) : CheckReport(std::move(print)), style_(style) {}

    void Catalog(const CheckedCatalog& catalog) override {
        for (const Fault* fault : catalog.faults) {
            Write(FaultLine(catalog.reading, *fault, style_) + "\n");
        }
        Write(CostText(catalog));
    }

  private:
    vorn::Style style_;
};

class CheckGroups : public CheckReport {
  public:
    CheckGroups(Print print, const vorn::Style& style) : CheckReport(std::move(print)), style_(style) {}

    void Catalog(const CheckedCatalog& catalog) override {
        std::map<std::pair<unsigned, Kind>, std::vector<const Fault*>> groups;
        for (const Fault* fault : catalog.faults) {
            groups[{fault->number, fault->kind}].push_back(fault);
        }
        for (const auto& [key, faults] : groups) {
            Write(GroupText(catalog.reading, faults) + "\n");
        }
        Write(CostText(catalog));
    }

  private:
    /// The first faults of a group are told with their places.
    static constexpr std::size_t kPlaces = 3;

    std::string GroupText(const CatalogReading& reading, const std::vector<const Fault*>& faults) const {
        const Fault& first = *faults.front();
        std::string head(KindName(first.kind));
        head += first.isOfParser ? " of the parser" : "";
        head += first.number == 0 ? "" : " " + std::to_string(first.number);
        std::string text = style_(ColourOf(first.kind), head) + ", " + Counted(faults.size(), "time") + ":\n";
        for (std::size_t i = 0; i < std::min(faults.size(), kPlaces); ++i) {
            text += "  " + FaultLine(reading, *faults[i], style_) + "\n";
        }
        if (faults.size() > kPlaces) {
            text += "  and " + std::to_string(faults.size() - kPlaces) + " more\n";
        }
        const Explanations explanations = FindExplanations(std::to_string(first.number));
        if (first.number != 0 && !explanations.empty()) {
            text += "  Cause: " + PlainText(explanations.front()->when) + "\n";
            text += "  Cure: " + PlainText(explanations.front()->repair) + "\n";
        }
        return text;
    }

    vorn::Style style_;
};

}  // namespace

std::string CostText(const CheckedCatalog& catalog) {
    const std::string name = Shown(catalog.reading.ShownPath()) + ": ";
    std::string text = name + Totals(catalog) + "\n";
    if (catalog.reading.AreFaultsCut()) {
        text += name + "there are more faults than are told\n";
    }
    if (catalog.reading.Catalog() == nullptr) {
        return text + name + "could not be imported\n";
    }
    const Verdicts& verdicts = catalog.verdicts;
    return text + name + LossText(verdicts) + "; " + std::to_string(verdicts.incomplete.size()) + " of " +
           Counted(verdicts.messages, "message") + " incomplete\n";
}

std::unique_ptr<CheckReport> MakeCheckText(Print print, const vorn::Style& style) {
    return std::make_unique<CheckText>(std::move(print), style);
}

std::unique_ptr<CheckReport> MakeCheckGroups(Print print, const vorn::Style& style) {
    return std::make_unique<CheckGroups>(std::move(print), style);
}

}  // namespace tarvex::review
