/// Messages about how parameters get into the operations of their function.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfAssignment[] = {
    {.message = &kNeitherPropertyNorMethod,
     .when = "A `FunctionClass` holds neither `Property` nor `Method`.",
     .becomes = kFunctionLeftOut,
     .repair = "Say which of both it is.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName>
  <FunctionClass/>
</Function>)",
     .followers = {120, 145},
     .loss = Loss::Function},
    {.message = &kErrorFunctionUnknown,
     .when = "An `ERParam` of a function refers to an error function that is not defined, or could not be "
             "read (148).",
     .becomes = "The function stays. The parameters of its error message are missing.",
     .repair = "Define an `ERParam` with that `ParamDefId`, or correct the `ParamDefRef`.",
     .frame = Frame::Parameter,
     .excerpt = R"(<ERParam ParamDefRef="Missing"/>)",
     .loss = Loss::Parameter},
    {.message = &kErrorFunctionNotMerged,
     .when =
         "No parameter of an error function found room in the function that refers to it, or it has none.",
     .becomes = "The function stays. The parameters of its error message are missing.",
     .repair = "See that the error function names its operations, and that the function has no parameters of "
               "its own at their positions (134).",
     .frame = Frame::Parameter,
     .excerpt = R"(<ERParam ParamDefId="Empty">
  <ParamName>ErrorCode</ParamName>
  <ERParamOPType/>
  <ERParamType><TEnum TypeRef="type_enum" TEnumMax="255"/></ERParamType>
</ERParam>)",
     .loss = Loss::Parameter},
    {.message = &kParamTypeUnknown,
     .when = "A parameter has no type element that is known.",
     .becomes = kParameterLeftOut,
     .repair = "Give it a type. If it is a `TShortStream` or a `TCStream`, set `FCatImportNewer=1`.",
     .frame = Frame::Type,
     .excerpt = R"(<TShortStream TypeRef="type_shortstream" MaxLength="8"/>)",
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .newer = "`TShortStream` and `TCStream` are known."},
    {.message = &kParamFailed,
     .when = "A parameter could not be read. The messages before it say why, from the inside out.",
     .becomes = kParameterLeftOut,
     .repair = "Mend what the first of the messages before it names.",
     .frame = Frame::Type,
     .excerpt = R"(<TString MaxSize="8"/>)",
     .behind = {88},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kParamNotAssigned,
     .when = "None of the operations that use a parameter could take it. The messages before it say why.",
     .becomes = kParameterLeftOut,
     .repair = "Mend what the messages before it name.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Level</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>last</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)",
     .behind = {131},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kParamPosUnreadable,
     .when = "A `ParamPos` is no number.",
     .becomes = "The parameter is left out of that operation.",
     .repair = "Write the position of the parameter in the message of that operation.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Level</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>last</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)",
     .followers = {130},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kParamPosOutOfRange,
     .when = "A `ParamPos` is outside 0 to 255.",
     .becomes = "The parameter is left out of that operation.",
     .repair = "Number the parameters of each operation from 0 or 1 on.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Level</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>256</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)",
     .followers = {130},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kParamNotCloned,
     .when = "A parameter cannot be copied into one of its operations: all copies together would take more "
             "than 256 MiB and 16 bytes for each byte of the catalog.",
     .becomes = "The parameter is left out of that operation.",
     .repair = "See whether large arrays and records are used by operations that should not have them.",
     .noExcerpt = "It would be too large."},
    {.message = &kParamPosOccupied,
     .when = "An operation has a parameter at that `ParamPos` already. Where none is given it is 0.",
     .becomes = "The parameter that is named is left out of that operation, the other stays.",
     .repair = "Give each parameter of an operation a `ParamPos` of its own.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Level</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>2</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)",
     .followers = {130},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kParamWithoutOpType,
     .when = "A parameter has no element that says which operations use it, such as `PUParamOPType`.",
     .becomes = kParameterLeftOut,
     .repair = "Name its operations, and its position in each of them.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Level</ParamName>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)",
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kParamsWithdrawn,
     .when = "A function has no class that is known. This is always said behind 150.",
     .becomes = "The function stays, without operations.",
     .repair = "As for 150.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName>
  <FunctionClass><Property/></FunctionClass>
</Function>)",
     .behind = {150},
     .followers = {123},
     .loss = Loss::Operation},
    {.message = &kFunctionClassUnknown,
     .when = "`Property` or `Method` holds none of the known classes, such as `PUnclassified`.",
     .becomes = "The function stays, without operations. With `SafeLayout=1` the operations that its "
                "parameters name have messages, without signals.",
     .repair = "Give it a class. If it is `PContainer`, `PSequence` or `MSequence`, set `FCatImportNewer=1`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName>
  <FunctionClass><Property><PSequence><PQParam>
    <ParamName>Level</ParamName>
    <PQParamOPType><PReportStatus/></PQParamOPType>
    <PQParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PQParamType>
  </PQParam></PSequence></Property></FunctionClass>
</Function>)",
     .followers = {138, 123},
     .loss = Loss::Operation,
     .isIncomplete = true,
     .newer = "`PContainer`, `PSequence` and `MSequence` are known."},
};

}  // namespace tarvex::review
