/// The run of tarvex-disasm: catalog, captures, report.

#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "disasm/report.h"
#include "import/text/allowance.h"

namespace tarvex {

/// What a run of the disassembler comes to, as its exit status.
enum DisasmStatus : int {
    kDisasmClean = 0,
    /// A line was no message, or a message did not fit the catalog.
    kDisasmFaults = 1,
    /// The catalog or a capture could not be read, or the output not be written.
    kDisasmTrouble = 2,
};

/// How catalogs are read: unless told otherwise whatever their version, and without regard to their DTD.
struct CatalogForms {
    bool areNewerRead = true;
    bool areValidated = false;
};

/// How much a run says of messages, by the bytes of the captures. Some thousand parameters without a byte of
/// their own would make megabytes of every line otherwise. The messages of the example take a sixteenth
/// of it.
inline constexpr Bound kReportBytes{std::size_t{64} << 20, 256};

/// Decodes the messages of capture files ("-" and none at all mean standard input) with a catalog, and writes
/// the report to standard output as it goes. Problems of the catalog are told on standard error in one line.
DisasmStatus RunDisasm(const std::string& catalogPath, const std::vector<std::string>& captures,
                       const Report& report, const CatalogForms& forms = {});

}  // namespace tarvex
