/// Takes what the XML parser complains about, for the import log and the console.

#pragma once

#include <cstddef>
#include <string>

#include <xercesc/sax/ErrorHandler.hpp>

#include "import/log/fault_list.h"
#include "import/log/texts.h"
#include "import/xml/parser_complaint.h"

namespace tarvex {

/// Collects the parser's complaints as text, one after the other, and remembers whether there was an error.
class ZDOMErrorHandler : public xercesc::ErrorHandler {
  public:
    /// A file in which everything is invalid gives some hundred bytes of complaint for every few bytes of
    /// catalog. Nobody reads beyond so many bytes.
    static constexpr std::size_t kMaxMessages = std::size_t{16} << 20;

    ZDOMErrorHandler() = default;
    /// Complaints that come when there are more bytes than that are left out.
    explicit ZDOMErrorHandler(std::size_t maxMessages) : maxMessages_(maxMessages) {}

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// Nothing is reset: the handler is made for one parse.
    void resetErrors() override {}

    /// From here on all complaints also go into the list. It is not owned; null for none.
    void SetFaults(FaultList* faults) { faults_ = faults; }

    /// An error or a fatal error was reported.
    bool HasError() const { return hasError_; }
    /// The complaints so far, each ended by a line feed, without control characters that a document has put
    /// into them.
    const std::string& Messages() const { return messages_; }
    /// All errors, also those whose complaints were left out.
    const ParserComplaints& Complaints() const { return complaints_; }

  private:
    void Collect(Text text, Kind kind, const xercesc::SAXParseException& exception);

    std::size_t maxMessages_ = kMaxMessages;
    bool hasError_ = false;
    ParserComplaints complaints_;
    std::string messages_;
    std::size_t leftOut_ = 0;
    FaultList* faults_ = nullptr;
};

}  // namespace tarvex
