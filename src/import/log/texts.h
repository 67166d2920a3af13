/// The texts of the import, by number.

#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tarvex {

/// The number of a text in the program's string table. Numbers are fixed: they are the key of the table.
enum class Text : unsigned {
    NotEnoughMemory = 18151,
    NoValidFBlock = 18152,
    NoValidFunction = 18153,
    ChildElementNotFound = 18154,
    ElementNotFound = 18155,
    DoubleDefinitionOfId = 18156,
    DoubleDefinitionOfName = 18157,
    FunctionDefinitionNotFound = 18158,
    ElementImportFailed = 18159,
    NeitherElementFound = 18160,
    NoMatchingSubElement = 18161,
    AssignmentFailed = 18162,
    UnknownParameterType = 18163,
    DuplicationFailed = 18164,
    PositionOccupied = 18165,
    AttributeMissing = 18166,
    RecordFieldCountDiffers = 18169,
    DoubleDefinitionAtPosition = 18170,
    OverlappingEnumCodes = 18172,
    ValueNotAnalyzed = 18173,
    ValueOutOfRange = 18174,
    OnlyOneSelector = 18176,
    PosParameterNotFound = 18177,
    InvalidPositionOfParameter = 18178,
    OperationImportFailed = 18179,
    NoValidOperation = 18180,
    NoValidParameter = 18181,
    GapBeforeParameter = 18182,
    RecordWithoutParameter = 18183,
    MergeFailed = 18184,
    SequenceNotReconstructed = 18186,
    EnumCodeOutOfRange = 18187,
    OverlappingStreamCases = 18188,
    OpTypeInfoMissing = 18190,
    InvalidParameterPosition = 18191,
    InvalidBitFieldLength = 18192,
    ParameterNameReused = 18193,
    XmlDatabaseNotAvailable = 18199,
    ParsingXml = 18200,
    LogNotCreated = 18202,
    ImportResult = 18203,
    WritingDataStructure = 18205,
    SummaryFatal = 18206,
    FatalEntry = 18209,
    InitializationError = 18210,
    ParserError = 18211,
    ParserFatalError = 18212,
    ParserWarning = 18213,
    ErrorDuringParsing = 18214,
    ExceptionMessageIs = 18215,
    InvalidElementCount = 18217,
    SummaryErrors = 18218,
    SummaryWarnings = 18219,
    SummaryClean = 18220,
    ImportCompleted = 18226,
    ImportFailed = 18227,
    FileDoesNotExist = 19010,
    Parser = 19011,
    ParseDone = 19012,
    LogCreatedBy = 19013,
    XmlFile = 19014,
    ParserMessages = 19015,
    ImporterMessages = 19018,
    ErrorEntry = 19021,
    WarningEntry = 19022,
    NMaxNotAnalyzed = 19025,
    TypeDefinitionNotFound = 19026,
    UnitDefinitionNotFound = 19027,
    PosSizeNotTwo = 19028,
    PosExponentNotZero = 19029,
    EnumMaxNotAnalyzed = 19030,
    ValueReplaced = 19031,
    AmbiguousBitFieldLength = 19032,
    ClassNotFullySupported = 19033,
    ParametersWithdrawn = 19034,
    EmptyStreamCase = 19035,
    SignalsAndParams = 19101,
};

struct TextRow {
    Text number;
    std::string_view text;
};

/// No text has more characters.
inline constexpr std::size_t kMaxTextLength = 255;

/// The string table, ascending by number. Spelling is part of the log format and stays as it is.
inline constexpr TextRow kTexts[] = {
    {Text::NotEnoughMemory, "Not enough memory"},
    {Text::NoValidFBlock, "Function catalog contains no valid function block"},
    {Text::NoValidFunction, "Function block contains no valid function"},
    {Text::ChildElementNotFound, "Can not find child element <%s>"},
    {Text::ElementNotFound, "Can not find element <%s>"},
    {Text::DoubleDefinitionOfId, "Double definition of element with ID 0x%X"},
    {Text::DoubleDefinitionOfName, "Double definition of element '%s'"},
    {Text::FunctionDefinitionNotFound, "Can not find definition of function '%s'"},
    {Text::ElementImportFailed, "Failed to import element <%s>"},
    {Text::NeitherElementFound, "Can neighter find element <%s> nor <%s>"},
    {Text::NoMatchingSubElement, "No matching sub element found"},
    {Text::AssignmentFailed, "Failed to assign parameter '%s' to operation"},
    {Text::UnknownParameterType, "Unknown parameter type in <%s>"},
    {Text::DuplicationFailed, "Failed to duplicate object"},
    {Text::PositionOccupied, "Position %d of '%s' already occupied"},
    {Text::AttributeMissing, "Missing required attribute %s"},
    {Text::RecordFieldCountDiffers,
     "Number of record fields (%d) does not match value of attribute 'NElements' (%d)"},
    {Text::DoubleDefinitionAtPosition, "Double definition of element at position %d"},
    {Text::OverlappingEnumCodes, "Overlapping value(s) of enum codes"},
    {Text::ValueNotAnalyzed, "Failed to analyze value '%s'"},
    {Text::ValueOutOfRange, "Value '%d' out of range [%d, %d)"},
    {Text::OnlyOneSelector, "Only one selector parameter per stream supported yet"},
    {Text::PosParameterNotFound, "Can't find '%s' parameter to '%s' parameter of record or array"},
    {Text::InvalidPositionOfParameter, "Invalid position of parameter '%s'"},
    {Text::OperationImportFailed, "Failed to import operation '%s'"},
    {Text::NoValidOperation, "Function contains no valid operation"},
    {Text::NoValidParameter, "Operation contains no valid parameter"},
    {Text::GapBeforeParameter, "Gap in parameter set before parameter '%s'"},
    {Text::RecordWithoutParameter, "Record contains no valid parameter"},
    {Text::MergeFailed, "Merge of '%s' failed"},
    {Text::SequenceNotReconstructed,
     "Can't reconstruct sequence of parameters (check attribute 'ParamIdx' of StreamParams)"},
    {Text::EnumCodeOutOfRange, "Enum code out of range (0...EnumMax)"},
    {Text::OverlappingStreamCases, "Overlapping streamcase(s)"},
    {Text::OpTypeInfoMissing, "Missing OPType info"},
    {Text::InvalidParameterPosition, "Invalid parameter position %d"},
    {Text::InvalidBitFieldLength, "Invalid length of bitfield (%d)"},
    {Text::ParameterNameReused, "Multiple use of parameter name '%s'"},
    {Text::XmlDatabaseNotAvailable, "Error(s) occured, XML database not available"},
    {Text::ParsingXml, "Parsing XML "},
    {Text::LogNotCreated, "Unable to create log file '%s'"},
    {Text::ImportResult, "Import result: "},
    {Text::WritingDataStructure, "Writing internal data structure..."},
    {Text::SummaryFatal, "fatal errors: %d  errors: %d  warnings: %d"},
    {Text::FatalEntry, "Fatal error in '%s':\n  %s\n"},
    {Text::InitializationError, "Error during initialization!"},
    {Text::ParserError, "Error at file '%s': Line: %d, Char: %d\n  Message: %s"},
    {Text::ParserFatalError, "Fatal error at file '%s': Line: %d, Char: %d\n  Message: %s"},
    {Text::ParserWarning, "Warning at file '%s': Line: %d, Char: %d\n  Message: %s"},
    {Text::ErrorDuringParsing, "Error during parsing"},
    {Text::ExceptionMessageIs, "Exception message is"},
    {Text::InvalidElementCount, "Invalid number of elements in '%s'"},
    {Text::SummaryErrors, "errors: %d  warnings: %d"},
    {Text::SummaryWarnings, "warnings: %d"},
    {Text::SummaryClean, "no warnings"},
    {Text::ImportCompleted, "Import of file %s completed"},
    {Text::ImportFailed, "Import of file %s failed"},
    {Text::FileDoesNotExist, "The file '%s' does not exist"},
    {Text::Parser, "Parser:"},
    {Text::ParseDone, "Parse done"},
    {Text::LogCreatedBy, "XML import log file created by Ferrow"},
    {Text::XmlFile, "XML file:"},
    {Text::ParserMessages, "Parser messages:"},
    {Text::ImporterMessages, "Importer messages"},
    {Text::ErrorEntry, "Error #%04u in '%s':\n  %s\n"},
    {Text::WarningEntry, "Warning #%04u in '%s':\n  %s\n"},
    {Text::NMaxNotAnalyzed, "Failed to analyze value '%s'. Using 'NMax' instead."},
    {Text::TypeDefinitionNotFound, "Type definition not found"},
    {Text::UnitDefinitionNotFound, "Cannot find unit definition"},
    {Text::PosSizeNotTwo, "Size of 'Pos' parameter <> 2 Bytes"},
    {Text::PosExponentNotZero, "Exponent of 'Pos' parameter <> 0"},
    {Text::EnumMaxNotAnalyzed, "Failed to analyze attribute value '%s'. Using EnumMax=%d instead."},
    {Text::ValueReplaced, "Value %d out of range [%d,%d). Using %d instead."},
    {Text::AmbiguousBitFieldLength,
     "Ambiguous length of bitfield (%d bits <-> %d bits). Length will be set to %d bits."},
    {Text::ClassNotFullySupported, "Import of function class type '%s' not fully supported yet"},
    {Text::ParametersWithdrawn,
     "Too many errors while importing parameters. Removing all parameters from the function's operations."},
    {Text::EmptyStreamCase, "<StreamCase> without <StreamParam> not supported yet"},
    {Text::SignalsAndParams, "<StreamCase> with both <StreamParam> and <StreamSignal>"},
};

static_assert(std::ranges::is_sorted(kTexts, std::ranges::less_equal{}, &TextRow::number),
              "each number stands once, ascending");
static_assert(std::ranges::all_of(kTexts,
                                  [](const TextRow& row) { return row.text.size() <= kMaxTextLength; }));

/// The text of a number in the table; empty for a number without a text.
constexpr std::string_view TextOf(Text number) {
    const auto* row = std::ranges::lower_bound(kTexts, number, {}, &TextRow::number);
    return row != std::end(kTexts) && row->number == number ? row->text : std::string_view{};
}

/// The same for printf; ends with a zero, like every text of the table.
constexpr const char* LoadText(Text number) {
    const std::string_view text = TextOf(number);
    return text.empty() ? "" : text.data();
}

}  // namespace tarvex
