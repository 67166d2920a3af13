#include <map>

#include "import/text/format_text.h"
#include "review/check.h"
#include "review/explain.h"
#include "review/explanation_words.h"
#include "review/fault_json.h"
#include "review/fault_text.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kBeginning =
    "{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\",\n\"version\": \"2.1.0\",\n\"runs\": "
    "[{\n\"results\": [\n";

/// What the rule of a fault is called. Parser and fatal errors have no number of their own.
std::string RuleOf(const Fault& fault) {
    return fault.isOfParser ? "parser" : fault.number == 0 ? "fatal" : std::to_string(fault.number);
}

Json AsText(std::string_view text) {
    return Json{{"text", text}};
}

/// What is known of a rule beyond its name.
Json RuleJson(const std::string& id) {
    Json rule{{"id", id}};
    const Explanations explanations = FindExplanations(id);
    if (id == "parser") {
        rule["shortDescription"] = AsText("The XML parser holds it against the document.");
    } else if (id == "fatal") {
        rule["shortDescription"] = AsText("The catalog can't be imported.");
    } else if (!explanations.empty()) {
        const Explanation& explanation = *explanations.front();
        rule["shortDescription"] = AsText(PlainText(explanation.when));
        rule["help"] =
            AsText(PlainText(std::string(explanation.becomes) + " " + std::string(explanation.repair)));
    }
    return rule;
}

bool StaysInUri(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '/' ||
           c == '-' || c == '.' || c == '_' || c == '~';
}

/// A path as a reference that a SARIF viewer resolves.
std::string UriOf(const std::string& path) {
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char c : path) {
        uri += StaysInUri(c) ? std::string(1, c) : FormatText("%%%02X", static_cast<unsigned char>(c));
    }
    return uri;
}

class CheckSarif : public CheckReport {
  public:
    CheckSarif(Print print, std::string version)
        : CheckReport(std::move(print)), version_(std::move(version)) {}

    void Catalog(const CheckedCatalog& catalog) override {
        for (const Fault* fault : catalog.faults) {
            BeginResult();
            Write(DumpJson(ResultOf(catalog.reading, *fault)));
        }
    }

    /// The rules stand behind the results, once it is known which there are.
    void End() override {
        Json rules = Json::array();
        for (const std::string& rule : rules_) {
            rules.push_back(RuleJson(rule));
        }
        const Json driver{{"name", "tarvex-catalog"}, {"version", version_}, {"rules", rules}};
        if (!hasBegun_) {
            Write(kBeginning);
        }
        Write("\n],\n\"columnKind\": \"utf16CodeUnits\",\n\"tool\": " + DumpJson(Json{{"driver", driver}}) +
              "}]}\n");
    }

  private:
    void BeginResult() {
        Write(hasBegun_ ? ",\n" : kBeginning);
        hasBegun_ = true;
    }

    Json ResultOf(const CatalogReading& reading, const Fault& fault) {
        const std::string id = RuleOf(fault);
        const auto [rule, isNew] = ruleIndices_.try_emplace(id, rules_.size());
        if (isNew) {
            rules_.push_back(id);
        }
        Json physical{{"artifactLocation", {{"uri", UriOf(reading.FileOf(fault))}}}};
        if (fault.line > 0) {
            physical["region"] = {{"startLine", fault.line}};
            if (fault.column > 0) {
                physical["region"]["startColumn"] = fault.column;
            }
        }
        Json location{{"physicalLocation", physical}};
        if (!fault.path.empty()) {
            location["logicalLocations"] = Json::array({{{"fullyQualifiedName", fault.path}}});
        }
        return {{"ruleId", id},
                {"ruleIndex", rule->second},
                {"level", fault.kind == Kind::Warning ? "warning" : "error"},
                {"message", AsText(FaultText(fault))},
                {"locations", Json::array({location})}};
    }

    bool hasBegun_ = false;
    std::string version_;
    std::map<std::string, std::size_t> ruleIndices_;
    std::vector<std::string> rules_;
};

}  // namespace

std::unique_ptr<CheckReport> MakeCheckSarif(Print print, std::string version) {
    return std::make_unique<CheckSarif>(std::move(print), std::move(version));
}

}  // namespace tarvex::review
