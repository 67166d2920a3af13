#pragma once

#include "import/texts.h"

namespace tarvex {

enum class Kind { Error, Warning };

/// One numbered importer message. The number belongs to the place that raises it and is part of the log
/// format; two places may share a number.
struct Message {
    unsigned number;
    Kind kind;
    Text text;
};

// Type and unit definitions
inline constexpr Message kTypeDefWithoutName{1, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kTypeDefWithoutId{2, Kind::Error, Text::AttributeMissing};
inline constexpr Message kTypeDefWithoutSize{3, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kUnitDefWithoutName{4, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kUnitDefWithoutId{5, Kind::Error, Text::AttributeMissing};
inline constexpr Message kUnitDefWithoutCode{6, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kTypeDefFailed{7, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kUnitDefFailed{8, Kind::Error, Text::ElementImportFailed};

// Names and positions of parameters
inline constexpr Message kParamNameReused{9, Kind::Warning, Text::ParameterNameReused};
inline constexpr Message kArrayWithoutName{10, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kParamWithoutName{11, Kind::Error, Text::ElementNotFound};
inline constexpr Message kFieldWithoutIdx{12, Kind::Error, Text::AttributeMissing};
inline constexpr Message kFieldIdxUnreadable{13, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kFieldIdxOutOfRange{14, Kind::Error, Text::InvalidParameterPosition};
inline constexpr Message kStreamParamWithoutIdx{15, Kind::Error, Text::AttributeMissing};
inline constexpr Message kStreamParamIdxOutOfRange{16, Kind::Error, Text::InvalidParameterPosition};

// Streams
inline constexpr Message kStreamRangeUnreadable{17, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kStreamCaseWithoutParam{18, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kEmptyStreamCaseUnsupported{19, Kind::Warning, Text::EmptyStreamCase};
inline constexpr Message kStreamParamUnknown{20, Kind::Error, Text::UnknownParameterType};
inline constexpr Message kStreamParamFailed{21, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kStreamParamTwice{22, Kind::Warning, Text::DoubleDefinitionAtPosition};
inline constexpr Message kStreamParamPosInvalid{23, Kind::Error, Text::InvalidPositionOfParameter};
inline constexpr Message kGapInStreamCase{24, Kind::Error, Text::GapBeforeParameter};
inline constexpr Message kSequenceBroken{25, Kind::Error, Text::SequenceNotReconstructed};
inline constexpr Message kSequenceMissing{26, Kind::Error, Text::SequenceNotReconstructed};
inline constexpr Message kSecondSelector{27, Kind::Error, Text::OnlyOneSelector};
inline constexpr Message kNoTStream{28, Kind::Error, Text::ElementNotFound};
inline constexpr Message kStreamWithoutLength{29, Kind::Error, Text::AttributeMissing};
inline constexpr Message kStreamWithoutType{30, Kind::Error, Text::AttributeMissing};
inline constexpr Message kStreamWithoutCase{31, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kStreamCaseFailed{32, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kStreamCaseTwice{33, Kind::Warning, Text::DoubleDefinitionAtPosition};
inline constexpr Message kStreamCasesOverlap{35, Kind::Warning, Text::OverlappingStreamCases};
inline constexpr Message kNoFktIDStream{36, Kind::Error, Text::ElementNotFound};
inline constexpr Message kFktIDStreamWithoutType{37, Kind::Error, Text::AttributeMissing};
inline constexpr Message kFktIDStreamWithoutCase{38, Kind::Error, Text::ElementNotFound};
inline constexpr Message kFktIDStreamCaseCount{39, Kind::Error, Text::InvalidElementCount};

// Arrays
inline constexpr Message kNoTArray{41, Kind::Error, Text::ElementNotFound};
inline constexpr Message kArrayWithoutNMax{42, Kind::Error, Text::AttributeMissing};
inline constexpr Message kNMaxUnreadable{43, Kind::Warning, Text::NMaxNotAnalyzed};
inline constexpr Message kArrayWithoutType{44, Kind::Error, Text::AttributeMissing};
inline constexpr Message kArrayElementUnknown{45, Kind::Error, Text::UnknownParameterType};
inline constexpr Message kArrayElementFailed{46, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kArrayDataWithoutPos{47, Kind::Error, Text::PosParameterNotFound};

// Records
inline constexpr Message kNoTRecord{48, Kind::Error, Text::ElementNotFound};
inline constexpr Message kRecordWithoutNElements{49, Kind::Error, Text::AttributeMissing};
inline constexpr Message kRecordWithoutType{50, Kind::Error, Text::AttributeMissing};
inline constexpr Message kRecordWithoutFields{51, Kind::Error, Text::ElementNotFound};
inline constexpr Message kRecordFieldUnknown{52, Kind::Error, Text::UnknownParameterType};
inline constexpr Message kRecordFieldFailed{53, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kRecordPosOccupied{54, Kind::Error, Text::PositionOccupied};
inline constexpr Message kRecordFieldCountDiffers{55, Kind::Warning, Text::RecordFieldCountDiffers};
inline constexpr Message kGapInRecord{56, Kind::Error, Text::GapBeforeParameter};
inline constexpr Message kRecordDataWithoutPos{57, Kind::Error, Text::PosParameterNotFound};
inline constexpr Message kRecordEmpty{58, Kind::Warning, Text::RecordWithoutParameter};

// Bits
inline constexpr Message kBitWithoutPos{59, Kind::Error, Text::AttributeMissing};
inline constexpr Message kBitPosUnreadable{60, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kBitPosOutOfRange{61, Kind::Error, Text::InvalidPositionOfParameter};
inline constexpr Message kBitWithoutTrueDesc{62, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kBitWithoutFalseDesc{63, Kind::Warning, Text::ElementNotFound};

// Numbers
inline constexpr Message kNoTNumber{66, Kind::Error, Text::ElementNotFound};
inline constexpr Message kNumberWithoutExponent{67, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kNumberWithoutRangeMin{68, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kNumberWithoutRangeMax{69, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kNumberWithoutStep{70, Kind::Warning, Text::ElementNotFound};
inline constexpr Message kNumberWithoutBasisType{71, Kind::Error, Text::ElementNotFound};
inline constexpr Message kNumberWithoutUnit{72, Kind::Error, Text::ElementNotFound};
inline constexpr Message kPosSizeNotTwo{73, Kind::Warning, Text::PosSizeNotTwo};
inline constexpr Message kPosExponentNotZero{74, Kind::Warning, Text::PosExponentNotZero};
inline constexpr Message kBasisTypeNotFound{151, Kind::Error, Text::TypeDefinitionNotFound};
inline constexpr Message kUnitNotFound{152, Kind::Error, Text::UnitDefinitionNotFound};

// Enumerations
inline constexpr Message kEnumValueWithoutCode{75, Kind::Error, Text::AttributeMissing};
inline constexpr Message kEnumCodeUnreadable{76, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kNoTEnum{77, Kind::Error, Text::ElementNotFound};
inline constexpr Message kEnumWithoutMax{78, Kind::Error, Text::AttributeMissing};
inline constexpr Message kEnumMaxUnreadable{79, Kind::Warning, Text::EnumMaxNotAnalyzed};
inline constexpr Message kEnumWithoutType{80, Kind::Error, Text::AttributeMissing};
inline constexpr Message kEnumValueFailed{81, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kEnumMaxOutOfRange{82, Kind::Warning, Text::ValueReplaced};
inline constexpr Message kEnumCodeOutOfRange{83, Kind::Warning, Text::EnumCodeOutOfRange};
inline constexpr Message kEnumCodesOverlap{85, Kind::Warning, Text::OverlappingEnumCodes};

// Strings, bit fields, booleans, void
inline constexpr Message kNoTString{86, Kind::Error, Text::ElementNotFound};
inline constexpr Message kStringWithoutMaxSize{87, Kind::Error, Text::AttributeMissing};
inline constexpr Message kStringWithoutType{88, Kind::Error, Text::AttributeMissing};
inline constexpr Message kNoTBitField{88, Kind::Error, Text::ElementNotFound};  // shares 88 on purpose
inline constexpr Message kBitFieldWithoutLength{89, Kind::Error, Text::AttributeMissing};
inline constexpr Message kBitFieldWithoutType{90, Kind::Error, Text::AttributeMissing};
inline constexpr Message kBitFieldBitTwice{91, Kind::Warning, Text::DoubleDefinitionAtPosition};
inline constexpr Message kBitFieldBitFailed{92, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kBitLengthAmbiguous{93, Kind::Warning, Text::AmbiguousBitFieldLength};
inline constexpr Message kBitLengthInvalid{94, Kind::Warning, Text::InvalidBitFieldLength};
inline constexpr Message kNoTBool{95, Kind::Error, Text::ElementNotFound};
inline constexpr Message kBoolWithoutType{96, Kind::Error, Text::AttributeMissing};
inline constexpr Message kBoolBitTwice{97, Kind::Warning, Text::DoubleDefinitionAtPosition};
inline constexpr Message kBoolBitFailed{98, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kNoTVoid{100, Kind::Error, Text::ElementNotFound};
inline constexpr Message kVoidWithoutType{101, Kind::Error, Text::AttributeMissing};

// Operations
inline constexpr Message kGapInOperation{102, Kind::Warning, Text::GapBeforeParameter};
inline constexpr Message kOperationEmpty{103, Kind::Warning, Text::NoValidParameter};

// Functions
inline constexpr Message kFktDefRefUnknown{106, Kind::Error, Text::FunctionDefinitionNotFound};
inline constexpr Message kFktDefNotCopied{107, Kind::Error, Text::DuplicationFailed};
inline constexpr Message kCopiedFunctionIdTwice{108, Kind::Error, Text::DoubleDefinitionOfId};
inline constexpr Message kCopiedFunctionNameTwice{109, Kind::Error, Text::DoubleDefinitionOfName};
inline constexpr Message kCopiedFunctionFailed{110, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kFunctionWithoutName{111, Kind::Error, Text::ElementNotFound};
inline constexpr Message kFunctionWithoutId{112, Kind::Error, Text::ElementNotFound};
inline constexpr Message kFunctionIdUnreadable{113, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kFunctionIdOutOfRange{114, Kind::Error, Text::ValueOutOfRange};
inline constexpr Message kFunctionIdTwice{115, Kind::Error, Text::DoubleDefinitionOfId};
inline constexpr Message kFunctionNameTwice{116, Kind::Error, Text::DoubleDefinitionOfName};
inline constexpr Message kFunctionWithoutClass{117, Kind::Error, Text::ElementNotFound};
inline constexpr Message kArrayClassUnsupported{118, Kind::Warning, Text::ClassNotFullySupported};
inline constexpr Message kRecordArrayClassUnsupported{119, Kind::Error, Text::ClassNotFullySupported};
inline constexpr Message kFunctionClassFailed{120, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kOperationFailed{122, Kind::Error, Text::OperationImportFailed};
inline constexpr Message kFunctionEmpty{123, Kind::Error, Text::NoValidOperation};

// Assignment of parameters to operations
inline constexpr Message kNeitherPropertyNorMethod{124, Kind::Error, Text::NeitherElementFound};
inline constexpr Message kErrorFunctionUnknown{126, Kind::Error, Text::FunctionDefinitionNotFound};
inline constexpr Message kErrorFunctionNotMerged{127, Kind::Error, Text::MergeFailed};
inline constexpr Message kParamTypeUnknown{128, Kind::Error, Text::UnknownParameterType};
inline constexpr Message kParamFailed{129, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kParamNotAssigned{130, Kind::Error, Text::AssignmentFailed};
inline constexpr Message kParamPosUnreadable{131, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kParamPosOutOfRange{132, Kind::Error, Text::InvalidParameterPosition};
inline constexpr Message kParamNotCloned{133, Kind::Error, Text::DuplicationFailed};
inline constexpr Message kParamPosOccupied{134, Kind::Error, Text::PositionOccupied};
inline constexpr Message kParamWithoutOpType{135, Kind::Error, Text::OpTypeInfoMissing};
inline constexpr Message kParamsWithdrawn{138, Kind::Warning, Text::ParametersWithdrawn};
inline constexpr Message kFunctionClassUnknown{150, Kind::Error, Text::NoMatchingSubElement};

// Function blocks and the catalog
inline constexpr Message kFBlockWithoutName{139, Kind::Error, Text::ChildElementNotFound};
inline constexpr Message kFBlockWithoutId{140, Kind::Error, Text::ChildElementNotFound};
inline constexpr Message kFBlockIdUnreadable{141, Kind::Error, Text::ValueNotAnalyzed};
inline constexpr Message kFBlockIdOutOfRange{142, Kind::Error, Text::ValueOutOfRange};
inline constexpr Message kFBlockIdTwice{143, Kind::Error, Text::DoubleDefinitionOfId};
inline constexpr Message kFBlockNameTwice{144, Kind::Error, Text::DoubleDefinitionOfName};
inline constexpr Message kFunctionFailed{145, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kFBlockEmpty{146, Kind::Error, Text::NoValidFunction};
inline constexpr Message kErrorFunctionFailed{148, Kind::Error, Text::ElementImportFailed};
inline constexpr Message kFBlockFailed{149, Kind::Error, Text::ElementImportFailed};

}  // namespace tarvex
