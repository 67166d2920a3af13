#include "review/fault_json.h"

#include "review/explanation_words.h"

namespace tarvex::review {
namespace {

using Json = nlohmann::ordered_json;

}  // namespace

Json FaultJson(const CatalogReading& reading, const Fault& fault) {
    Json json;
    json["file"] = reading.FileOf(fault);
    json["line"] = fault.line == 0 ? Json(nullptr) : Json(fault.line);
    json["column"] = fault.line == 0 ? Json(nullptr) : Json(fault.column);
    json["kind"] = KindName(fault.kind);
    json["source"] = fault.isOfParser ? "parser" : "importer";
    json["number"] = fault.number == 0 ? Json(nullptr) : Json(fault.number);
    json["text"] = fault.text;
    json["element"] = OrNull(fault.element);
    json["path"] = OrNull(fault.path);
    return json;
}

Json OrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

std::string DumpJson(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tarvex::review
