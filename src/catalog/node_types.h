/// The fixed type codes of node classes.

#pragma once

namespace tarvex {

/// The code of every node class. Exporter and parameter code compare these; the numbers never move.
enum NodeType : int {
    kNodeBase = 0,
    kCatalog = 1,
    kFBlock = 2,
    kFunction = 3,
    kOperation = 4,
    kParam = 5,
    kParamStream = 6,
    kParamStreamCase = 7,
    kParamArray = 8,
    kParamRecord = 9,
    kParamBool = 10,
    kParamBoolField = 11,
    kParamNumber = 13,
    kParamEnum = 14,
    kEnumValue = 15,
    kParamString = 16,
    kParamBitField = 17,
    kParamVoid = 18,
    kParamFktIDBitStream = 20,
    kParamShortStream = 21,
    kParamClassifiedStream = 22,
    kParamStreamSignal = 23,
    kDefinition = 100,
    kDef = 101,
    kDefType = 102,
    kDefUnit = 103,
    kDefListType = 111,
    kDefListUnit = 112,
};

/// The kinds of parameters among them. A switch over these names each, without a default, so that the
/// compiler finds every place that a new kind has to be added to.
enum class ParamKind : int {
    Base = kParam,
    Stream = kParamStream,
    StreamCase = kParamStreamCase,
    Array = kParamArray,
    Record = kParamRecord,
    Bool = kParamBool,
    BoolField = kParamBoolField,
    Number = kParamNumber,
    Enum = kParamEnum,
    String = kParamString,
    BitField = kParamBitField,
    Void = kParamVoid,
    FktIDBitStream = kParamFktIDBitStream,
    ShortStream = kParamShortStream,
    ClassifiedStream = kParamClassifiedStream,
    StreamSignal = kParamStreamSignal,
};

}  // namespace tarvex
