#pragma once

#include <memory>

#include "catalog/catalog.h"
#include "catalog/test_nodes.h"
#include "params/array.h"
#include "params/bit_field.h"
#include "params/boolean.h"
#include "params/classified_stream.h"
#include "params/enumeration.h"
#include "params/fkt_id_bit_stream.h"
#include "params/number.h"
#include "params/record.h"
#include "params/short_stream.h"
#include "params/stream.h"
#include "params/stream_case.h"
#include "params/stream_signal.h"
#include "params/string.h"
#include "params/void.h"

namespace tarvex::test {

template <class T>
std::unique_ptr<ZMTNode> MakeNode() {
    return std::make_unique<T>();
}

struct ClassRow {
    const char* name;
    std::unique_ptr<ZMTNode> (*make)();
    int code;
};
/// One row for every class that is built.
inline constexpr ClassRow kClasses[] = {
    {"node", MakeNode<PlainNode>, 0},
    {"catalog", MakeNode<ZMTCatalog>, 1},
    {"function block", MakeNode<ZMTFBlock>, 2},
    {"function", MakeNode<ZMTFunction>, 3},
    {"operation", MakeNode<ZMTOperation>, 4},
    {"parameter", MakeNode<ZMTParam>, 5},
    {"stream", MakeNode<ZMTParamStream>, 6},
    {"stream case", MakeNode<ZMTParamStreamCase>, 7},
    {"array", MakeNode<ZMTParamArray>, 8},
    {"record", MakeNode<ZMTParamRecord>, 9},
    {"boolean", MakeNode<ZMTParamBool>, 10},
    {"bit", MakeNode<ZMTParamBoolField>, 11},
    {"number", MakeNode<ZMTParamNumber>, 13},
    {"enumeration", MakeNode<ZMTParamEnum>, 14},
    {"enumeration value", MakeNode<ZMTEnumValue>, 15},
    {"string", MakeNode<ZMTParamString>, 16},
    {"bit field", MakeNode<ZMTParamBitField>, 17},
    {"void", MakeNode<ZMTParamVoid>, 18},
    {"function-ID bit stream", MakeNode<ZMTParamFktIDBitStream>, 20},
    {"short stream", MakeNode<ZMTParamShortStream>, 21},
    {"classified stream", MakeNode<ZMTParamClassifiedStream>, 22},
    {"stream signal", MakeNode<ZMTParamStreamSignal>, 23},
    {"definitions", MakeNode<ZMTDefinition>, 100},
    {"definition", MakeNode<ZMTDef>, 101},
    {"type definition", MakeNode<ZMTDefType>, 102},
    {"unit definition", MakeNode<ZMTDefUnit>, 103},
    {"list of types", MakeNode<ZMTDefListType>, 111},
    {"list of units", MakeNode<ZMTDefListUnit>, 112},
};

}  // namespace tarvex::test
