#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "catalog/op_types.h"
#include "kestrel/kestrel.h"

namespace tarvex {

inline constexpr const char* kBusType = "BusType";
inline constexpr const char* kMostXMLFile = "MostXMLFile";
inline constexpr const char* kFunctionAttribute = "Function";
inline constexpr const char* kFBlockAttribute = "FBlock";
inline constexpr const char* kFunctionClassAttribute = "FunctionClass";
inline constexpr const char* kOpTypeAttribute = "OpType";
inline constexpr const char* kMostNodeAdr = "MostNodeAdr";

/// An attribute of the database: integers have a range and a number as default, the others a text.
struct AttributeRow {
    const char* name;
    AttrObject object;
    AttrType type;
    double maximum;        // integer; the minimum is always 0
    double defaultNumber;  // integer
    const char* values;    // enumeration: the names, joined with "\n"
    const char* defaultText;
};

/// The attribute definitions in the order in which they are created.
inline constexpr AttributeRow kAttributes[] = {
    {kBusType, AttrObject::Database, AttrType::String, 0, 0, nullptr, ""},
    {kMostXMLFile, AttrObject::Database, AttrType::String, 0, 0, nullptr, ""},
    {"MostInstId", AttrObject::Message, AttrType::Integer, 255, 0, nullptr, nullptr},
    {"MostDestAdr", AttrObject::Message, AttrType::Integer, 65535, 0, nullptr, nullptr},
    {"MostSrcAdr", AttrObject::Message, AttrType::Integer, 65535, 0, nullptr, nullptr},
    {kFunctionAttribute, AttrObject::Message, AttrType::String, 0, 0, nullptr, ""},
    {kFBlockAttribute, AttrObject::Message, AttrType::String, 0, 0, nullptr, "GeneralBlock"},
    {kFunctionClassAttribute, AttrObject::Message, AttrType::Enumeration, 0, 0, "Property\nMethod",
     "Property"},
    {kOpTypeAttribute, AttrObject::Message, AttrType::Enumeration, 0, 0,
     "Set\nGet\nSetGet\nIncrement\nDecrement\nGetInterface\nStatus\nInterface\nError\nStart\nAbort\nStartResu"
     "lt\n"
     "StartResultAck\nErrorAck\nProcessing\nResult\nResultAck\nReserved\nNDef\nProcessingAck\nAbortAck\nStart"
     "Ack",
     "NDef"},
    {kMostNodeAdr, AttrObject::Node, AttrType::Integer, 65535, 65535, nullptr, nullptr},
};
static_assert(std::size(kAttributes) == 10);

/// Index of "NDef" among the values of "OpType".
inline constexpr unsigned kNDef = 18;

/// The values of "OpType" by OPType, for properties and for methods.
struct OpTypeValueRow {
    unsigned property;
    unsigned method;
};
inline constexpr OpTypeValueRow kOpTypeValues[] = {
    /*  0 */ {0, 9},       // Set, Start
    /*  1 */ {1, 10},      // Get, Abort
    /*  2 */ {2, 11},      // SetGet, StartResult
    /*  3 */ {3, kNDef},   // Increment
    /*  4 */ {4, kNDef},   // Decrement
    /*  5 */ {5, 5},       // GetInterface
    /*  6 */ {17, 12},     // Reserved, StartResultAck
    /*  7 */ {kNDef, 20},  // AbortAck
    /*  8 */ {kNDef, 21},  // StartAck
    /*  9 */ {kNDef, 13},  // ErrorAck
    /* 10 */ {kNDef, 19},  // ProcessingAck
    /* 11 */ {kNDef, 14},  // Processing
    /* 12 */ {6, 15},      // Status, Result
    /* 13 */ {kNDef, 16},  // ResultAck
    /* 14 */ {7, 7},       // Interface
    /* 15 */ {8, 8},       // Error
};
static_assert(std::size(kOpTypeValues) == std::size(kOpTypes));

/// The index of the "OpType" value; NDef for other OPTypes and other kinds of function.
constexpr unsigned OpTypeValue(ClassKind kind, unsigned opType) {
    if (opType >= std::size(kOpTypeValues)) {
        return kNDef;
    }
    switch (kind) {
        case ClassKind::Property:
            return kOpTypeValues[opType].property;
        case ClassKind::Method:
            return kOpTypeValues[opType].method;
        case ClassKind::Unknown:
        case ClassKind::ErrorFunction:
            break;
    }
    return kNDef;
}

/// A copy of the text that the writer library takes over.
char* GiveToKestrel(std::string_view text);

/// A value for an integer or enumeration attribute, and one for a string attribute.
kestrel_attr_value_t NumberValue(double number);
kestrel_attr_value_t TextValue(std::string_view text);

/// Copies a name into a record, cut at the size of its array.
void CopyName(char (&name)[kNameSize], std::string_view text);

/// Creates all attribute definitions of a database and sets the database's own values: the bus type, and the
/// catalog's file name with its extension.
void DefineAttributes(KestrelWriteManager& writer, const char* database, const std::string& catalogFileName);

}  // namespace tarvex
