#include "review/check.h"
#include "review/fault_json.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

Json AsJson(const std::vector<Address>& addresses) {
    Json list = Json::array();
    for (const Address& address : addresses) {
        list.push_back(AddressText(address));
    }
    return list;
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
    json["lost_messages"] = verdicts.lostMessages;
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
        Write("{\"file\": " + DumpJson(reading.ShownPath()) + ", \"is_imported\": " +
              DumpJson(reading.Catalog() != nullptr) + ", \"known\": " + DumpJson(catalog.known) +
              ", \"are_more_faults\": " + DumpJson(reading.AreFaultsCut()) + ",\n\"faults\": [");
        const char* separator = "\n";
        for (const Fault* fault : catalog.faults) {
            Write(separator + DumpJson(FaultJson(reading, *fault)));
            separator = ",\n";
        }
        Write("],\n\"verdicts\": " + DumpJson(AsJson(catalog.verdicts)) + "}");
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
