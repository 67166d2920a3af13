/// The MOST attributes of the database: their definitions and values.

#pragma once

#include <iterator>
#include <span>
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
inline constexpr const char* kLayoutAttribute = "Layout";

/// The values of "FunctionClass" and "OpType"; messages store the index.
inline constexpr const char* kFunctionClassValues[] = {
    /* 0 */ "Property",
    /* 1 */ "Method",
};
inline constexpr const char* kOpTypeValues[] = {
    /*  0 */ "Set",
    /*  1 */ "Get",
    /*  2 */ "SetGet",
    /*  3 */ "Increment",
    /*  4 */ "Decrement",
    /*  5 */ "GetInterface",
    /*  6 */ "Status",
    /*  7 */ "Interface",
    /*  8 */ "Error",
    /*  9 */ "Start",
    /* 10 */ "Abort",
    /* 11 */ "StartResult",
    /* 12 */ "StartResultAck",
    /* 13 */ "ErrorAck",
    /* 14 */ "Processing",
    /* 15 */ "Result",
    /* 16 */ "ResultAck",
    /* 17 */ "Reserved",
    /* 18 */ "NDef",
    /* 19 */ "ProcessingAck",
    /* 20 */ "AbortAck",
    /* 21 */ "StartAck",
};
inline constexpr unsigned kNDef = 18;
static_assert(std::size(kOpTypeValues) == 22 && std::string_view(kOpTypeValues[kNDef]) == "NDef");

/// An attribute of the database: integers have a range and a number as default, the others a text.
struct AttributeRow {
    std::string_view name;
    AttrObject object;
    AttrType type;
    double maximum;                       // integer; the minimum is always 0
    double defaultNumber;                 // integer
    std::span<const char* const> values;  // enumeration
    std::string_view defaultText;
};

/// The attribute definitions in the order in which they are created.
inline constexpr AttributeRow kAttributes[] = {
    {kBusType, AttrObject::Database, AttrType::String, 0, 0, {}, ""},
    {kMostXMLFile, AttrObject::Database, AttrType::String, 0, 0, {}, ""},
    {"MostInstId", AttrObject::Message, AttrType::Integer, 255, 0, {}, ""},
    {"MostDestAdr", AttrObject::Message, AttrType::Integer, 65535, 0, {}, ""},
    {"MostSrcAdr", AttrObject::Message, AttrType::Integer, 65535, 0, {}, ""},
    {kFunctionAttribute, AttrObject::Message, AttrType::String, 0, 0, {}, ""},
    {kFBlockAttribute, AttrObject::Message, AttrType::String, 0, 0, {}, "GeneralBlock"},
    {kFunctionClassAttribute, AttrObject::Message, AttrType::Enumeration, 0, 0, kFunctionClassValues,
     "Property"},
    {kOpTypeAttribute, AttrObject::Message, AttrType::Enumeration, 0, 0, kOpTypeValues, "NDef"},
    {kMostNodeAdr, AttrObject::Node, AttrType::Integer, 65535, 65535, {}, ""},
};
static_assert(std::size(kAttributes) == 10);

/// How much of each message its signals cover, where that is asked for; the values of the enumeration Layout.
inline constexpr const char* kLayoutValues[] = {
    /* 0 */ "Complete",
    /* 1 */ "Open",
    /* 2 */ "Incomplete",
};
inline constexpr AttributeRow kLayoutDefinition = {
    kLayoutAttribute, AttrObject::Message, AttrType::Enumeration, 0, 0, kLayoutValues, "Complete"};

/// The indices of the "OpType" values by OPType, for properties and for methods.
struct OpTypeIndexRow {
    unsigned property;
    unsigned method;
};
inline constexpr OpTypeIndexRow kOpTypeIndices[] = {
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
static_assert(std::size(kOpTypeIndices) == std::size(kOpTypes));

/// The index of the "OpType" value; NDef for other OPTypes and other kinds of function.
constexpr unsigned OpTypeValue(ClassKind kind, unsigned opType) {
    if (opType >= std::size(kOpTypeIndices)) {
        return kNDef;
    }
    switch (kind) {
        case ClassKind::Property:
            return kOpTypeIndices[opType].property;
        case ClassKind::Method:
            return kOpTypeIndices[opType].method;
        case ClassKind::Unknown:
        case ClassKind::ErrorFunction:
            break;
    }
    return kNDef;
}

/// Creates one attribute definition behind those that the database has; null without a database.
attr_def* DefineAttribute(KestrelWriteManager& writer, const char* database, const AttributeRow& row);

/// Creates all attribute definitions of a database and sets the database's own values: the bus type, and the
/// catalog's file name with its extension.
void DefineAttributes(KestrelWriteManager& writer, const char* database, const std::string& catalogFileName);

}  // namespace tarvex
