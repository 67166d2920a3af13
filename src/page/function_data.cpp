#include "page/function_data.h"

#include <optional>
#include <vector>

#include "drawing/drawing.h"
#include "drawing/layout.h"
#include "import/text/files.h"
#include "kestrel/model_text.h"
#include "review/explanation_words.h"
#include "review/fault_places.h"
#include "review/fault_text.h"

namespace tarvex::page {
namespace {

using review::FunctionView;
using review::OperationView;

/// A signal is so many values, one behind the other: letters, name, start bit, length, flags, multiplexor's
/// value, factor, unit, minimum, maximum, and the runs of its bits.
void AddSignal(const vorn::DrawnSignal& drawn, JsonText& json) {
    const kestrel::Signal& signal = *drawn.signal;
    json.BeginArray().Text(drawn.letters).Text(kestrel::NameText(signal.name));
    json.Number(signal.start_bit).Number(signal.length).Number(signal.flags);
    json.Number(signal.multiplexer_value);
    if (signal.scaling == nullptr) {
        json.Null().Null().Null().Null();
    } else {
        const auto orNull = [&](const std::optional<double>& number) {
            return number ? json.Real(*number) : json.Null();
        };
        json.Real(signal.scaling->factor).Text(signal.scaling->unit);
        orNull(signal.scaling->minimum);
        orNull(signal.scaling->maximum);
    }
    json.BeginArray();
    for (const vorn::BitRange& range : vorn::RangesOf(signal)) {
        json.Number(range.begin).Number(range.end);
    }
    json.EndArray().EndArray();
}

void AddEnd(const vorn::OpenEnd& end, JsonText& json) {
    json.Key("end").BeginArray().Number(end.letter == '?' ? 1 : 0).Text(end.remark).EndArray();
}

/// How many bytes there are, the signals, and what ends the known part.
void AddLook(const OperationView& operation, JsonText& json) {
    const kestrel::Message& message = *operation.message;
    json.BeginObject().NumberMember("bytes", message.length).Key("signals").BeginArray();
    for (const vorn::DrawnSignal& signal : vorn::LetterSignals(message)) {
        AddSignal(signal, json);
    }
    json.EndArray();
    if (operation.end) {
        AddEnd(*operation.end, json);
    }
    json.EndObject();
}

void AddOperation(const OperationView& operation, const std::optional<std::size_t>& look, JsonText& json) {
    json.BeginObject().Key("opType").Number(operation.address.opType);
    json.NumberMember("layout", static_cast<unsigned>(operation.layout));
    json.NumberMember("isLost", operation.operation == nullptr ? 1 : 0);
    json.Key("positions").BeginArray();
    for (std::size_t place = 0; place < operation.positions.size(); ++place) {
        const unsigned position = operation.positions[place];
        position == 0 ? json.Null() : json.Number(operation.positionsInCatalog[place].value_or(position));
    }
    json.EndArray();
    if (look) {
        const std::uint32_t identifier = operation.message->identifier;
        json.Key("message").Text(kestrel::NameText(operation.message->name));
        json.Key("identifier").Number(identifier & ~kExtendedIdentifier);
        json.NumberMember("isStandard", (identifier & kExtendedIdentifier) == 0 ? 1 : 0);
        json.Key("look").Number(*look);
    } else if (operation.end) {
        AddEnd(*operation.end, json);
    }
    json.EndObject();
}

void AddOperations(const FunctionPart& part, JsonText& json) {
    const std::vector<OperationView>& operations = part.view.operations;
    json.Key("operations").BeginArray();
    for (std::size_t place = 0; place < operations.size(); ++place) {
        AddOperation(operations[place], part.looks.numbers[place], json);
    }
    json.EndArray().Key("looks").BeginArray();
    for (const OperationView* operation : part.looks.all) {
        AddLook(*operation, json);
    }
    json.EndArray();
}

void AddPlace(const review::FaultPlace& place, JsonText& json) {
    if (place.parameter) {
        json.Key("param").Number(*place.parameter);
    } else if (place.opType) {
        json.Key("opType").Number(*place.opType);
    }
}

void AddFaultMembers(const review::CatalogReading& reading, const Fault& fault, JsonText& json) {
    json.Key("kind").Text(review::KindName(fault.kind));
    json.NumberMember("number", fault.number);
    json.Key("text").Text(review::FaultText(fault));
    json.NumberMember("line", fault.line).NumberMember("column", fault.column);
    json.TextMember("path", review::PathBelowCatalog(fault.path));
    if (!fault.file.empty() && reading.FileOf(fault) != reading.ShownPath()) {
        json.Key("file").Text(FileName(fault.file));
    }
}

}  // namespace

void AddFault(const review::CatalogReading& reading, const Fault& fault, JsonText& json) {
    json.BeginObject();
    AddFaultMembers(reading, fault, json);
    json.EndObject();
}

std::string FunctionData(const review::CatalogReading& reading, const FunctionPart& part,
                         const std::function<std::size_t(const ZMTParam& param)>& numberOf) {
    const FunctionView& view = part.view;
    const review::FunctionTexts& texts = part.texts;
    JsonText json;
    json.BeginObject().TextMember("section", texts.section).TextMember("description", texts.description);
    json.Key("params").BeginArray();
    for (const ZMTParam* param : view.parameters) {
        json.Number(numberOf(*param));
    }
    json.EndArray();
    AddOperations(part, json);
    if (!view.faults.empty()) {
        const review::FaultPlaces places(view);
        json.Key("faults").BeginArray();
        for (const Fault* fault : view.faults) {
            json.BeginObject();
            AddFaultMembers(reading, *fault, json);
            AddPlace(places.PlaceOf(*fault), json);
            json.EndObject();
        }
        json.EndArray();
    }
    return json.EndObject().Take();
}

}  // namespace tarvex::page
