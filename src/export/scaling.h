/// From the numbers of a catalog to the scalings of signals.

#pragma once

#include "import/text/run_allowance.h"
#include "kestrel/kestrel.h"
#include "params/number.h"

namespace tarvex {

/// A scaling with a unit of no bytes, in the format where it takes most.
inline constexpr Cost kScalingCost{100, 160, 160};

/// Factor, range, step and unit as the catalog gives them. The factor is 10 to the Exponent, which counts as
/// far as a double goes: from -307 to 308. A range that is not finite is left out, and so is a step that is
/// not, or is 0; a unit beyond 200 bytes is cut there. Coordinates have no unit.
sigscale ScalingOf(const ZMTParamNumber& number);

/// What the scaling of one signal takes of the run.
Cost CostOf(const sigscale& scaling);

}  // namespace tarvex
