#include "review/check.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "review/baseline.h"

namespace tarvex::review {
namespace {

bool Counts(const Fault& fault, FailOn failOn) {
    switch (failOn) {
        case FailOn::Error:
            return fault.kind != Kind::Warning;
        case FailOn::Warning:
            return true;
        case FailOn::Never:
            break;
    }
    return false;
}

/// Tells one catalog. What a baseline has to know of it goes into `written`. True when a fault counts.
bool CheckCatalog(const CatalogReading& reading, const CheckOptions& options, Baseline known,
                  Baseline& written, CheckReport& report) {
    const Verdicts verdicts = VerdictsOf(reading);
    CheckedCatalog checked{reading, verdicts, {}, 0};
    bool hasFailed = false;
    for (const Fault& fault : reading.Faults()) {
        if (options.ignored.contains(fault.number)) {
            continue;
        }
        written.Add(fault);
        if (known.Take(fault)) {
            ++checked.known;
            continue;
        }
        checked.faults.push_back(&fault);
        hasFailed = hasFailed || Counts(fault, options.failOn);
    }
    report.Catalog(checked);
    return hasFailed;
}

}  // namespace

CheckResult CheckCatalogs(const std::vector<std::string>& paths, const CheckOptions& options,
                          CheckReport& report) {
    if (std::ranges::count(paths, "-") > 1) {
        throw std::runtime_error("standard input can be one of the catalogs, not several");
    }
    const bool hasBaseline = !options.baselinePath.empty() && !options.writesBaseline;
    const Baseline known = hasBaseline ? Baseline::Read(options.baselinePath) : Baseline();
    Baseline all;
    CheckResult result;
    for (const std::string& path : paths) {
        std::optional<CatalogReading> reading;
        try {
            reading.emplace(path, options.reading);
        } catch (const std::runtime_error& error) {
            result.troubles.emplace_back(error.what());
            continue;
        }
        Baseline written;
        result.hasFailed |= CheckCatalog(*reading, options, known, written, report);
        all.Join(written);
    }
    report.End();
    if (options.writesBaseline && result.troubles.empty()) {
        all.Write(options.baselinePath);
        result.hasFailed = false;
    }
    return result;
}

}  // namespace tarvex::review
