/// The string table: every text of the log and of the console by its number.

#include "import/log/texts.h"

#include <cstring>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

namespace tarvex::test::texts_test {
namespace {

struct ExpectedText {
    unsigned number;
    const char* text;
};

constexpr ExpectedText kExpected[] = {
    // Faults of catalogs
    {18151, "Not enough memory"},
    {18152, "Function catalog contains no valid function block"},
    {18153, "Function block contains no valid function"},
    {18154, "Can not find child element <%s>"},
    {18155, "Can not find element <%s>"},
    {18156, "Double definition of element with ID 0x%X"},
    {18157, "Double definition of element '%s'"},
    {18158, "Can not find definition of function '%s'"},
    {18159, "Failed to import element <%s>"},
    {18160, "Can neighter find element <%s> nor <%s>"},
    {18161, "No matching sub element found"},
    {18162, "Failed to assign parameter '%s' to operation"},
    {18163, "Unknown parameter type in <%s>"},
    {18164, "Failed to duplicate object"},
    {18165, "Position %d of '%s' already occupied"},
    {18166, "Missing required attribute %s"},
    {18169, "Number of record fields (%d) does not match value of attribute 'NElements' (%d)"},
    {18170, "Double definition of element at position %d"},
    {18172, "Overlapping value(s) of enum codes"},
    {18173, "Failed to analyze value '%s'"},
    {18174, "Value '%d' out of range [%d, %d)"},
    {18176, "Only one selector parameter per stream supported yet"},
    {18177, "Can't find '%s' parameter to '%s' parameter of record or array"},
    {18178, "Invalid position of parameter '%s'"},
    {18179, "Failed to import operation '%s'"},
    {18180, "Function contains no valid operation"},
    {18181, "Operation contains no valid parameter"},
    {18182, "Gap in parameter set before parameter '%s'"},
    {18183, "Record contains no valid parameter"},
    {18184, "Merge of '%s' failed"},
    {18186, "Can't reconstruct sequence of parameters (check attribute 'ParamIdx' of StreamParams)"},
    {18187, "Enum code out of range (0...EnumMax)"},
    {18188, "Overlapping streamcase(s)"},
    {18190, "Missing OPType info"},
    {18191, "Invalid parameter position %d"},
    {18192, "Invalid length of bitfield (%d)"},
    {18193, "Multiple use of parameter name '%s'"},
    {18217, "Invalid number of elements in '%s'"},
    {19025, "Failed to analyze value '%s'. Using 'NMax' instead."},
    {19026, "Type definition not found"},
    {19027, "Cannot find unit definition"},
    {19028, "Size of 'Pos' parameter <> 2 Bytes"},
    {19029, "Exponent of 'Pos' parameter <> 0"},
    {19030, "Failed to analyze attribute value '%s'. Using EnumMax=%d instead."},
    {19031, "Value %d out of range [%d,%d). Using %d instead."},
    {19032, "Ambiguous length of bitfield (%d bits <-> %d bits). Length will be set to %d bits."},
    {19033, "Import of function class type '%s' not fully supported yet"},
    {19034,
     "Too many errors while importing parameters. "
     "Removing all parameters from the function's operations."},
    {19035, "<StreamCase> without <StreamParam> not supported yet"},
    // The import itself
    {18199, "Error(s) occured, XML database not available"},
    {18200, "Parsing XML "},
    {18202, "Unable to create log file '%s'"},
    {18203, "Import result: "},
    {18205, "Writing internal data structure..."},
    {18206, "fatal errors: %d  errors: %d  warnings: %d"},
    {18209, "Fatal error in '%s':\n  %s\n"},
    {18210, "Error during initialization!"},
    {18211, "Error at file '%s': Line: %d, Char: %d\n  Message: %s"},
    {18212, "Fatal error at file '%s': Line: %d, Char: %d\n  Message: %s"},
    {18213, "Warning at file '%s': Line: %d, Char: %d\n  Message: %s"},
    {18214, "Error during parsing"},
    {18215, "Exception message is"},
    {18218, "errors: %d  warnings: %d"},
    {18219, "warnings: %d"},
    {18220, "no warnings"},
    {18226, "Import of file %s completed"},
    {18227, "Import of file %s failed"},
    {19010, "The file '%s' does not exist"},
    {19011, "Parser:"},
    {19012, "Parse done"},
    {19013, "XML import log file created by Ferrow"},
    {19014, "XML file:"},
    {19015, "Parser messages:"},
    {19018, "Importer messages"},
    {19021, "Error #%04u in '%s':\n  %s\n"},
    {19022, "Warning #%04u in '%s':\n  %s\n"},
    {19101, "<StreamCase> with both <StreamParam> and <StreamSignal>"},
};

constexpr unsigned kNumbersWithoutText[] = {0,     1,     18150, 18167, 18168, 18171, 18175,
                                            18185, 18189, 19024, 19036, 19100, 19102};

TEST(Texts, EveryTextIsLoadedByItsNumber) {
    for (const auto& [number, text] : kExpected) {
        EXPECT_STREQ(LoadText(Text{number}), text) << number;
        EXPECT_EQ(TextOf(Text{number}), text) << number;
    }
}

TEST(Texts, TableHoldsNoOtherNumber) {
    EXPECT_EQ(std::size(kTexts), std::size(kExpected));
}

TEST(Texts, NumberWithoutTextIsAnEmptyText) {
    for (const unsigned number : kNumbersWithoutText) {
        EXPECT_STREQ(LoadText(Text{number}), "") << number;
        EXPECT_EQ(TextOf(Text{number}), "") << number;
    }
}

}  // namespace
}  // namespace tarvex::test::texts_test
