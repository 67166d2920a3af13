/// Messages about arrays and records.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfArrays[] = {
    {.message = &kNoTArray, .when = "An array has no `TArray`.", .noExcerpt = kFoundBefore},
    {.message = &kArrayWithoutNMax,
     .when = "A `TArray` has no attribute `NMax`.",
     .becomes = "The array is left out, with what it stands in.",
     .repair = "Write how many elements there are at most, or `NMax` for any number. If the catalog is one "
               "of MOST 2.5 or 3.0, set `FCatImportNewer=1`.",
     .frame = Frame::Type,
     .excerpt = R"(<TArray TypeRef="type_array">
  <TArrayName>Station</TArrayName>
  <TArrayElementType><TString TypeRef="type_string" MaxSize="8"/></TArrayElementType>
</TArray>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .newer = "This is no fault: the array has no limit."},
    {.message = &kNMaxUnreadable,
     .when = "`NMax` is no number above 0, and neither \"NMax\" nor \"N (>=0)\", which stand for any number.",
     .becomes = "The array stays, without a limit.",
     .repair = "Write a number above 0, or `NMax`.",
     .frame = Frame::Type,
     .excerpt = R"(<TArray TypeRef="type_array" NMax="many">
  <TArrayName>Station</TArrayName>
  <TArrayElementType><TString TypeRef="type_string" MaxSize="8"/></TArrayElementType>
</TArray>)"},
    {.message = &kArrayWithoutType,
     .when = "A `TArray` has no attribute `TypeRef`.",
     .becomes = "The array is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TArray NMax="4"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kArrayElementUnknown,
     .when = "The element of an array has no type element that is known.",
     .becomes = "The array is left out, with what it stands in.",
     .repair = "Give the element a type, in `TArrayElementType`.",
     .frame = Frame::Type,
     .excerpt = R"(<TArray TypeRef="type_array" NMax="4">
  <TArrayName>Corner</TArrayName>
  <TArrayElementType><TPolygon/></TArrayElementType>
</TArray>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kArrayElementFailed,
     .when = "The element of an array could not be read, as the message before it says; or arrays, records "
             "and streams stand inside each other more than 64 levels deep.",
     .becomes = "The array is left out, with what it stands in.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Type,
     .excerpt = R"(<TArray TypeRef="type_array" NMax="4">
  <TArrayName>Station</TArrayName>
  <TArrayElementType><TVoid/></TArrayElementType>
</TArray>)",
     .behind = {101},
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kArrayDataWithoutPos,
     .when = "An array called `Data` stands beside no `Pos`, which says what of it a message holds.",
     .becomes = "The array is left out of the array, record or case that it stands in. One that is a "
                "parameter itself takes its operation with it.",
     .repair = "Put the parameter `Pos` in front of it, or give it another name.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Data</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TArray TypeRef="type_array" NMax="4"><TArrayName>Station</TArrayName>
    <TArrayElementType><TString TypeRef="type_string" MaxSize="8"/></TArrayElementType></TArray></PUParamType>
</PUParam>)",
     .followers = {122},
     .loss = Loss::Operation,
     .isIncomplete = true},
};

inline constexpr Explanation kOfRecords[] = {
    {.message = &kNoTRecord, .when = "A record has no `TRecord`.", .noExcerpt = kFoundBefore},
    {.message = &kRecordWithoutNElements,
     .when = "A `TRecord` has no attribute `NElements`.",
     .becomes = "The record is left out, with what it stands in.",
     .repair =
         "Write how many fields it has. If the catalog is one of MOST 2.5 or 3.0, set `FCatImportNewer=1`.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record">
  <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .newer = "This is no fault: the record has the fields that are there."},
    {.message = &kRecordWithoutType,
     .when = "A `TRecord` has no attribute `TypeRef`.",
     .becomes = "The record is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord NElements="1"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kRecordWithoutFields,
     .when = "A `TRecord` has no `TRecordField`.",
     .becomes = "The record is left out, with what it stands in.",
     .repair = "List its fields.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="0"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kRecordFieldUnknown,
     .when = "A field has no type element that is known.",
     .becomes = "The record is left out, with what it stands in, once all of its fields are looked at.",
     .repair = "Give the field a type.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="1">
  <TRecordField FieldIdx="1"><TRecordFieldName>Corner</TRecordFieldName><TPolygon/></TRecordField>
</TRecord>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kRecordFieldFailed,
     .when = "A field could not be read, as the message before it says; or arrays, records and streams stand "
             "inside each other more than 64 levels deep.",
     .becomes = "The record is left out, with what it stands in, once all of its fields are looked at.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="1">
  <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid/></TRecordField>
</TRecord>)",
     .behind = {101},
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kRecordPosOccupied,
     .when = "Two fields have the same `FieldIdx`.",
     .becomes = "The record is left out, with what it stands in, once all of its fields are looked at.",
     .repair = "Number the fields 1, 2, 3, ...",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="2">
  <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
  <TRecordField FieldIdx="1"><TRecordFieldName>Treble</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kRecordFieldCountDiffers,
     .when = "`NElements` is not the number of fields that are there.",
     .becomes = "The record stays, with the fields that are there.",
     .repair = "Find out whether a field is missing, then write the number of fields into `NElements`.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="2">
  <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .isIncomplete = true},
    {.message = &kGapInRecord,
     .when = "The `FieldIdx` of the fields are not 1, 2, 3, ...",
     .becomes = "The record is left out, with what it stands in.",
     .repair = "Number the fields without a gap. Look for one that has been deleted.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="2">
  <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
  <TRecordField FieldIdx="3"><TRecordFieldName>Treble</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
</TRecord>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kRecordDataWithoutPos,
     .when = "A record called `Data` stands beside no `Pos`, which says what of it a message holds.",
     .becomes = "The record is left out of the array, record or case that it stands in. One that is a "
                "parameter itself takes its operation with it.",
     .repair = "Put the parameter `Pos` in front of it, or give it another name.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="2">
  <TRecordField FieldIdx="1"><TRecordFieldName>Bass</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
  <TRecordField FieldIdx="2"><TRecordFieldName>Data</TRecordFieldName>
    <TRecord TypeRef="type_record" NElements="1">
      <TRecordField FieldIdx="1"><TRecordFieldName>Treble</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
    </TRecord>
  </TRecordField>
</TRecord>)",
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kRecordEmpty,
     .when = "All fields of a record were left out when the finished catalog was checked.",
     .becomes = "The record stays, without fields.",
     .repair = "Mend what the messages before it name.",
     .frame = Frame::Type,
     .excerpt = R"(<TRecord TypeRef="type_record" NElements="1">
  <TRecordField FieldIdx="1"><TRecordFieldName>Data</TRecordFieldName>
    <TRecord TypeRef="type_record" NElements="1">
      <TRecordField FieldIdx="1"><TRecordFieldName>Treble</TRecordFieldName><TVoid TypeRef="type_void"/></TRecordField>
    </TRecord>
  </TRecordField>
</TRecord>)",
     .behind = {57},
     .loss = Loss::Part,
     .isIncomplete = true},
};

}  // namespace tarvex::review
