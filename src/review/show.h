/// What is in a catalog: its blocks, functions and operations as engineers look at them.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "drawing/style.h"
#include "review/catalog_reading.h"
#include "review/catalog_texts.h"
#include "review/function_view.h"
#include "review/search.h"

namespace tarvex::review {

/// A block and what is held against it.
struct BlockView {
    const ZMTFBlock* block = nullptr;
    std::size_t faults = 0;
};

/// The whole catalog.
struct CatalogView {
    std::vector<BlockView> blocks;
    std::size_t otherFaults = 0;  ///< Those that are about no block of the tree.
};

/// What there is for one of the words that are asked for. At most one of the first four has anything.
struct Answer {
    std::string what;
    std::vector<BlockView> blocks;
    std::vector<FunctionView> functions;
    std::vector<Target> targets;       ///< Several that a pattern names.
    std::vector<FoundPlace> places;    ///< Where a word stands.
    std::string lost;                  ///< Why nothing is found; empty for no reason.
    std::vector<std::string> nearest;  ///< Names, where nothing is found.

    bool IsFound() const {
        return !blocks.empty() || !functions.empty() || !targets.empty() || !places.empty();
    }
};

/// A form in which catalogs are shown. The reading outlives it.
class ShowReport {
  public:
    ShowReport() = default;
    ShowReport(const ShowReport&) = delete;
    ShowReport& operator=(const ShowReport&) = delete;
    virtual ~ShowReport() = default;

    virtual std::string Of(const CatalogView& catalog) = 0;
    /// Nothing for an answer that is none, if people are told that elsewhere.
    virtual std::string Of(const std::vector<Answer>& answers) = 0;
};

/// For a terminal.
std::unique_ptr<ShowReport> MakeShowText(const CatalogReading& reading, const vorn::Style& style);
/// One object.
std::unique_ptr<ShowReport> MakeShowJson(const CatalogReading& reading);

/// The blocks of a catalog that could be imported.
CatalogView ViewOf(const CatalogReading& reading);

/// Answers what is asked for, and keeps what the answers point into.
class Shower {
  public:
    explicit Shower(const CatalogReading& reading);
    std::vector<Answer> AnswersTo(const std::vector<std::string>& words);

  private:
    Answer Find(const std::string& word) const;

    const CatalogReading& reading_;
    FaultIndex faults_;
    ZVornExporter messages_;
};

/// Why there is no answer, for people: a line without its end.
std::string NotFoundText(const CatalogReading& reading, const Answer& answer);

}  // namespace tarvex::review
