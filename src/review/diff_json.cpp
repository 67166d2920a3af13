#include <algorithm>

#include "review/diff_report.h"
#include "review/fault_json.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

Json PlaceJson(const Place& place) {
    return {{"name", place.name}, {"number", place.number}};
}

Json ChangeJson(const Change& change) {
    Json json;
    json["change"] = KindName(change.kind);
    json["object"] = ObjectName(change.object);
    json["aspect"] = AspectName(change.aspect);
    json["effect"] = EffectName(change.effect);
    json["block"] = PlaceJson(change.block);
    json["function"] = change.function ? PlaceJson(*change.function) : Json(nullptr);
    json["operations"] = change.operations;
    json["parameter"] = OrNull(change.path);
    json["item"] = OrNull(change.item);
    json["before"] = OrNull(change.before);
    json["after"] = OrNull(change.after);
    json["lost_by"] = change.lostBy == 0 ? Json(nullptr) : Json(change.lostBy);
    json["also_in"] = change.alsoIn;
    return json;
}

Json SummaryJson(const std::vector<Change>& changes) {
    Json json;
    json["changes"] = changes.size();
    for (const ChangeKind kind : {ChangeKind::Added, ChangeKind::Removed, ChangeKind::Renamed,
                                  ChangeKind::Moved, ChangeKind::Changed}) {
        json[std::string(KindName(kind))] = std::ranges::count(changes, kind, &Change::kind);
    }
    json["bytes"] = std::ranges::count(changes, Effect::Bytes, &Change::effect);
    json["meaning"] = std::ranges::count(changes, Effect::Meaning, &Change::effect);
    return json;
}

}  // namespace

void PrintDiffJson(const DiffReport& report, const Print& print) {
    print("{\"before\": " + DumpJson(report.before) + ", \"after\": " + DumpJson(report.after) +
          ",\n\"changes\": [");
    const char* separator = "\n";
    for (const Change& change : report.changes) {
        print(separator + DumpJson(ChangeJson(change)));
        separator = ",\n";
    }
    print("],\n\"summary\": " + DumpJson(SummaryJson(report.changes)) + "}\n");
}

}  // namespace tarvex::review
