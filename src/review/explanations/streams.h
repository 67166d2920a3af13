/// Messages about streams and their cases.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfStreams[] = {
    {.message = &kStreamRangeUnreadable,
     .when = "The `PosY` of a case is no value and no range.",
     .becomes = kCaseLeftOut,
     .repair = "Write a value (`3`, `0x03`), a range (`3..7`), or `>3` for all above.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase><PosDescription PosX="Kind" PosY="first"/></StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kStreamCaseWithoutParam,
     .when = "A case has no `StreamParam`.",
     .becomes = "The case stays, without content.",
     .repair = "List what the stream holds in this case. If it holds nothing, leave the case out.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase><PosDescription PosX="Kind" PosY="1"/></StreamCase>)",
     .followers = {19},
     .newer = "This is no fault: the rest of the stream is bytes."},
    {.message = &kEmptyStreamCaseUnsupported,
     .when = "A case has no `StreamParam`. This is always said behind 18.",
     .becomes = "The case stays, without content.",
     .repair = "As for 18.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase><PosDescription PosX="Kind" PosY="1"/></StreamCase>)",
     .behind = {18},
     .newer = "This is no fault: the rest of the stream is bytes."},
    {.message = &kStreamParamUnknown,
     .when = "A `StreamParam` has no type element that is known.",
     .becomes = kCaseLeftOut,
     .repair = "Give it a type: `TNumber`, `TEnum`, `TString`, `TBool`, `TBitField`, `TVoid`, `TArray`, "
               "`TRecord` or `TStream`.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Level</ParamName><ParamType><TPolygon/></ParamType></StreamParam>
</StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kStreamParamFailed,
     .when = "A `StreamParam` could not be read, as the message before it says; or arrays, records and "
             "streams stand inside each other more than 64 levels deep.",
     .becomes = kCaseLeftOut,
     .repair = "Mend what the message before it names.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Level</ParamName><ParamType><TVoid/></ParamType></StreamParam>
</StreamCase>)",
     .behind = {101},
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kStreamParamTwice,
     .when = "Two `StreamParam` of a case have the same `ParamIdx`.",
     .becomes = "The second is left out. The case stays.",
     .repair = "Number the parameters of a case 1, 2, 3, ...",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
  <StreamParam><ParamName ParamIdx="1">Level</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
</StreamCase>)",
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kStreamParamPosInvalid,
     .when = "A `StreamParam` has no position in its case.",
     .noExcerpt = "No catalog raises it: 16 is raised first."},
    {.message = &kGapInStreamCase,
     .when = "The `ParamIdx` of a case are not 1, 2, 3, ...",
     .becomes = kCaseLeftOut,
     .repair = "Number the parameters without a gap. Look for one that has been deleted.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
  <StreamParam><ParamName ParamIdx="3">Level</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
</StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kSequenceBroken,
     .when = "The sequence numbers at one position (`1seq1`, `1seq2`) are not 1, 2, 3, ...",
     .becomes = kCaseLeftOut,
     .repair = "Number the sequence from 1 on, without a gap.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1seq1">Bass</ParamName><TVoid TypeRef="type_void"/></StreamParam>
  <StreamParam><ParamName ParamIdx="1seq3">Level</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kSequenceMissing,
     .when = "A position has parameters with and without a sequence number.",
     .becomes = kCaseLeftOut,
     .repair = "Give all parameters at that position a sequence number, or positions of their own.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><TVoid TypeRef="type_void"/></StreamParam>
  <StreamParam><ParamName ParamIdx="1seq1">Level</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kSecondSelector,
     .when = "The `PosX` of a case names another parameter than that of a case before it. A stream can have "
             "one selector only.",
     .becomes = "The case is left out, without 32. The stream stays.",
     .repair = "Select all cases of a stream by one parameter.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>
<StreamCase>
  <PosDescription PosX="Mode" PosY="2"/>
  <StreamParam><ParamName ParamIdx="1">Level</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>)",
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kNoTStream, .when = "A stream has no `TStream`.", .noExcerpt = kFoundBefore},
    {.message = &kStreamWithoutLength,
     .when = "A `TStream` has no attribute `Length`.",
     .becomes = "The stream is left out, with what it stands in.",
     .repair =
         "Write its length in bytes. If the catalog is one of MOST 2.5 or 3.0, set `FCatImportNewer=1`.",
     .frame = Frame::Type,
     .excerpt = R"(<TStream TypeRef="type_stream">
  <StreamCase>
    <PosDescription PosX="Kind" PosY="1"/>
    <StreamParam><ParamName ParamIdx="1">Bass</ParamName><TVoid TypeRef="type_void"/></StreamParam>
  </StreamCase>
</TStream>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .newer = "This is no fault: the stream ends with the message."},
    {.message = &kStreamWithoutType,
     .when = "A `TStream` has no attribute `TypeRef`.",
     .becomes = "The stream is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TStream Length="8"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kStreamWithoutCase,
     .when = "A `TStream` has no `StreamCase`.",
     .becomes = "The stream stays, without content.",
     .repair = "List its cases.",
     .frame = Frame::Type,
     .excerpt = R"(<TStream TypeRef="type_stream" Length="8"/>)"},
    {.message = &kStreamCaseFailed,
     .when = "A case could not be read. The message before it says why.",
     .becomes = kCaseLeftOut,
     .repair = "Mend what the message before it names.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase><PosDescription PosX="Kind" PosY="first"/></StreamCase>)",
     .behind = {17},
     .loss = Loss::Part,
     .isIncomplete = true},
    {.message = &kStreamCaseTwice,
     .when = "Two cases have the same `PosX` and `PosY`.",
     .becomes = "The second is left out. The stream stays.",
     .repair = "Put what both have into one case, or give each a `PosY` of its own.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>
<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Level</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>)",
     .loss = Loss::Part},
    {.message = &kStreamCasesOverlap,
     .when = "The `PosY` of two cases share a value.",
     .becomes = "Both stay. The disassembler reads the first that fits.",
     .repair = "Give each value to one case only.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1..3"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>
<StreamCase>
  <PosDescription PosX="Kind" PosY="3..5"/>
  <StreamParam><ParamName ParamIdx="1">Level</ParamName><TVoid TypeRef="type_void"/></StreamParam>
</StreamCase>)"},
    {.message = &kNoFktIDStream,
     .when = "The list of FunctionIDs has no `TStream`.",
     .noExcerpt = kFoundBefore},
    {.message = &kFktIDStreamWithoutType,
     .when = "The list of FunctionIDs (a stream whose name begins with \"FktID\", in the function 0x000) has "
             "no attribute `TypeRef`.",
     .becomes = kParameterLeftOut,
     .repair = "Give it a `TypeRef`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x000</FunctionID><FunctionName>FktIDs</FunctionName>
  <FunctionClass><Property><PUnclassified><PUParam>
    <ParamName>FktIDList</ParamName>
    <PUParamOPType><PReportStatus/></PUParamOPType>
    <PUParamType><TStream><StreamCase/></TStream></PUParamType>
  </PUParam></PUnclassified></Property></FunctionClass>
</Function>)",
     .followers = {129, 123},
     .loss = Loss::Operation,
     .isIncomplete = true},
    {.message = &kFktIDStreamWithoutCase,
     .when = "The list of FunctionIDs has no `StreamCase`.",
     .becomes = kParameterLeftOut,
     .repair = "Give it one `StreamCase`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x000</FunctionID><FunctionName>FktIDs</FunctionName>
  <FunctionClass><Property><PUnclassified><PUParam>
    <ParamName>FktIDList</ParamName>
    <PUParamOPType><PReportStatus/></PUParamOPType>
    <PUParamType><TStream TypeRef="type_stream"/></PUParamType>
  </PUParam></PUnclassified></Property></FunctionClass>
</Function>)",
     .followers = {129, 123},
     .loss = Loss::Operation,
     .isIncomplete = true},
    {.message = &kFktIDStreamCaseCount,
     .when = "The list of FunctionIDs has more than one `StreamCase`.",
     .becomes = kParameterLeftOut,
     .repair = "Leave one `StreamCase`.",
     .frame = Frame::Function,
     .excerpt = R"(<Function><FunctionID>0x000</FunctionID><FunctionName>FktIDs</FunctionName>
  <FunctionClass><Property><PUnclassified><PUParam>
    <ParamName>FktIDList</ParamName>
    <PUParamOPType><PReportStatus/></PUParamOPType>
    <PUParamType><TStream TypeRef="type_stream"><StreamCase/><StreamCase/></TStream></PUParamType>
  </PUParam></PUnclassified></Property></FunctionClass>
</Function>)",
     .followers = {129, 123},
     .loss = Loss::Operation,
     .isIncomplete = true},
};

}  // namespace tarvex::review
