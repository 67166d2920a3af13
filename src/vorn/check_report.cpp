#include "vorn/check_report.h"

#include <string_view>

#include "import/text/shown_text.h"
#include "kestrel/json_text.h"
#include "kestrel/keyed_hash.h"
#include "kestrel/records.h"
#include "vorn/describe.h"
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

/// The examples, of `count` that there are.
std::string ExamplesText(const Fault& fault, std::size_t count) {
    std::string text;
    for (const std::string& example : fault.examples) {
        text.append(text.empty() ? ": " : ", ").append(example);
    }
    const std::size_t more = count - fault.examples.size();
    return fault.examples.empty() || more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

std::string SentenceOf(const Fault& fault) {
    if (fault.cause == Cause::Name) {
        const std::size_t count = fault.count + 1;
        return "the name occurs " + (count == 2 ? "twice" : std::to_string(count) + " times") +
               ExamplesText(fault, count);
    }
    if (fault.count == 1 && !fault.isAtLeast) {
        return fault.sentence;
    }
    return (fault.isAtLeast ? "at least " : "") + std::to_string(fault.count) +
           std::string(SeveralOf(fault.cause)) + ExamplesText(fault, fault.count);
}

/// The names that several messages have.
kestrel::KeyedSet<std::string> RepeatedNames(const std::vector<Fault>& faults) {
    kestrel::KeyedSet<std::string> names;
    for (const Fault& fault : faults) {
        if (fault.cause == Cause::Name && fault.identifier) {
            names.insert(fault.name);
        }
    }
    return names;
}

/// The node or message, with its identifier where the name alone does not tell which.
std::string ObjectOf(const Fault& fault, const kestrel::KeyedSet<std::string>& repeated) {
    std::string text = fault.object + " " + fault.name;
    if (fault.identifier && fault.cause != Cause::Name && repeated.contains(fault.name)) {
        text += " (" + IdentifierText(*fault.identifier) + ")";
    }
    return text;
}

}  // namespace

std::string FaultsText(const std::vector<Fault>& faults) {
    const kestrel::KeyedSet<std::string> repeated = RepeatedNames(faults);
    std::string text;
    for (const Fault& fault : faults) {
        text += tarvex::Shown(ObjectOf(fault, repeated) + ": " + SentenceOf(fault)) + "\n";
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
