#include "review/check.h"

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

}  // namespace

bool CheckCatalogs(const std::vector<std::string>& paths, const CheckOptions& options, CheckReport& report) {
    const bool hasBaseline = !options.baselinePath.empty() && !options.writesBaseline;
    Baseline known = hasBaseline ? Baseline::Read(options.baselinePath) : Baseline();
    bool hasFailed = false;
    for (const std::string& path : paths) {
        const CatalogReading reading(path, options.reading);
        const Verdicts verdicts = VerdictsOf(reading);
        CheckedCatalog checked{reading, verdicts, {}, 0};
        for (const Fault& fault : reading.Faults()) {
            if (options.ignored.contains(fault.number)) {
                continue;
            }
            if (options.writesBaseline) {
                known.Add(fault);
            }
            if (hasBaseline && known.Take(fault)) {
                ++checked.known;
                continue;
            }
            checked.faults.push_back(&fault);
            hasFailed = hasFailed || Counts(fault, options.failOn);
        }
        report.Catalog(checked);
    }
    report.End();
    if (options.writesBaseline) {
        known.Write(options.baselinePath);
        return false;
    }
    return hasFailed;
}

}  // namespace tarvex::review
