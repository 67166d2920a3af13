#include <nlohmann/json.hpp>

#include "review/explain.h"
#include "review/explanation_words.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

Json AsJson(const Explanation& explanation) {
    Json json;
    const Message& message = *explanation.message;
    json["number"] = message.number == 0 ? Json(nullptr) : Json(message.number);
    json["kind"] = KindName(message.kind);
    json["text"] = message.text;
    json["when"] = explanation.when;
    json["becomes"] = explanation.becomes;
    json["loses"] = LossName(explanation.loss);
    json["layout_incomplete"] = explanation.isIncomplete;
    json["newer_forms"] = explanation.isNewer ? "only" : explanation.newer;
    json["repair"] = explanation.repair;
    if (explanation.excerpt.empty()) {
        json["no_excerpt"] = explanation.noExcerpt;
        return json;
    }
    json["place"] = FrameText(explanation.frame);
    json["excerpt"] = explanation.excerpt;
    json["behind"] = Listed(explanation.behind);
    json["followed_by"] = Listed(explanation.followers);
    return json;
}

}  // namespace

std::string ExplanationJson(const Explanations& explanations) {
    constexpr int kIndent = 2;
    Json list = Json::array();
    for (const Explanation* explanation : explanations) {
        list.push_back(AsJson(*explanation));
    }
    return list.dump(kIndent) + "\n";
}

}  // namespace tarvex::review
