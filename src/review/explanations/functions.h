/// Messages about operations and functions.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfFunctions[] = {
    {.message = &kGapInOperation,
     .when = "The `ParamPos` of an operation do not follow each other. They may begin with 0 or 1. A "
             "parameter that was left out for another fault leaves such a gap, too.",
     .becomes = "The gap is closed: the parameters behind it move up, and their signals stand at other bits "
                "than in the real message.",
     .repair = "Look for the parameter that is missing, or for the message about it. Else number the "
               "positions without a gap.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Level</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>4</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)",
     .isIncomplete = true},
    {.message = &kOperationEmpty,
     .when = "An operation ended up empty.",
     .noExcerpt =
         "No catalog raises it: an operation is made for a parameter, and left out (122) when that fails."},
    {.message = &kFktDefRefUnknown,
     .when = "A function is to be the copy of another one, and no function before it has the `FktDefId` that "
             "its `FktDefRef` names.",
     .becomes = kFunctionLeftOut,
     .repair = "Correct the `FktDefRef`, or put the function that it names in front of it.",
     .frame = Frame::Function,
     .excerpt = R"(<Function FktDefRef="fkt_missing"/>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFktDefNotCopied,
     .when = "A function is to be the copy of another one, and cannot be copied: all copies together would "
             "take more than 256 MiB and 16 bytes for each byte of the catalog.",
     .becomes = kFunctionLeftOut,
     .repair = "See whether functions refer to each other that should not.",
     .noExcerpt = "It would be too large."},
    {.message = &kCopiedFunctionIdTwice,
     .when = "A function is to be the copy of another one, and its block has a function with that FunctionID "
             "already.",
     .becomes = "The copy is left out, the other function stays.",
     .repair = "Remove one of the two.",
     .frame = Frame::Function,
     .excerpt = R"(<Function FktDefRef="fkt_mute"/>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kCopiedFunctionNameTwice,
     .when = "A function is to be the copy of another one, and its block has a function of that name "
             "already. Case makes no difference.",
     .becomes = "The copy is left out, the other function stays.",
     .repair = "Rename one of the two.",
     .frame = Frame::Block,
     .excerpt = R"(<FBlock><FBlockID>0x40</FBlockID><FBlockName>Tuner</FBlockName>
  <Function><FunctionID>0x401</FunctionID><FunctionName>Mute</FunctionName>
    <FunctionClass><Property><PUnclassified><PUParam>
      <ParamName/>
      <PUParamOPType><PCmdGet/></PUParamOPType>
      <PUParamType><TVoid TypeRef="type_void"/></PUParamType>
    </PUParam></PUnclassified></Property></FunctionClass></Function>
  <Function FktDefRef="fkt_mute"/>
</FBlock>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kCopiedFunctionFailed,
     .when = "A `FktDefRef` names an error function (`Temp_ERFunction_` and its `ParamDefId`) that has no "
             "FunctionID: there are 4096 `ERParam` before it.",
     .becomes = kFunctionLeftOut,
     .repair = "Refer to a function by its `FktDefId`. Parameters refer to error functions with `ERParam`.",
     .frame = Frame::ManyErrors,
     .excerpt = R"(<Function FktDefRef="Temp_ERFunction_Last"/>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionWithoutName,
     .when = "A function has no `FunctionName`, or an empty one.",
     .becomes = kFunctionLeftOut,
     .repair = "Give it a `FunctionName`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionWithoutId,
     .when = "A function has no `FunctionID`, or an empty one.",
     .becomes = kFunctionLeftOut,
     .repair = "Give it a `FunctionID`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionName>Volume</FunctionName></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionIdUnreadable,
     .when = "The `FunctionID` is no number. Hexadecimal digits need 0x before them.",
     .becomes = kFunctionLeftOut,
     .repair = "Write a number: `0x40A`, or decimal.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>40A</FunctionID><FunctionName>Volume</FunctionName></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionIdOutOfRange,
     .when = "The `FunctionID` is outside 0 to 0xFFF.",
     .becomes = kFunctionLeftOut,
     .repair = "Correct the `FunctionID`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x1000</FunctionID><FunctionName>Volume</FunctionName></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionIdTwice,
     .when = "The block has a function with this `FunctionID` already.",
     .becomes = "The second function is left out, the first stays.",
     .repair = "Give it a `FunctionID` of its own, or remove one of the two.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionNameTwice,
     .when = "The block has a function of this name already. Case makes no difference.",
     .becomes = "The second function is left out, the first stays.",
     .repair = "Rename it, or remove one of the two.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>MUTE</FunctionName></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionWithoutClass,
     .when = "A function has no `FunctionClass`.",
     .becomes = kFunctionLeftOut,
     .repair = "Give it a `FunctionClass`, with what it can do.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName></Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kArrayClassUnsupported,
     .when = "The `ClassRef` of a function is that of a dynamic or a long array.",
     .becomes = "The function stays, and is read like any other. What is special about its class is not.",
     .repair = "Nothing is wrong with the catalog. `FCatImportLogExclude` keeps 118 out of the log.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Stations</FunctionName>
  <FunctionClass ClassRef="class_long_array"><Property><PArray><PAParam>
    <ParamName/>
    <PAParamOPType><PACommand><PCmdGet/></PACommand></PAParamOPType>
    <PAParamType><TVoid TypeRef="type_void"/></PAParamType>
  </PAParam></PArray></Property></FunctionClass>
</Function>)"},
    {.message = &kRecordArrayClassUnsupported,
     .when = "The `ClassRef` of a function is that of a dynamic or long array of records.",
     .becomes = kFunctionLeftOut,
     .repair = "Nothing is wrong with the catalog. `FCatImportLogExclude` keeps 119 and 145 out of the log.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Stations</FunctionName>
  <FunctionClass ClassRef="class_long_array_of_record"><Property><PArray/></Property></FunctionClass>
</Function>)",
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kFunctionClassFailed,
     .when = "The `FunctionClass` could not be read. The message before it says why.",
     .becomes = kFunctionLeftOut,
     .repair = "Mend what the message before it names.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName>
  <FunctionClass/>
</Function>)",
     .behind = {124},
     .followers = {145},
     .loss = Loss::Function},
    {.message = &kOperationFailed,
     .when = "A parameter of an operation failed when the finished catalog was checked. The message before "
             "it says why.",
     .becomes = "The operation is left out, the function stays. With `SafeLayout=1` its message is there, "
                "without signals.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Data</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TRecord TypeRef="type_record" NElements="1">
    <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
  </TRecord></PUParamType>
</PUParam>)",
     .behind = {57},
     .loss = Loss::Operation,
     .isIncomplete = true},
    {.message = &kFunctionEmpty,
     .when = "A function ended up without operations.",
     .becomes = "The function stays, empty. It has no messages.",
     .repair = "Mend what the messages before it name. If there are none, the function has no parameters: "
               "one with a `TVoid` stands for each operation that carries nothing.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x401</FunctionID><FunctionName>Volume</FunctionName>
  <FunctionClass><Property><PUnclassified/></Property></FunctionClass>
</Function>)",
     .loss = Loss::Operation},
};

}  // namespace tarvex::review
