/// Differences between the parts of parameters that are no parameters themselves: values, bits and cases.

#pragma once

#include <string>

#include "params/bit_field.h"
#include "params/case_stream.h"
#include "params/enumeration.h"
#include "review/diff_params.h"

namespace tarvex::review {

// Each compares a parameter with its new version, which is of the same kind.

/// Values are found by code and name, names may move to other codes.
void CompareValues(const ZMTParamEnum& before, const Way& after, FunctionChanges& changes);
/// Bits likewise, by position and name; one without a name goes by its texts.
void CompareBits(const ZMTParamBitField& before, const Way& after, FunctionChanges& changes);
/// Cases are found by the selector's values, then by the names of their members.
void CompareCases(const ZMTParamCaseStream& before, const Way& after, FunctionChanges& changes);

/// "from Track on" for a group of members that repeats; empty for none.
std::string RepetitionText(const ZMTParamStreamCase& streamCase);

}  // namespace tarvex::review
