/// Messages about the forms that newer catalogs have.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfNewerForms[] = {
    {.message = &kNoTShortStream, .when = "A short stream has no `TShortStream`.", .noExcerpt = kFoundBefore},
    {.message = &kShortStreamWithoutType,
     .when = "A `TShortStream` has no attribute `TypeRef`.",
     .becomes = "The short stream is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TShortStream MaxLength="8"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kMaxLengthUnreadable,
     .when = "The `MaxLength` of a `TShortStream` or `TCStream` is no number.",
     .becomes = "The stream stays, without a limit.",
     .repair = "Write how many bytes it has at most, or leave `MaxLength` out.",
     .frame = Frame::Type,
     .excerpt = R"(<TShortStream TypeRef="type_shortstream" MaxLength="long"/>)",
     .isNewer = true},
    {.message = &kNoTCStream, .when = "A classified stream has no `TCStream`.", .noExcerpt = kFoundBefore},
    {.message = &kClassifiedStreamWithoutType,
     .when = "A `TCStream` has no attribute `TypeRef`.",
     .becomes = "The classified stream is left out, with what it stands in.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TCStream MediaType="text/plain"/>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalWithoutName,
     .when = "A `StreamSignal` has no `SignalName`, or an empty one.",
     .becomes = kCaseLeftOut,
     .repair = "Give it a `SignalName`.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalBitLength>3</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {212, 32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalWithoutIdx,
     .when = "A `SignalName` has no attribute `SignalIdx`.",
     .becomes = kCaseLeftOut,
     .repair = "Number the signals of a case from 1 on with `SignalIdx`.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName>Lift</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {212, 32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalIdxOutOfRange,
     .when = "A `SignalIdx` is outside 1 to 4095, or no number.",
     .becomes = kCaseLeftOut,
     .repair = "Number the signals of a case from 1 on, not from 0.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="0">Lift</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {212, 32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalWithoutLength,
     .when = "A `StreamSignal` has no `SignalBitLength`, or an empty one.",
     .becomes = kCaseLeftOut,
     .repair = "Write how many bits it has.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName></StreamSignal>
</StreamCase>)",
     .followers = {212, 32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalLengthUnreadable,
     .when = "A `SignalBitLength` is no number.",
     .becomes = kCaseLeftOut,
     .repair = "Write how many bits it has, as a number.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName><SignalBitLength>three</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {212, 32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalLengthOutOfRange,
     .when = "A `SignalBitLength` is outside 1 to 32.",
     .becomes = kCaseLeftOut,
     .repair = "Make several signals of one that is longer than 32 bits.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName><SignalBitLength>33</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {212, 32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalFailed,
     .when = "A `StreamSignal` could not be read. The message before it says why.",
     .becomes = kCaseLeftOut,
     .repair = "Mend what the message before it names.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName></StreamSignal>
</StreamCase>)",
     .behind = {209},
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalTwice,
     .when = "Two signals of a case have the same `SignalIdx`.",
     .becomes = "The second is left out, the case stays.",
     .repair = "Number the signals of a case 1, 2, 3, ...",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
  <StreamSignal><SignalName SignalIdx="1">Fold</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
</StreamCase>)",
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kGapInStreamSignals,
     .when = "The `SignalIdx` of a case are not 1, 2, 3, ...",
     .becomes = kCaseLeftOut,
     .repair = "Number the signals without a gap. Look for one that has been deleted.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
  <StreamSignal><SignalName SignalIdx="3">Fold</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
    {.message = &kStreamSignalsAndParams,
     .when = "A case has `StreamParam` and `StreamSignal`.",
     .becomes = kCaseLeftOut,
     .repair = "Describe the content of a case in one of the two ways.",
     .frame = Frame::StreamCase,
     .excerpt = R"(<StreamCase>
  <PosDescription PosX="Kind" PosY="1"/>
  <StreamParam><ParamName ParamIdx="1">Bass</ParamName><ParamType><TVoid TypeRef="type_void"/></ParamType></StreamParam>
  <StreamSignal><SignalName SignalIdx="1">Lift</SignalName><SignalBitLength>3</SignalBitLength></StreamSignal>
</StreamCase>)",
     .followers = {32},
     .loss = Loss::Part,
     .isIncomplete = true,
     .isNewer = true},
};

}  // namespace tarvex::review
