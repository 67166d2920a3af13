/// Files as the XML parser reads them: the catalog, its DTD and other entities.

#pragma once

#include <optional>
#include <set>
#include <string>

#include <xercesc/sax/InputSource.hpp>

#include "import/xml/parser_budget.h"

namespace tarvex {

/// A local file for the parser, by its path in bytes; the system identifier is only what messages show.
/// Without a path it is a source that cannot be opened, for entities that must not be fetched. What is read
/// counts as input, and the paths of files that were opened are entered into `opened`; a file that cannot be
/// read to its end throws XMLException.
class FileSource : public xercesc::InputSource {
  public:
    FileSource(std::optional<std::string> path, const XMLCh* systemId, ParserBudget& budget,
               std::set<std::string>& opened)
        : InputSource(systemId), path_(std::move(path)), budget_(budget), opened_(opened) {}

    xercesc::BinInputStream* makeStream() const override;

  private:
    std::optional<std::string> path_;
    ParserBudget& budget_;
    std::set<std::string>& opened_;
};

}  // namespace tarvex
