/// Messages about types and units.

#pragma once

#include "import/log/messages.h"
#include "review/explanations/explanation.h"

namespace tarvex::review {

inline constexpr Explanation kOfDefinitions[] = {
    {.message = &kTypeDefWithoutName,
     .when = "A `TypeDef` has no `TDefName`, or an empty one.",
     .becomes = "The type stays, with an empty name. Parameters find it by its `TypeID`.",
     .repair = "Give it a `TDefName`.",
     .frame = Frame::Definition,
     .excerpt = R"(<TypeDef TypeID="type_gain"><TDefSize>1</TDefSize></TypeDef>)"},
    {.message = &kTypeDefWithoutId,
     .when = "A `TypeDef` has no attribute `TypeID`.",
     .becomes = "The type is left out. Numbers that refer to it fail with 151.",
     .repair = "Give it the `TypeID` that the parameters refer to.",
     .frame = Frame::Definition,
     .excerpt = R"(<TypeDef><TDefName>Gain</TDefName><TDefSize>1</TDefSize></TypeDef>)",
     .followers = {7},
     .loss = Loss::Definition},
    {.message = &kTypeDefWithoutSize,
     .when = "A `TypeDef` has no `TDefSize`, or an empty one.",
     .becomes = "The type stays, with a size of 0 bytes. A number of this type takes no room in its message, "
                "and what stands behind it moves up. With `SafeLayout=1` signals end in front of it.",
     .repair = "Write the bytes that a value takes into `TDefSize`.",
     .frame = Frame::Definition,
     .excerpt = R"(<TypeDef TypeID="type_gain"><TDefName>Gain</TDefName></TypeDef>)"},
    {.message = &kUnitDefWithoutName,
     .when = "A `UnitDef` has no `UnitDefName`, or an empty one.",
     .becomes = "The unit stays, with an empty name. Numbers that refer to it show no unit.",
     .repair = "Give it a `UnitDefName`.",
     .frame = Frame::Definition,
     .excerpt = R"(<UnitDef UnitID="unit_bar"><UnitDefCode>0x10</UnitDefCode></UnitDef>)"},
    {.message = &kUnitDefWithoutId,
     .when = "A `UnitDef` has no attribute `UnitID`.",
     .becomes = "The unit is left out. Numbers that refer to it fail with 152.",
     .repair = "Give it the `UnitID` that the numbers refer to.",
     .frame = Frame::Definition,
     .excerpt = R"(<UnitDef><UnitDefName>bar</UnitDefName><UnitDefCode>0x10</UnitDefCode></UnitDef>)",
     .followers = {8},
     .loss = Loss::Definition},
    {.message = &kUnitDefWithoutCode,
     .when = "A `UnitDef` has no `UnitDefCode`, or an empty one.",
     .becomes = "The unit stays, with the code 0. Only the tree log shows the code.",
     .repair = "Give it a `UnitDefCode`.",
     .frame = Frame::Definition,
     .excerpt = R"(<UnitDef UnitID="unit_bar"><UnitDefName>bar</UnitDefName></UnitDef>)"},
    {.message = &kTypeDefFailed,
     .when = "A `TypeDef` could not be read. The message before it says why.",
     .becomes = "The type is left out.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Definition,
     .excerpt = R"(<TypeDef><TDefName>Gain</TDefName><TDefSize>1</TDefSize></TypeDef>)",
     .behind = {2},
     .loss = Loss::Definition},
    {.message = &kUnitDefFailed,
     .when = "A `UnitDef` could not be read. The message before it says why.",
     .becomes = "The unit is left out.",
     .repair = "Mend what the message before it names.",
     .frame = Frame::Definition,
     .excerpt = R"(<UnitDef><UnitDefName>bar</UnitDefName><UnitDefCode>0x10</UnitDefCode></UnitDef>)",
     .behind = {5},
     .loss = Loss::Definition},
};

}  // namespace tarvex::review
