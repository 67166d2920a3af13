/// Messages about the names and positions of parameters.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfParameterNames[] = {
    {.message = &kParamNameReused,
     .when = "A parameter has the name of one that stands before it, in its own list or further up. Case "
             "makes no difference.",
     .becomes = "Both stay. A `Pos` or a stream that selects by this name takes the first.",
     .repair = "Give each parameter of an operation a name of its own.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Kind</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TEnum TypeRef="type_enum" TEnumMax="10"/></PUParamType>
</PUParam>)"},
    {.message = &kArrayWithoutName,
     .when = "A `TArray` has no `TArrayName`: the element that it repeats has no name.",
     .becomes = "The array stays. The name of its element is empty.",
     .repair = "Give it a `TArrayName`.",
     .frame = Frame::Type,
     .excerpt = R"(<TArray TypeRef="type_array" NMax="4">
  <TArrayElementType><TString TypeRef="type_string" MaxSize="8"/></TArrayElementType>
</TArray>)"},
    {.message = &kParamWithoutName,
     .when = "A parameter has no `ParamName`, or a field no `TRecordFieldName`, or it is empty.",
     .becomes = "The parameter is left out. A `TVoid` stays all the same, under the name \"{Void}\".",
     .repair = "Give it a name. An empty `ParamName` is enough for a `TVoid`.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TString TypeRef="type_string" MaxSize="8"/></PUParamType>
</PUParam>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kFieldWithoutIdx,
     .when = "A `TRecordField` has no attribute `FieldIdx`.",
     .becomes = "The field fails, and its record with it.",
     .repair = "Number the fields of a record from 1 on with `FieldIdx`.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="1">
  <TRecordField><TRecordFieldName>Level</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .followers = {53, 129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kFieldIdxUnreadable,
     .when = "The `FieldIdx` of a `TRecordField` is no number.",
     .becomes = "The field fails, and its record with it.",
     .repair = "Number the fields of a record from 1 on: decimal, or hexadecimal after 0x.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="1">
  <TRecordField FieldIdx="one"><TRecordFieldName>Level</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .followers = {53, 129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kFieldIdxOutOfRange,
     .when = "The `FieldIdx` of a `TRecordField` is outside 1 to 4095.",
     .becomes = "The field fails, and its record with it.",
     .repair = "Number the fields of a record from 1 on, not from 0.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="1">
  <TRecordField FieldIdx="0"><TRecordFieldName>Level</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .followers = {53, 129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kStreamParamWithoutIdx,
     .when = "The `ParamName` of a `StreamParam` has no attribute `ParamIdx`.",
     .becomes = "The parameter fails, and its case with it.",
     .repair = "Number the parameters of a case from 1 on with `ParamIdx`.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName>Level</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
</StreamCase>)",
     .followers = {21, 32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kStreamParamIdxOutOfRange,
     .when = "The `ParamIdx` of a `StreamParam` is outside 1 to 4095, or no number.",
     .becomes = "The parameter fails, and its case with it.",
     .repair = "Number the parameters of a case from 1 on, not from 0.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="0">Level</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
</StreamCase>)",
     .followers = {21, 32},
     .loss = Loss::Part,
     .isIncomplete = true},
};

}  // namespace tarvex::review
