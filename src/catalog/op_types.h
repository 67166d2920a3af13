/// The vocabulary of functions: classes, OPTypes, and the elements that name them.

#pragma once

#include <iterator>

namespace tarvex {

/// Whether a function is a property or a method decides what its OPTypes mean.
enum class ClassKind : unsigned { Unknown = 0, Property = 1, Method = 2, ErrorFunction = 3 };

/// A function class: the element that names it and the element that its parameters are written in. "P"
/// classes are properties, "M" classes methods.
struct FunctionClassRow {
    const char* element;
    const char* parameterElement;
};
inline constexpr FunctionClassRow kFunctionClasses[] = {
    /* 0 */ {"PUnclassified", "PUParam"},
    /* 1 */ {"PArray", "PAParam"},
    /* 2 */ {"PRecord", "PRParam"},
    /* 3 */ {"PSwitch", "PSParam"},
    /* 4 */ {"PNumber", "PNParam"},
    /* 5 */ {"PEnum", "PEParam"},
    /* 6 */ {"PText", "PTParam"},
    /* 7 */ {"MUnclassified", "MUParam"},
    /* 8 */ {"MTrigger", "MTParam"},
};
static_assert(std::size(kFunctionClasses) == 9);

/// Those of newer catalogs.
inline constexpr FunctionClassRow kNewerFunctionClasses[] = {
    {"PContainer", "PCParam"},
    {"PSequence", "PQParam"},
    {"MSequence", "MQParam"},
};

/// The elements that say which operations use a parameter: one per function class, and that of error
/// functions.
inline constexpr const char* kOpTypeElements[] = {
    "PUParamOPType", "PAParamOPType", "PRParamOPType", "PSParamOPType", "PNParamOPType",
    "PEParamOPType", "PTParamOPType", "MUParamOPType", "MTParamOPType", "ERParamOPType",
};
static_assert(std::size(kOpTypeElements) == 10);

/// Those of newer catalogs.
inline constexpr const char* kNewerOpTypeElements[] = {"PCParamOPType", "PQParamOPType", "MQParamOPType"};
static_assert(std::size(kNewerOpTypeElements) == std::size(kNewerFunctionClasses));

/// Stands for an operation element that is not defined yet. It never matches, not even itself.
inline constexpr const char* kNotYet = "XXXnotyetXXX";

/// An operation type: the elements that select it and the names of the operation, for properties and methods.
struct OpTypeRow {
    const char* propertyElement;
    const char* propertyName;
    const char* methodElement;
    const char* methodName;
};
inline constexpr OpTypeRow kOpTypes[] = {
    // the index is the OPType
    /*  0 */ {"PCmdSet", "Set", "MCmdStart", "Start"},
    /*  1 */ {"PCmdGet", "Get", "MCmdAbort", "Abort"},
    /*  2 */ {"PCmdSetGet", "SetGet", "MCmdStartResult", "StartResult"},
    /*  3 */ {"PCmdIncrement", "Increment", kNotYet, "OpType3"},
    /*  4 */ {"PCmdDecrement", "Decrement", kNotYet, "OpType4"},
    /*  5 */ {"PCmdGetInterface", "GetInterface", "MCmdGetInterface", "GetInterface"},
    /*  6 */ {kNotYet, "Reserved", "MCmdStartResultAck", "StartResultAck"},
    /*  7 */ {kNotYet, "OpType7", "MCmdAbortAck", "AbortAck"},
    /*  8 */ {kNotYet, "OpType8", "MCmdStartAck", "StartAck"},
    /*  9 */ {kNotYet, "OpType9", "MReportErrorAck", "ErrorAck"},
    /* 10 */ {kNotYet, "OpTypeA", "MReportProcessingAck", "ProcessingAck"},
    /* 11 */ {kNotYet, "OpTypeB", "MReportProcessing", "Processing"},
    /* 12 */ {"PReportStatus", "Status", "MReportResult", "Result"},
    /* 13 */ {kNotYet, "OpTypeD", "MReportResultAck", "ResultAck"},
    /* 14 */ {"PReportInterface", "Interface", "MReportInterface", "Interface"},
    /* 15 */ {"PReportError", "Error", "MReportError", "Error"},
};
static_assert(std::size(kOpTypes) == 16);

/// The name of an operation; empty for a function that is neither property nor method.
constexpr const char* OperationName(ClassKind kind, unsigned opType) {
    switch (kind) {
        case ClassKind::Property:
            return kOpTypes[opType].propertyName;
        case ClassKind::Method:
            return kOpTypes[opType].methodName;
        case ClassKind::Unknown:
        case ClassKind::ErrorFunction:
            break;
    }
    return "";
}

/// Functions of this name prefix are error functions: templates whose parameters others merge in.
inline constexpr const char* kErrorFunctionPrefix = "Temp_ERFunction_";

}  // namespace tarvex
