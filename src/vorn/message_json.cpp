#include "vorn/message_json.h"

#include "kestrel/model_text.h"
#include "kestrel/most_columns.h"
#include "vorn/json_object.h"

namespace vorn {
namespace {

using kestrel::MostColumn;

void AppendMessage(std::string& json, const kestrel::Message& message, kestrel::MostColumns& columns) {
    json += "{";
    AppendMember(json, "address", kestrel::AddressText(message.identifier));
    AppendMember(json, "fblock", columns.Of(message, MostColumn::FBlock));
    AppendMember(json, "function", columns.Of(message, MostColumn::Function));
    AppendMember(json, "optype", columns.Of(message, MostColumn::OpType));
    AppendNumber(json, "identifier", message.identifier & ~kExtendedIdentifier);
    AppendFlag(json, "extended", (message.identifier & kExtendedIdentifier) != 0);
    AppendMember(json, "name", kestrel::NameText(message.name));
    AppendNumber(json, "length", message.length);
    if (message.node == nullptr) {
        AppendKey(json, "node");
        json += "null";
    } else {
        AppendMember(json, "node", kestrel::NameText(message.node->name));
    }
    AppendNumber(json, "signals", message.signalCount);
    json += "}";
}

}  // namespace

std::string MessagesJson(const kestrel::Database& database,
                         const std::vector<const kestrel::Message*>& messages) {
    kestrel::MostColumns columns(database);
    std::string json = "[";
    for (const kestrel::Message* message : messages) {
        json += message == messages.front() ? "\n  " : ",\n  ";
        AppendMessage(json, *message, columns);
    }
    return json + (messages.empty() ? "]\n" : "\n]\n");
}

}  // namespace vorn
