#include <nlohmann/json.hpp>

#include "review/check.h"
#include "review/explain.h"
#include "review/explanation_words.h"
#include "review/fault_text.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

/// Bytes that are no UTF-8 are replaced.
std::string Dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json AsJson(const std::vector<Address>& addresses) {
    Json list = Json::array();
    for (const Address& address : addresses) {
        list.push_back(AddressText(address));
    }
    return list;
}

Json AsJson(const CatalogReading& reading, const Fault& fault) {
    Json json;
    json["file"] = reading.FileOf(fault);
    json["line"] = fault.line == 0 ? Json(nullptr) : Json(fault.line);
    json["column"] = fault.line == 0 ? Json(nullptr) : Json(fault.column);
    json["kind"] = KindName(fault.kind);
    json["source"] = fault.isOfParser ? "parser" : "importer";
    json["number"] = fault.number == 0 ? Json(nullptr) : Json(fault.number);
    json["text"] = fault.text;
    json["element"] = fault.element.empty() ? Json(nullptr) : Json(fault.element);
    json["path"] = fault.path.empty() ? Json(nullptr) : Json(fault.path);
    return json;
}

Json AsJson(const Verdicts& verdicts) {
    Json json;
    json["blocks"] = verdicts.blocks;
    json["functions"] = verdicts.functions;
    json["messages"] = verdicts.messages;
    json["complete"] = verdicts.complete;
    json["open"] = verdicts.open;
    json["incomplete"] = AsJson(verdicts.incomplete);
    json["lost_blocks"] = verdicts.lostBlocks;
    json["lost_functions"] = verdicts.lostFunctions;
    json["lost_messages"] = AsJson(verdicts.lostMessages);
    return json;
}

/// One object, with a line for each fault.
class CheckJson : public CheckReport {
  public:
    using CheckReport::CheckReport;

    void Catalog(const CheckedCatalog& catalog) override {
        const CatalogReading& reading = catalog.reading;
        Write(isFirst_ ? "{\"catalogs\": [\n" : ",\n");
        isFirst_ = false;
        Write("{\"file\": " + Dump(reading.ShownPath()) + ", \"is_imported\": " +
              Dump(reading.Catalog() != nullptr) + ", \"known\": " + Dump(catalog.known) +
              ", \"are_more_faults\": " + Dump(reading.AreFaultsCut()) + ",\n\"faults\": [");
        const char* separator = "\n";
        for (const Fault* fault : catalog.faults) {
            Write(separator + Dump(AsJson(reading, *fault)));
            separator = ",\n";
        }
        Write("],\n\"verdicts\": " + Dump(AsJson(catalog.verdicts)) + "}");
    }
    void End() override { Write(isFirst_ ? "{\"catalogs\": []}\n" : "\n]}\n"); }

  private:
    bool isFirst_ = true;
};

}  // namespace

std::unique_ptr<CheckReport> MakeCheckJson(Print print) {
    return std::make_unique<CheckJson>(std::move(print));
}

}  // namespace tarvex::review
