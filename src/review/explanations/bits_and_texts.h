/// Messages about single bits, strings, bit fields, booleans and void parameters.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfBits[] = {
    {.message = &kBitWithoutPos,
     .when = "A `TBoolField` has no attribute `BitPos`.",
     .becomes = "The bit fails, and its bit field (92) or boolean (98) with it.",
     .repair = "Number the bits with `BitPos`. 0 is the least significant.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField><ParamName>Mono</ParamName><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)",
     .followers = {92, 129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBitPosUnreadable,
     .when = "The `BitPos` of a `TBoolField` is no number.",
     .becomes = "The bit fails, and its bit field (92) or boolean (98) with it.",
     .repair = "Number the bits with `BitPos`. 0 is the least significant.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField BitPos="first"><ParamName>Mono</ParamName>
    <BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)",
     .followers = {92, 129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBitPosOutOfRange,
     .when = "The `BitPos` of a `TBoolField` is outside 0 to 15.",
     .becomes = "The bit fails, and its bit field (92) or boolean (98) with it.",
     .repair = "Number the bits from 0 on. A field of more than 16 bits has to be two.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField BitPos="16"><ParamName>Mono</ParamName>
    <BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)",
     .followers = {92, 129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBitWithoutTrueDesc,
     .when = "A `TBoolField` has no `BitTrueDesc`, or an empty one.",
     .becomes = "The bit stays. Its value 1 is called \"True\".",
     .repair = "Say what the value 1 means.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField BitPos="0"><ParamName>Mono</ParamName><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)"},
    {.message = &kBitWithoutFalseDesc,
     .when = "A `TBoolField` has no `BitFalseDesc`, or an empty one.",
     .becomes = "The bit stays. Its value 0 is called \"False\".",
     .repair = "Say what the value 0 means.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField BitPos="0"><ParamName>Mono</ParamName><BitTrueDesc>on</BitTrueDesc></TBoolField>
</TBitField>)"},
};

inline constexpr Explanation kOfStringsAndFields[] = {
    {.message = &kNoTString, .when = "A string has no `TString`.", .noExcerpt = kFoundBefore},
    {.message = &kStringWithoutMaxSize,
     .when = "A `TString` has no attribute `MaxSize`.",
     .becomes = "The string is left out, with what it stands in.",
     .repair = "Write how many bytes it has at most. If the catalog is one of MOST 2.5 or 3.0, set "
               "`FCatImportNewer=1`.",
     .frame = Frame::Type,
     .excerpt = R"(<TString TypeRef="type_string"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .newer = "This is no fault: the string has no limit."},
    {.message = &kStringWithoutType,
     .when = "A `TString` has no attribute `TypeRef`.",
     .becomes = "The string is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TString MaxSize="8"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kNoTBitField,
     .when = "A bit field has no `TBitField`. It shares its number with that of strings without a `TypeRef`.",
     .noExcerpt = kFoundBefore},
    {.message = &kBitFieldWithoutLength,
     .when = "A `TBitField` has no attribute `Length`.",
     .becomes = "The bit field is left out, with what it stands in.",
     .repair = "Write how many bits it has.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBitFieldWithoutType,
     .when = "A `TBitField` has no attribute `TypeRef`.",
     .becomes = "The bit field is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField Length="8"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBitFieldBitTwice,
     .when = "Two bits of a bit field have the same `BitPos`.",
     .becomes = "The second is left out, the bit field stays.",
     .repair = "Give each bit a `BitPos` of its own.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField BitPos="0"><ParamName>Mono</ParamName>
    <BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
  <TBoolField BitPos="0"><ParamName>Loud</ParamName>
    <BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)",
     .loss = Loss::Part},
    {.message = &kBitFieldBitFailed,
     .when = "A bit of a bit field could not be read. The message before it says why.",
     .becomes = "The bit field is left out, with what it stands in.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField><ParamName>Mono</ParamName><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)",
     .behind = {59},
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBitLengthAmbiguous,
     .when = "The bits need more room than `Length` says, or `Length` is 0 or no number; or a boolean has a "
             "bit above 7.",
     .becomes = "The bit field stays, and gets the room that its bits need. A boolean keeps its 8 bits, and "
                "bits above 7 give no signal.",
     .repair = "Raise `Length`, or look for the bit whose `BitPos` is wrong. Find out which of both the real "
               "message has: from 9 bits on it takes two bytes, and everything behind it stands elsewhere.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="8">
  <TBoolField BitPos="9"><ParamName>Mono</ParamName>
    <BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBitField>)",
     .newer = "`Length` counts bytes where the bits do not fit otherwise, 16 bits at most. Raised only if "
              "they do not fit then either."},
    {.message = &kBitLengthInvalid,
     .when = "`Length` is above 16 or below 0.",
     .becomes = "The bit field stays, with 16 bits: it takes two bytes.",
     .repair = "Write how many bits it has. A field of more than 16 bits has to be two.",
     .frame = Frame::Type,
     .excerpt = R"(<TBitField TypeRef="type_bitfield" Length="20"/>)"},
    {.message = &kNoTBool, .when = "A boolean has no `TBool`.", .noExcerpt = kFoundBefore},
    {.message = &kBoolWithoutType,
     .when = "A `TBool` has no attribute `TypeRef`.",
     .becomes = "The boolean is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TBool/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kBoolBitTwice,
     .when = "Two bits of a boolean have the same `BitPos`.",
     .becomes = "The second is left out, the boolean stays.",
     .repair = "Give each bit a `BitPos` of its own.",
     .frame = Frame::Type,
     .excerpt = R"(<TBool TypeRef="type_bool">
  <TBoolField BitPos="0"><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
  <TBoolField BitPos="0"><BitTrueDesc>yes</BitTrueDesc><BitFalseDesc>no</BitFalseDesc></TBoolField>
</TBool>)",
     .loss = Loss::Part},
    {.message = &kBoolBitFailed,
     .when = "A bit of a boolean could not be read. The message before it says why.",
     .becomes = "The boolean is left out, with what it stands in.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Type,
     .excerpt = R"(<TBool TypeRef="type_bool">
  <TBoolField><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>
</TBool>)",
     .behind = {59},
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kNoTVoid, .when = "A void parameter has no `TVoid`.", .noExcerpt = kFoundBefore},
    {.message = &kVoidWithoutType,
     .when = "A `TVoid` has no attribute `TypeRef`.",
     .becomes = "The void parameter is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TVoid/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
};

}  // namespace tarvex::review
