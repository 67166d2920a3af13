#include "page/function_data.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/drawing.h"
#include "drawing/layout.h"
#include "import/text/files.h"
#include "kestrel/model_text.h"
#include "review/explanation_words.h"
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

/// What the bytes of an operation look like: how many there are, the signals, and what ends the known part.
std::string LookOf(const OperationView& operation) {
    const kestrel::Message& message = *operation.message;
    JsonText json;
    json.BeginObject().Key("bytes").Number(message.length).Key("signals").BeginArray();
    for (const vorn::DrawnSignal& signal : vorn::LetterSignals(message)) {
        AddSignal(signal, json);
    }
    json.EndArray();
    if (operation.end) {
        AddEnd(*operation.end, json);
    }
    return json.EndObject().Take();
}

/// The operations of a function. What looks alike is kept once.
class Operations {
  public:
    void Add(const OperationView& operation) {
        json_.BeginObject().Key("opType").Number(operation.address.opType);
        json_.NumberMember("layout", static_cast<unsigned>(operation.layout));
        json_.NumberMember("isLost", operation.operation == nullptr ? 1 : 0);
        json_.Key("positions").BeginArray();
        for (const unsigned position : operation.positions) {
            json_.Number(position);
        }
        json_.EndArray();
        if (operation.message != nullptr) {
            AddMessage(operation);
        } else if (operation.end) {
            AddEnd(*operation.end, json_);
        }
        json_.EndObject();
    }

    void AddTo(JsonText& json) const {
        json.Key("operations").Json("[" + json_.All() + "]").Key("looks").BeginArray();
        for (const std::string& look : looks_) {
            json.Json(look);
        }
        json.EndArray();
    }

  private:
    void AddMessage(const OperationView& operation) {
        const std::uint32_t identifier = operation.message->identifier;
        json_.Key("message").Text(kestrel::NameText(operation.message->name));
        json_.Key("identifier").Number(identifier & ~kExtendedIdentifier);
        json_.NumberMember("isStandard", (identifier & kExtendedIdentifier) == 0 ? 1 : 0);
        std::string look = LookOf(operation);
        const auto found = std::ranges::find(looks_, look);
        json_.Key("look").Number(static_cast<std::size_t>(found - looks_.begin()));
        if (found == looks_.end()) {
            looks_.push_back(std::move(look));
        }
    }

    JsonText json_;
    std::vector<std::string> looks_;
};

/// What of a function a fault is about, by the names in its path.
class FaultPlaces {
  public:
    explicit FaultPlaces(const FunctionView& view)
        : view_(view), path_(view.target.function->GetPath().size()) {}

    void AddPlace(const Fault& fault, JsonText& json) const {
        std::string_view rest = std::string_view(fault.path).substr(std::min(path_ + 1, fault.path.size()));
        std::string_view name = TakeName(rest);
        const auto operation = std::ranges::find(view_.operations, name, &OperationView::name);
        if (operation != view_.operations.end() && !name.empty()) {
            json.Key("opType").Number(operation->address.opType);
            name = TakeName(rest);
        }
        const auto isNamed = [&](const ZMTParam* param) { return param->GetName() == name; };
        const auto param = std::ranges::find_if(view_.parameters, isNamed);
        if (param != view_.parameters.end() && !name.empty()) {
            json.Key("param").Number(static_cast<std::size_t>(param - view_.parameters.begin()));
        }
    }

  private:
    static std::string_view TakeName(std::string_view& path) {
        const std::size_t slash = path.find('/');
        const std::string_view name = path.substr(0, slash);
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
        return name;
    }

    const FunctionView& view_;
    std::size_t path_;
};

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

std::string FunctionData(const review::CatalogReading& reading, const FunctionView& view,
                         const review::FunctionTexts& texts,
                         const std::function<std::size_t(const ZMTParam& param)>& numberOf) {
    JsonText json;
    const std::string& name = view.target.function->GetName();
    json.BeginObject().TextMember("catalogName", texts.name == name ? "" : texts.name);
    json.TextMember("section", texts.section).TextMember("description", texts.description);
    json.Key("params").BeginArray();
    for (const ZMTParam* param : view.parameters) {
        json.Number(numberOf(*param));
    }
    json.EndArray();
    Operations operations;
    for (const OperationView& operation : view.operations) {
        operations.Add(operation);
    }
    operations.AddTo(json);
    if (!view.faults.empty()) {
        const FaultPlaces places(view);
        json.Key("faults").BeginArray();
        for (const Fault* fault : view.faults) {
            json.BeginObject();
            AddFaultMembers(reading, *fault, json);
            places.AddPlace(*fault, json);
            json.EndObject();
        }
        json.EndArray();
    }
    return json.EndObject().Take();
}

}  // namespace tarvex::page
