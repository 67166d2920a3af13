#include "review/explanations/explanations.h"

#include <algorithm>
#include <iterator>

#include "import/log/messages.h"
#include "review/explanations/arrays_and_records.h"
#include "review/explanations/assignment.h"
#include "review/explanations/bits_and_texts.h"
#include "review/explanations/blocks.h"
#include "review/explanations/definitions.h"
#include "review/explanations/functions.h"
#include "review/explanations/newer_forms.h"
#include "review/explanations/numbers_and_enumerations.h"
#include "review/explanations/parameter_names.h"
#include "review/explanations/streams.h"

namespace tarvex::review {
namespace {

constexpr Group kGroups[] = {
    {"Type and unit definitions", "", kOfDefinitions},
    {"Names and positions of parameters",
     "A parameter that fails here is left out: one of a function with 129, a field with 53 and its record, a "
     "stream parameter with 21 and its case.",
     kOfParameterNames},
    {"Streams",
     "A stream case fails at its first fault (17, 20, 21, 23 to 26) and is left out (32); the stream stays. "
     "A stream that fails itself (28 to 30), or a list of FunctionIDs (36 to 39), is left out, and with it "
     "whatever it stands in, up to the parameter (129) or the stream case (32).",
     kOfStreams},
    {"Arrays",
     "An error in an element makes its array fail, and with it whatever the array stands in, up to the "
     "parameter (129) or the stream case (32).",
     kOfArrays},
    {"Records",
     "All bad fields are told; then the record fails, and with it whatever it stands in, up to the parameter "
     "(129) or the stream case (32).",
     kOfRecords},
    {"Bits", "A bit that fails takes its bit field (92) or boolean (98) with it.", kOfBits},
    {"Numbers",
     "After an error the number is left out: a parameter of a function with 129, an element with 46, a field "
     "with 53, a stream parameter with 21, and what they stand in as above. After a warning it stays. The "
     "same goes for the errors of enumerations (77), strings, bit fields, booleans and void parameters.",
     kOfNumbers},
    {"Enumerations", "", kOfEnumerations},
    {"Strings, bit fields, booleans, void", "", kOfStringsAndFields},
    {"Operations and functions",
     "A function that fails (106 to 117, 119, 120) is left out of its block (145).", kOfFunctions},
    {"Assignment of parameters to operations", "The function stays, unless the message says otherwise.",
     kOfAssignment},
    {"Newer forms",
     "Only with `FCatImportNewer=1`, and in `tarvex-disasm`. Short streams raise 32, 33, 35 and those of "
     "cases (17 to 27), too.",
     kOfNewerForms},
    {"Function blocks and catalog", "A block that fails (139 to 144, 146) is left out of the catalog (149).",
     kOfBlocks},
    {"Fatal errors", "They have no number and end the conversion.", kOfFatalErrors},
};

constexpr bool IsExplainedOnce(const Message* message) {
    std::ptrdiff_t count = 0;
    for (const Group& group : kGroups) {
        count += std::ranges::count(group.explanations, message, &Explanation::message);
    }
    return count == 1;
}
static_assert(std::ranges::all_of(kMessages, IsExplainedOnce));

}  // namespace

std::span<const Group> Groups() {
    return kGroups;
}

}  // namespace tarvex::review
