#include <utility>

#include <nlohmann/json.hpp>

#include "kestrel/model_text.h"
#include "review/fault_json.h"
#include "review/param_json.h"
#include "review/show.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

Json VersionJson(const Version& version) {
    return {{"release", OrNull(version.release)}, {"date", OrNull(version.date)}};
}

std::string_view LayoutName(Layout layout) {
    switch (layout) {
        case Layout::Complete:
            return "Complete";
        case Layout::Open:
            return "Open";
        case Layout::Incomplete:
            break;
    }
    return "Incomplete";
}

/// The ends of addresses are left out where they say nothing.
Json TargetJson(const Target& target) {
    Json json{{"fblock_id", target.block->FBlockID()}, {"fblock", target.block->GetName()}};
    if (target.function != nullptr) {
        json["function_id"] = target.function->FunctionID();
        json["function"] = target.function->GetName();
    }
    if (target.opType) {
        json["op_type"] = *target.opType;
        json["operation"] = OperationName(target.function->Class(), *target.opType);
    }
    return json;
}

Json SignalsJson(const kestrel::Message& message) {
    Json signals = Json::array();
    for (const kestrel::Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
        Json& json = signals.emplace_back();
        json["name"] = kestrel::NameText(signal->name);
        json["start_bit"] = signal->start_bit;
        json["length"] = signal->length;
        json["byte_order"] = kestrel::ByteOrderName(*signal);
        json["is_multiplexor"] = (signal->flags & kSignalMultiplexor) != 0;
        json["multiplexer_value"] =
            (signal->flags & kSignalMultiplexed) != 0 ? Json(signal->multiplexer_value) : Json(nullptr);
    }
    return signals;
}

Json MessageJson(const kestrel::Message* message) {
    if (message == nullptr) {
        return nullptr;
    }
    return {{"name", kestrel::NameText(message->name)},
            {"identifier", message->identifier & ~kExtendedIdentifier},
            {"signals", SignalsJson(*message)}};
}

Json OperationJson(const OperationView& operation) {
    Json json{{"op_type", operation.address.opType},
              {"name", operation.name},
              {"address", AddressText(operation.address)},
              {"is_lost", operation.operation == nullptr},
              {"layout", LayoutName(operation.layout)},
              {"known_bytes", operation.KnownBytes()},
              {"end", nullptr}};
    if (operation.end) {
        json["end"] = {{"is_hole", operation.end->letter == '?'}, {"why", operation.end->remark}};
    }
    Json parameters = Json::array();
    for (std::size_t place = 0; place < operation.positions.size(); ++place) {
        if (operation.positions[place] != 0) {
            const std::optional<unsigned> inCatalog = operation.positionsInCatalog[place];
            parameters.push_back({{"parameter", place},
                                  {"position", operation.positions[place]},
                                  {"catalog_position", inCatalog ? Json(*inCatalog) : Json(nullptr)}});
        }
    }
    json["parameters"] = std::move(parameters);
    json["message"] = MessageJson(operation.message);
    return json;
}

Json FunctionJson(const CatalogReading& reading, const FunctionView& view) {
    const ZMTFunction& function = *view.target.function;
    const FunctionTexts texts = CatalogTexts::Of(function);
    Json json = TargetJson({view.target.block, &function});
    json["catalog_name"] = OrNull(texts.name);
    json["kind"] = ClassName(function.Class());
    json["class"] = OrNull(texts.functionClass);
    json["section"] = OrNull(texts.section);
    json["description"] = OrNull(texts.description);
    json["parameters"] = Json::array();
    for (const ZMTParam* param : view.parameters) {
        json["parameters"].push_back(ParamJson(*param));
    }
    json["operations"] = Json::array();
    for (const OperationView& operation : view.operations) {
        json["operations"].push_back(OperationJson(operation));
    }
    json["faults"] = Json::array();
    for (const Fault* fault : view.faults) {
        json["faults"].push_back(FaultJson(reading, *fault));
    }
    return json;
}

class ShowJson : public ShowReport {
  public:
    explicit ShowJson(const CatalogReading& reading) : reading_(reading), texts_(reading) {}

    std::string Of(const CatalogView& catalog) override {
        Json json = Head();
        json["other_faults"] = catalog.otherFaults;
        json["blocks"] = Json::array();
        for (const BlockView& view : catalog.blocks) {
            json["blocks"].push_back(BlockJson(view));
        }
        return DumpJson(json) + "\n";
    }

    std::string Of(const std::vector<Answer>& answers) override {
        Json json = Head();
        json["answers"] = Json::array();
        for (const Answer& answer : answers) {
            json["answers"].push_back(AnswerJson(answer));
        }
        return DumpJson(json) + "\n";
    }

  private:
    Json Head() const {
        return {{"file", reading_.ShownPath()}, {"version", VersionJson(texts_.CatalogVersion())}};
    }

    /// With the number of its functions alone.
    Json BlockJson(const BlockView& view) const {
        const BlockTexts texts = texts_.Of(*view.block);
        Json json = TargetJson({view.block});
        json["kind"] = OrNull(texts.kind);
        json["version"] = VersionJson(texts.version);
        json["description"] = OrNull(texts.description);
        json["function_count"] = view.block->Count();
        json["fault_count"] = view.faults;
        return json;
    }

    Json AnswerJson(const Answer& answer) const {
        Json json{{"what", answer.what}};
        json["blocks"] = Json::array();
        for (const BlockView& view : answer.blocks) {
            Json& block = json["blocks"].emplace_back(BlockJson(view));
            block["functions"] = Json::array();
            for (const ZMTFunction& function : view.block->Items()) {
                Json line = TargetJson({view.block, &function});
                line["kind"] = ClassName(function.Class());
                line["class"] = OrNull(CatalogTexts::Of(function).functionClass);
                line["operations"] = Json::array();
                for (const ZMTOperation& operation : function.Items()) {
                    line["operations"].push_back(operation.GetName());
                }
                block["functions"].push_back(std::move(line));
            }
        }
        json["functions"] = Json::array();
        for (const FunctionView& function : answer.functions) {
            json["functions"].push_back(FunctionJson(reading_, function));
        }
        json["places"] = Json::array();
        for (const Target& target : answer.targets) {
            json["places"].push_back(TargetJson(target));
        }
        for (const FoundPlace& place : answer.places) {
            json["places"].push_back(TargetJson(place.target));
            json["places"].back()["what"] = place.what;
        }
        json["why"] = OrNull(answer.lost);
        json["nearest"] = answer.nearest;
        return json;
    }

    const CatalogReading& reading_;
    CatalogTexts texts_;
};

}  // namespace

std::unique_ptr<ShowReport> MakeShowJson(const CatalogReading& reading) {
    return std::make_unique<ShowJson>(reading);
}

}  // namespace tarvex::review
