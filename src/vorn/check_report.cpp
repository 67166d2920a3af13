#include "vorn/check_report.h"

#include <string_view>

#include "import/text/shown_text.h"
#include "kestrel/json_text.h"
#include "kestrel/records.h"
#include "vorn/json_object.h"

namespace vorn {
namespace {

/// What programs call a cause.
std::string_view NameOf(Cause cause) {
    switch (cause) {
        case Cause::Name:
            return "name_twice";
        case Cause::Identifier:
            return "identifier_twice";
        case Cause::SignalName:
            return "signal_name_twice";
        case Cause::End:
            return "beyond_the_message";
        case Cause::Range:
            return "minimum_above_maximum";
        case Cause::Multiplexor:
            return "no_multiplexor";
        case Cause::Overlap:
            return "overlap";
    }
    return "";
}

/// What is wrong with several, behind their number.
std::string_view SeveralOf(Cause cause) {
    switch (cause) {
        case Cause::Name:
        case Cause::Identifier:
            break;
        case Cause::SignalName:
            return " signals have the name of another";
        case Cause::End:
            return " signals end behind the message";
        case Cause::Range:
            return " signals have a minimum above their maximum";
        case Cause::Multiplexor:
            return " signals are multiplexed, but there is no multiplexor";
        case Cause::Overlap:
            return " pairs of signals overlap";
    }
    return "";
}

std::string SentenceOf(const Fault& fault) {
    if (fault.count == 1 && !fault.isAtLeast) {
        return fault.sentence;
    }
    if (fault.cause == Cause::Name) {
        return "the name occurs " + std::to_string(fault.count + 1) + " times";
    }
    std::string text = (fault.isAtLeast ? "at least " : "") + std::to_string(fault.count);
    text.append(SeveralOf(fault.cause)).append(": ");
    for (const std::string& example : fault.examples) {
        text.append(&example == &fault.examples.front() ? "" : ", ").append(example);
    }
    const std::size_t more = fault.count - fault.examples.size();
    return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

}  // namespace

std::string FaultsText(const std::vector<Fault>& faults) {
    std::string text;
    for (const Fault& fault : faults) {
        text += tarvex::Shown(fault.object + " " + fault.name + ": " + SentenceOf(fault)) + "\n";
    }
    return text;
}

std::string FaultsJson(const std::vector<Fault>& faults) {
    std::string json = "[";
    for (const Fault& fault : faults) {
        json += &fault == &faults.front() ? "\n  {" : ",\n  {";
        AppendMember(json, "cause", NameOf(fault.cause));
        AppendMember(json, "object", fault.object);
        if (fault.identifier) {
            AppendNumber(json, "identifier", *fault.identifier & ~kExtendedIdentifier);
            AppendFlag(json, "extended", (*fault.identifier & kExtendedIdentifier) != 0);
        }
        AppendMember(json, "name", fault.name);
        AppendKey(json, "count");
        json += std::to_string(fault.count);
        AppendFlag(json, "is_at_least", fault.isAtLeast);
        AppendKey(json, "examples");
        json += "[";
        for (const std::string& example : fault.examples) {
            json += &example == &fault.examples.front() ? "" : ", ";
            kestrel::AppendQuoted(json, example);
        }
        json += "]}";
    }
    return json + (faults.empty() ? "]\n" : "\n]\n");
}

}  // namespace vorn
