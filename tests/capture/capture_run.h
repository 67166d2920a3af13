/// Captures as the disassembler reads them.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "capture/segment_joiner.h"
#include "disasm/decoding.h"
#include "disasm/report.h"

namespace tarvex::test {

/// What a capture says by a catalog, in the words of a report.
std::string ReportOfCapture(const ZMTCatalog& catalog, std::string_view capture, const Report& report,
                            std::string_view columns = {});

/// What comes out of a joiner: "5: 22.01.400.C 0102" for a message that begins in line 5, with "!" and what
/// is wrong behind one that is broken.
std::vector<std::string> Joined(const std::vector<CapturedMessage>& messages,
                                const SegmentBounds& bounds = {});

}  // namespace tarvex::test
