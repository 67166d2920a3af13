/// Parameters of small catalogs, and tables of the signals that they become.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "export/conversion.h"

namespace tarvex::test {

/// Type elements. `basis` is one of "TUByte" to "TSLong".
std::string Number(std::string_view basis);
inline std::string UByte() {
    return Number("TUByte");
}
inline std::string SByte() {
    return Number("TSByte");
}
inline std::string UWord() {
    return Number("TUWord");
}
inline std::string SWord() {
    return Number("TSWord");
}
inline std::string ULong() {
    return Number("TULong");
}
inline std::string SLong() {
    return Number("TSLong");
}
std::string String();
std::string Array();
std::string Void();

struct CodeName {
    std::string code;  ///< A number or a range, as the catalog writes it.
    std::string name;
};
/// One byte while `max` is at most 255.
std::string Enumeration(unsigned max, const std::vector<CodeName>& values);

struct BitOf {
    unsigned pos;
    std::string name;  ///< No name element when empty.
    std::string trueDesc = "True";
    std::string falseDesc = "False";
};
std::string BitField(unsigned length, const std::vector<BitOf>& bits);
std::string Boolean(const std::vector<BitOf>& bits);

/// A parameter or a record's field.
struct NamedType {
    std::string name;
    std::string type;
};
using NamedTypes = std::vector<NamedType>;

std::string Record(const NamedTypes& fields);

/// A property with these parameters, in this order, in its operation of that element.
std::string PropertyOf(std::string_view fktID, std::string_view name, const NamedTypes& params,
                       std::string_view operation = "PReportStatus");

enum class Coding { Unsigned, Signed, Switch, SignedSwitch };
using enum Coding;

/// No value of the multiplexor: the signal is there always.
inline constexpr int kAlways = -1;

using Values = std::vector<std::pair<unsigned, std::string>>;
/// Those of a bit whose texts are not given.
inline const Values kTrueFalse{{1, "True"}, {0, "False"}};

/// What is expected of a signal. Switches are little-endian multiplexors, all others are big-endian.
struct SignalRow {
    std::string name;
    int startBit;
    int length;
    Coding coding = Unsigned;
    int multiplexer = kAlways;
    Values values = {};
};

/// The signals as a database has them.
nlohmann::json SignalsOf(const std::vector<SignalRow>& rows);

/// The parameters of one message, and what becomes of them.
struct LayoutCase {
    const char* what;
    NamedTypes params;
    int length;
    std::vector<SignalRow> signals;
};

/// Converts the parameters as those of "Amp_Volume_Status".
void ExpectLayout(const LayoutCase& row, const std::string& aliasNames = "");

/// Converts a catalog with signals, and gives their names by message, in order.
std::vector<std::vector<std::string>> SignalNamesOf(std::string_view blocks, bool unique);

}  // namespace tarvex::test
