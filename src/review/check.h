/// What is wrong with catalogs: every fault with its place, and what it cost.

#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "drawing/style.h"
#include "review/catalog_reading.h"
#include "review/print.h"
#include "review/verdicts.h"

namespace tarvex::review {

/// Which faults make a check fail. Fatal errors count as errors.
enum class FailOn { Error, Warning, Never };

struct CheckOptions {
    ReadingOptions reading;
    std::set<unsigned> ignored;  ///< Numbers of messages that are not told.
    FailOn failOn = FailOn::Warning;
    std::string baselinePath;     ///< Faults that are known; empty for none.
    bool writesBaseline = false;  ///< All faults become known.
};

/// One catalog, and the faults that are told: not ignored, not known.
struct CheckedCatalog {
    const CatalogReading& reading;
    const Verdicts& verdicts;
    std::vector<const Fault*> faults;
    std::size_t known = 0;  ///< Faults that the baseline has.
};

/// A form in which checks are told.
class CheckReport {
  public:
    explicit CheckReport(Print print) : print_(std::move(print)) {}
    CheckReport(const CheckReport&) = delete;
    CheckReport& operator=(const CheckReport&) = delete;
    virtual ~CheckReport() = default;

    virtual void Catalog(const CheckedCatalog& catalog) = 0;
    /// After the last catalog.
    virtual void End() {}

  protected:
    void Write(const std::string& text) const { print_(text); }

  private:
    Print print_;
};

/// A line per fault, as compilers print them, then what it cost.
std::unique_ptr<CheckReport> MakeCheckText(Print print, const vorn::Style& style);
/// Faults by number: how often, the first places, cause and cure.
std::unique_ptr<CheckReport> MakeCheckGroups(Print print, const vorn::Style& style);
std::unique_ptr<CheckReport> MakeCheckJson(Print print);
/// SARIF 2.1.0.
std::unique_ptr<CheckReport> MakeCheckSarif(Print print, std::string version);

struct CheckResult {
    bool hasFailed = false;             ///< A fault counts.
    std::vector<std::string> troubles;  ///< Of catalogs that can't be read: a line for each, without its end.
};

/// Checks catalogs one after the other, as far as they can be read. Throws std::runtime_error for a baseline
/// that can't be read or written; none is written where there is trouble.
CheckResult CheckCatalogs(const std::vector<std::string>& paths, const CheckOptions& options,
                          CheckReport& report);

/// What the faults of a catalog cost, in lines for people: "roadster.xml: 2 functions lost; ...".
std::string CostText(const CheckedCatalog& catalog);

}  // namespace tarvex::review
