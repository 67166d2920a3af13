#include "review/show.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string_view>

#include "import/text/shown_text.h"

namespace tarvex::review {
namespace {

std::vector<Target> TargetsOf(const ZMTCatalog& catalog, const std::string& word) {
    if (const auto target = FindByAddress(catalog, word)) {
        return {*target};
    }
    return FindByName(catalog, word);
}

}  // namespace

CatalogView ViewOf(const CatalogReading& reading) {
    CatalogView view;
    std::map<std::string, std::size_t, std::less<>> places;  // by path
    for (const ZMTFBlock& block : reading.Catalog()->Items()) {
        places.emplace(block.GetPath(), view.blocks.size());
        view.blocks.push_back({&block});
    }
    const std::size_t name = reading.Catalog()->GetPath().size();
    for (const Fault& fault : reading.Faults()) {
        const std::size_t end = fault.path.find('/', std::min(name + 1, fault.path.size()));
        const auto found = places.find(std::string_view(fault.path).substr(0, end));
        ++(found == places.end() ? view.otherFaults : view.blocks[found->second].faults);
    }
    return view;
}

Shower::Shower(const CatalogReading& reading)
    : reading_(reading), faults_(reading), messages_(reading.Catalog(), "", "", "", {}, {}, PreviewFlags()) {}

std::vector<Answer> Shower::AnswersTo(const std::vector<std::string>& words) {
    std::vector<Answer> answers;
    std::set<const ZMTNode*> functions;
    std::ranges::transform(words, std::back_inserter(answers),
                           [&](const std::string& word) { return Find(word); });
    for (const Answer& answer : answers) {
        for (const FunctionView& function : answer.functions) {
            functions.insert(function.target.function);
        }
    }
    if (functions.empty()) {
        return answers;
    }
    // The names of messages depend on all that come before them.
    messages_.Preview([&](const ZMTOperation& operation) {
        const ZMTNode* function = operation.GetParent();
        return function == nullptr || functions.contains(function);  // null: one that is lost
    });
    for (Answer& answer : answers) {
        for (FunctionView& function : answer.functions) {
            function = ViewOf(faults_, function.target, messages_);
        }
    }
    return answers;
}

/// Functions have their targets alone.
Answer Shower::Find(const std::string& word) const {
    const ZMTCatalog& catalog = *reading_.Catalog();
    Answer answer;
    answer.what = word;
    std::vector<Target> targets = TargetsOf(catalog, word);
    if (targets.size() > 1) {
        answer.targets = std::move(targets);
    } else if (targets.size() == 1 && targets.front().function != nullptr) {
        answer.functions.emplace_back().target = targets.front();
    } else if (targets.size() == 1) {
        const CatalogView view = ViewOf(reading_);
        answer.blocks = {*std::ranges::find(view.blocks, targets.front().block, &BlockView::block)};
    } else {
        Search(catalog, word, [&](const FoundPlace& place) { answer.places.push_back(place); });
    }
    if (!answer.IsFound()) {
        answer.lost = WhyLost(catalog, word);
        answer.nearest = NearestTo(catalog, word);
    }
    return answer;
}

std::string NotFoundText(const CatalogReading& reading, const Answer& answer) {
    std::string text = "nothing in " + Shown(reading.ShownPath()) + " is '" + ShownName(answer.what) + "'";
    if (!answer.lost.empty()) {
        return text + ": " + answer.lost;
    }
    for (std::size_t place = 0; place < answer.nearest.size(); ++place) {
        text += place == 0 ? "; the nearest names: " : ", ";
        text += ShownName(answer.nearest[place]);
    }
    return text;
}

}  // namespace tarvex::review
