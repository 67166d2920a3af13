/// Messages about numbers and enumerations.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfNumbers[] = {
    {.message = &kNoTNumber, .when = "A number has no `TNumber`.", .noExcerpt = kFoundBefore},
    {.message = &kNumberWithoutExponent,
     .when = "A `TNumber` has no `Exponent`, or an empty one.",
     .becomes = "The number stays, with the exponent 0: it counts whole units.",
     .repair = "Write the exponent: the number of decimals, below 0 for fractions. -1 stands for tenths.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
  <RangeMin>0</RangeMin><RangeMax>100</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/>
</TNumber>)"},
    {.message = &kNumberWithoutRangeMin,
     .when = "A `TNumber` has no `RangeMin`, or an empty one. Where newer forms are read, only one that has "
             "a `RangeMax`.",
     .becomes = "The number stays, with a `RangeMin` of 0. Its signal gets no range.",
     .repair = "Write the smallest value.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
  <Exponent>0</Exponent><RangeMax>100</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/>
</TNumber>)"},
    {.message = &kNumberWithoutRangeMax,
     .when = "A `TNumber` has no `RangeMax`, or an empty one. Where newer forms are read, only one that has "
             "a `RangeMin`.",
     .becomes = "The number stays, with a `RangeMax` of 0. Its signal gets no range.",
     .repair = "Write the largest value.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
  <Exponent>0</Exponent><RangeMin>0</RangeMin><Step>1</Step><Unit UnitRef="unit_none"/>
</TNumber>)"},
    {.message = &kNumberWithoutStep,
     .when = "A `TNumber` has no `Step`, or an empty one.",
     .becomes = "The number stays, with a step of 0. Its signal gets no step.",
     .repair = "Write the smallest difference between two values.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
  <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>100</RangeMax><Unit UnitRef="unit_none"/>
</TNumber>)"},
    {.message = &kNumberWithoutBasisType,
     .when = "A `TNumber` has no `BasisDataType`.",
     .becomes = "The number is left out, with what it stands in.",
     .repair =
         "Write its type, which says how many bytes it takes: `<BasisDataType><TUByte TypeRef=\"...\"/>`.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>100</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/>
</TNumber>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kNumberWithoutUnit,
     .when = "A `TNumber` has no `Unit` with a `UnitRef`.",
     .becomes = "The number is left out, with what it stands in.",
     .repair = "Refer to a unit. One that stands for having none will do.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
  <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>100</RangeMax><Step>1</Step>
</TNumber>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kPosSizeNotTwo,
     .when = "A number called `Pos`, which chooses what an array or record holds, is not two bytes long.",
     .becomes = "The number stays. Its signal is an ordinary one, and no multiplexor of a record behind it.",
     .repair = "Give it a type of two bytes, or another name.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Pos</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TNumber>
    <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
    <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>9</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/>
  </TNumber></PUParamType>
</PUParam>)"},
    {.message = &kPosExponentNotZero,
     .when = "A number called `Pos`, which chooses what an array or record holds, has an `Exponent` other "
             "than 0.",
     .becomes = "The number stays, with that exponent.",
     .repair = "Set the `Exponent` to 0, or give it another name.",
     .frame = Frame::Parameter,
     .excerpt = R"(<PUParam>
  <ParamName>Pos</ParamName>
  <PUParamOPType><PReportStatus><ParamPos>3</ParamPos></PReportStatus></PUParamOPType>
  <PUParamType><TNumber>
    <BasisDataType><TUWord TypeRef="type_unsigned_word"/></BasisDataType>
    <Exponent>1</Exponent><RangeMin>0</RangeMin><RangeMax>9</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/>
  </TNumber></PUParamType>
</PUParam>)"},
    {.message = &kBasisTypeNotFound,
     .when = "The type that a `BasisDataType` refers to is not defined.",
     .becomes = "The number is left out, with what it stands in.",
     .repair = "Add a `TypeDef` with that `TypeID`, or correct the `TypeRef`. See whether 2 was told before.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_missing"/></BasisDataType>
  <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>100</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/>
</TNumber>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
    {.message = &kUnitNotFound,
     .when = "The unit that a `TNumber` refers to is not defined.",
     .becomes = "The number is left out, with what it stands in.",
     .repair = "Add a `UnitDef` with that `UnitID`, or correct the `UnitRef`. See whether 5 was told before.",
     .frame = Frame::Type,
     .excerpt = R"(<TNumber>
  <BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>
  <Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>100</RangeMax><Step>1</Step><Unit UnitRef="unit_missing"/>
</TNumber>)",
     .followers = {129},
     .loss = Loss::Parameter,
     .isIncomplete = true},
};

inline constexpr Explanation kOfEnumerations[] = {
    {.message = &kEnumValueWithoutCode,
     .when = "A `TEnumValue` has no attribute `Code`.",
     .becomes = "The value is left out, the enumeration stays.",
     .repair = "Give it a `Code`.",
     .frame = Frame::Type,
     .excerpt = R"(<TEnum TypeRef="type_enum" TEnumMax="10"><TEnumValue>Play</TEnumValue></TEnum>)",
     .followers = {81},
     .loss = Loss::Part},
    {.message = &kEnumCodeUnreadable,
     .when = "The `Code` of a `TEnumValue` is neither a number nor a range.",
     .becomes = "The value is left out, the enumeration stays.",
     .repair = "Write a code (`3`, `0x03`), a range (`3..7`), or `>3` for all above.",
     .frame = Frame::Type,
     .excerpt =
         R"(<TEnum TypeRef="type_enum" TEnumMax="10"><TEnumValue Code="first">Play</TEnumValue></TEnum>)",
     .followers = {81},
     .loss = Loss::Part},
    {.message = &kNoTEnum, .when = "An enumeration has no `TEnum`.", .noExcerpt = kFoundBefore},
    {.message = &kEnumWithoutMax,
     .when = "A `TEnum` has no attribute `TEnumMax`.",
     .becomes = "The enumeration stays, with a `TEnumMax` of 255: it takes one byte.",
     .repair =
         "Write the largest code that there may be: one up to 255 makes an enumeration of one byte, one "
         "above that one of two. If the catalog is one of MOST 2.5 or 3.0, set `FCatImportNewer=1`.",
     .frame = Frame::Type,
     .excerpt = R"(<TEnum TypeRef="type_enum"><TEnumValue Code="0">Play</TEnumValue></TEnum>)",
     .followers = {79},
     .newer = "This is no fault: the enumeration takes two bytes where a code is above 255, else one."},
    {.message = &kEnumMaxUnreadable,
     .when = "`TEnumMax` is no number above 0.",
     .becomes = "The enumeration stays, with a `TEnumMax` of 255: it takes one byte.",
     .repair = "Write the largest code that there may be. See that codes above 255 are not lost.",
     .frame = Frame::Type,
     .excerpt =
         R"(<TEnum TypeRef="type_enum" TEnumMax="many"><TEnumValue Code="0">Play</TEnumValue></TEnum>)"},
    {.message = &kEnumWithoutType,
     .when = "A `TEnum` has no attribute `TypeRef`.",
     .becomes = "The enumeration stays, without values.",
     .repair = "Give it a `TypeRef`. Nothing depends on whether that type is defined.",
     .frame = Frame::Type,
     .excerpt = R"(<TEnum TEnumMax="10"><TEnumValue Code="0">Play</TEnumValue></TEnum>)",
     .loss = Loss::Part},
    {.message = &kEnumValueFailed,
     .when = "A `TEnumValue` could not be read. The message before it says why.",
     .becomes = "The value is left out, the enumeration stays.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Type,
     .excerpt = R"(<TEnum TypeRef="type_enum" TEnumMax="10"><TEnumValue>Play</TEnumValue></TEnum>)",
     .behind = {75},
     .loss = Loss::Part},
    {.message = &kEnumMaxOutOfRange,
     .when = "`TEnumMax` is above 65535.",
     .becomes = "The enumeration stays, with a `TEnumMax` of 65535: it takes two bytes.",
     .repair = "Write the largest code that there may be.",
     .frame = Frame::Type,
     .excerpt =
         R"(<TEnum TypeRef="type_enum" TEnumMax="70000"><TEnumValue Code="0">Play</TEnumValue></TEnum>)"},
    {.message = &kEnumCodeOutOfRange,
     .when = "A code is above `TEnumMax`.",
     .becomes = "The value stays. Whether codes overlap (85) is not looked at.",
     .repair = "Raise `TEnumMax`, or correct the code.",
     .frame = Frame::Type,
     .excerpt = R"(<TEnum TypeRef="type_enum" TEnumMax="10"><TEnumValue Code="11">Play</TEnumValue></TEnum>)",
     .newer = "Raised only for a code that does not fit the bytes that the enumeration takes."},
    {.message = &kEnumCodesOverlap,
     .when = "The first or last code of a value is also one of a later value.",
     .becomes = "Both stay: the signal has two texts for the code. The disassembler shows the first.",
     .repair = "Give each code to one value only.",
     .frame = Frame::Type,
     .excerpt = R"(<TEnum TypeRef="type_enum" TEnumMax="10">
  <TEnumValue Code="1">Play</TEnumValue>
  <TEnumValue Code="0..5">Stop</TEnumValue>
</TEnum>)"},
};

}  // namespace tarvex::review
