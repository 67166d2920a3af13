/// The run of tarvex-disasm: catalog, captures, report.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "disasm/report.h"
#include "disasm/traffic_stats.h"
#include "driver/catalog_import.h"

namespace tarvex {

/// What a run of the disassembler comes to, as its exit status.
enum DisasmStatus : int {
    kDisasmClean = 0,
    /// A line was no message, or a message did not fit the catalog.
    kDisasmFaults = 1,
    /// The catalog or a capture could not be read, or the output not be written.
    kDisasmTrouble = 2,
};

/// What a run is asked for beside the catalog and the captures.
struct DisasmOptions {
    CatalogForms forms;
    /// Columns of tables without a header; empty for none.
    std::string columns;
    /// Which messages are told, as MessageFilter takes it; all when there is nothing.
    std::vector<std::string> only;
    /// Tables of addresses in place of the messages.
    std::optional<StatsFormat> stats;
    /// How long the next segment of a message may take; nothing for the usual time.
    std::optional<double> segmentSeconds;
};

/// Decodes the messages of capture files ("-" and none at all mean standard input) with a catalog, and writes
/// the report to standard output as it goes. Problems of the catalog are told on standard error in one line,
/// and at the end how many messages there were.
DisasmStatus RunDisasm(const std::string& catalogPath, const std::vector<std::string>& captures,
                       const Report& report, const DisasmOptions& options = {});

}  // namespace tarvex
