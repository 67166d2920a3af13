/// The messages as they are declared, against the list of all numbers.

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/log/messages.h"

namespace tarvex::test::message_declarations_test {
namespace {

struct NumberedMessage {
    unsigned number;
    char kind;  // E or W
    const char* text;
};

constexpr NumberedMessage kListed[] = {
    // Type and unit definitions
    {1, 'W', "Can not find element <%s>"},
    {2, 'E', "Missing required attribute %s"},
    {3, 'W', "Can not find element <%s>"},
    {4, 'W', "Can not find element <%s>"},
    {5, 'E', "Missing required attribute %s"},
    {6, 'W', "Can not find element <%s>"},
    {7, 'E', "Failed to import element <%s>"},
    {8, 'E', "Failed to import element <%s>"},
    // Names and positions of parameters
    {9, 'W', "Multiple use of parameter name '%s'"},
    {10, 'W', "Can not find element <%s>"},
    {11, 'E', "Can not find element <%s>"},
    {12, 'E', "Missing required attribute %s"},
    {13, 'E', "Failed to analyze value '%s'"},
    {14, 'E', "Invalid parameter position %d"},
    {15, 'E', "Missing required attribute %s"},
    {16, 'E', "Invalid parameter position %d"},
    // Stream cases
    {17, 'E', "Failed to analyze value '%s'"},
    {18, 'W', "Can not find element <%s>"},
    {19, 'W', "<StreamCase> without <StreamParam> not supported yet"},
    {20, 'E', "Unknown parameter type in <%s>"},
    {21, 'E', "Failed to import element <%s>"},
    {22, 'W', "Double definition of element at position %d"},
    {23, 'E', "Invalid position of parameter '%s'"},
    {24, 'E', "Gap in parameter set before parameter '%s'"},
    {25, 'E', "Can't reconstruct sequence of parameters (check attribute 'ParamIdx' of StreamParams)"},
    {26, 'E', "Can't reconstruct sequence of parameters (check attribute 'ParamIdx' of StreamParams)"},
    {27, 'E', "Only one selector parameter per stream supported yet"},
    // Streams and function-ID bit streams
    {28, 'E', "Can not find element <%s>"},
    {29, 'E', "Missing required attribute %s"},
    {30, 'E', "Missing required attribute %s"},
    {31, 'W', "Can not find element <%s>"},
    {32, 'E', "Failed to import element <%s>"},
    {33, 'W', "Double definition of element at position %d"},
    {35, 'W', "Overlapping streamcase(s)"},
    {36, 'E', "Can not find element <%s>"},
    {37, 'E', "Missing required attribute %s"},
    {38, 'E', "Can not find element <%s>"},
    {39, 'E', "Invalid number of elements in '%s'"},
    // Arrays
    {41, 'E', "Can not find element <%s>"},
    {42, 'E', "Missing required attribute %s"},
    {43, 'W', "Failed to analyze value '%s'. Using 'NMax' instead."},
    {44, 'E', "Missing required attribute %s"},
    {45, 'E', "Unknown parameter type in <%s>"},
    {46, 'E', "Failed to import element <%s>"},
    {47, 'E', "Can't find '%s' parameter to '%s' parameter of record or array"},
    // Records
    {48, 'E', "Can not find element <%s>"},
    {49, 'E', "Missing required attribute %s"},
    {50, 'E', "Missing required attribute %s"},
    {51, 'E', "Can not find element <%s>"},
    {52, 'E', "Unknown parameter type in <%s>"},
    {53, 'E', "Failed to import element <%s>"},
    {54, 'E', "Position %d of '%s' already occupied"},
    {55, 'W', "Number of record fields (%d) does not match value of attribute 'NElements' (%d)"},
    {56, 'E', "Gap in parameter set before parameter '%s'"},
    {57, 'E', "Can't find '%s' parameter to '%s' parameter of record or array"},
    {58, 'W', "Record contains no valid parameter"},
    // Bits
    {59, 'E', "Missing required attribute %s"},
    {60, 'E', "Failed to analyze value '%s'"},
    {61, 'E', "Invalid position of parameter '%s'"},
    {62, 'W', "Can not find element <%s>"},
    {63, 'W', "Can not find element <%s>"},
    {64, 'E', "Invalid position of parameter '%s'"},
    {65, 'E', "Position %d of '%s' already occupied"},
    // Numbers
    {66, 'E', "Can not find element <%s>"},
    {67, 'W', "Can not find element <%s>"},
    {68, 'W', "Can not find element <%s>"},
    {69, 'W', "Can not find element <%s>"},
    {70, 'W', "Can not find element <%s>"},
    {71, 'E', "Can not find element <%s>"},
    {72, 'E', "Can not find element <%s>"},
    {73, 'W', "Size of 'Pos' parameter <> 2 Bytes"},
    {74, 'W', "Exponent of 'Pos' parameter <> 0"},
    // Enumerations
    {75, 'E', "Missing required attribute %s"},
    {76, 'E', "Failed to analyze value '%s'"},
    {77, 'E', "Can not find element <%s>"},
    {78, 'E', "Missing required attribute %s"},
    {79, 'W', "Failed to analyze attribute value '%s'. Using EnumMax=%d instead."},
    {80, 'E', "Missing required attribute %s"},
    {81, 'E', "Failed to import element <%s>"},
    {82, 'W', "Value %d out of range [%d,%d). Using %d instead."},
    {83, 'W', "Enum code out of range (0...EnumMax)"},
    {85, 'W', "Overlapping value(s) of enum codes"},
    // Strings, bit fields, booleans, void
    {86, 'E', "Can not find element <%s>"},
    {87, 'E', "Missing required attribute %s"},
    {88, 'E', "Missing required attribute %s"},
    {88, 'E', "Can not find element <%s>"},
    {89, 'E', "Missing required attribute %s"},
    {90, 'E', "Missing required attribute %s"},
    {91, 'W', "Double definition of element at position %d"},
    {92, 'E', "Failed to import element <%s>"},
    {93, 'W', "Ambiguous length of bitfield (%d bits <-> %d bits). Length will be set to %d bits."},
    {94, 'W', "Invalid length of bitfield (%d)"},
    {95, 'E', "Can not find element <%s>"},
    {96, 'E', "Missing required attribute %s"},
    {97, 'W', "Double definition of element at position %d"},
    {98, 'E', "Failed to import element <%s>"},
    {100, 'E', "Can not find element <%s>"},
    {101, 'E', "Missing required attribute %s"},
    // Operations
    {102, 'W', "Gap in parameter set before parameter '%s'"},
    {103, 'W', "Operation contains no valid parameter"},
    // Functions
    {106, 'E', "Can not find definition of function '%s'"},
    {107, 'E', "Failed to duplicate object"},
    {108, 'E', "Double definition of element with ID 0x%X"},
    {109, 'E', "Double definition of element '%s'"},
    {110, 'E', "Failed to import element <%s>"},
    {111, 'E', "Can not find element <%s>"},
    {112, 'E', "Can not find element <%s>"},
    {113, 'E', "Failed to analyze value '%s'"},
    {114, 'E', "Value '%d' out of range [%d, %d)"},
    {115, 'E', "Double definition of element with ID 0x%X"},
    {116, 'E', "Double definition of element '%s'"},
    {117, 'E', "Can not find element <%s>"},
    {118, 'W', "Import of function class type '%s' not fully supported yet"},
    {119, 'E', "Import of function class type '%s' not fully supported yet"},
    {120, 'E', "Failed to import element <%s>"},
    {122, 'E', "Failed to import operation '%s'"},
    {123, 'E', "Function contains no valid operation"},
    // Assignment of parameters to operations
    {124, 'E', "Can neighter find element <%s> nor <%s>"},
    {126, 'E', "Can not find definition of function '%s'"},
    {127, 'E', "Merge of '%s' failed"},
    {128, 'E', "Unknown parameter type in <%s>"},
    {129, 'E', "Failed to import element <%s>"},
    {130, 'E', "Failed to assign parameter '%s' to operation"},
    {131, 'E', "Failed to analyze value '%s'"},
    {132, 'E', "Invalid parameter position %d"},
    {133, 'E', "Failed to duplicate object"},
    {134, 'E', "Position %d of '%s' already occupied"},
    {135, 'E', "Missing OPType info"},
    {138, 'W',
     "Too many errors while importing parameters. Removing all parameters from the function's operations."},
    // Function blocks and the catalog
    {139, 'E', "Can not find child element <%s>"},
    {140, 'E', "Can not find child element <%s>"},
    {141, 'E', "Failed to analyze value '%s'"},
    {142, 'E', "Value '%d' out of range [%d, %d)"},
    {143, 'E', "Double definition of element with ID 0x%X"},
    {144, 'E', "Double definition of element '%s'"},
    {145, 'E', "Failed to import element <%s>"},
    {146, 'E', "Function block contains no valid function"},
    {148, 'E', "Failed to import element <%s>"},
    {149, 'E', "Failed to import element <%s>"},
    // Found late
    {150, 'E', "No matching sub element found"},
    {151, 'E', "Type definition not found"},
    {152, 'E', "Cannot find unit definition"},

    // Short and classified streams, stream signals
    {201, 'E', "Can not find element <%s>"},
    {202, 'E', "Missing required attribute %s"},
    {203, 'W', "Failed to analyze value '%s'"},
    {204, 'E', "Can not find element <%s>"},
    {205, 'E', "Missing required attribute %s"},
    {206, 'E', "Can not find element <%s>"},
    {207, 'E', "Missing required attribute %s"},
    {208, 'E', "Invalid parameter position %d"},
    {209, 'E', "Can not find element <%s>"},
    {210, 'E', "Failed to analyze value '%s'"},
    {211, 'E', "Value '%d' out of range [%d, %d)"},
    {212, 'E', "Failed to import element <%s>"},
    {213, 'W', "Double definition of element at position %d"},
    {214, 'E', "Gap in parameter set before parameter '%s'"},
    {215, 'E', "<StreamCase> with both <StreamParam> and <StreamSignal>"},
};

/// A message as the list and the declarations have it: "1 warning Can not find element <%s>".
std::string LineOf(unsigned number, std::string_view kind, std::string_view text) {
    return std::to_string(number) + " " + std::string(kind) + " " + std::string(text);
}

/// The numbered messages that are declared.
std::vector<std::string> Declared() {
    std::vector<std::string> lines;
    for (const Message* message : kMessages) {
        if (message->kind != Kind::Fatal) {
            lines.push_back(
                LineOf(message->number, message->kind == Kind::Error ? "error" : "warning", message->text));
        }
    }
    return lines;
}

/// Two numbers that no fault has.
constexpr unsigned kUndeclared[] = {64, 65};

TEST(MessageDeclarations, AreThoseOfTheListButTwo) {
    std::vector<std::string> listed;
    for (const auto& [number, kind, text] : kListed) {
        if (std::ranges::find(kUndeclared, number) == std::end(kUndeclared)) {
            listed.push_back(LineOf(number, kind == 'E' ? "error" : "warning", text));
        }
    }
    EXPECT_THAT(Declared(), testing::UnorderedElementsAreArray(listed));
}

TEST(MessageDeclarations, OnlyNumber88StandsTwice) {
    std::multiset<unsigned> numbers;
    for (const Message* message : kMessages) {
        numbers.insert(message->number);
    }
    for (const unsigned number : numbers) {
        EXPECT_TRUE(number == 0 || numbers.count(number) == (number == 88 ? 2U : 1U)) << number;
    }
}

TEST(MessageDeclarations, FatalErrorsHaveNoNumber) {
    for (const Message* message : kMessages) {
        EXPECT_EQ(message->kind == Kind::Fatal, message->number == 0) << message->text;
    }
}

}  // namespace
}  // namespace tarvex::test::message_declarations_test
