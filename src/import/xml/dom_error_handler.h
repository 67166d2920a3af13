/// Takes what the XML parser complains about, for the import log and the console.

#pragma once

#include <string>

#include <xercesc/sax/ErrorHandler.hpp>

#include "import/log/texts.h"

namespace tarvex {

/// Collects the parser's complaints as text, one after the other, and remembers whether there was an error.
class ZDOMErrorHandler : public xercesc::ErrorHandler {
  public:
    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// Nothing is reset: the handler is made for one parse.
    void resetErrors() override {}

    /// An error or a fatal error was reported.
    bool HasError() const { return hasError_; }
    /// The complaints so far, each ended by a line feed.
    const std::string& Messages() const { return messages_; }

  private:
    void Collect(Text text, const xercesc::SAXParseException& exception);

    bool hasError_ = false;
    std::string messages_;
    std::size_t leftOut_ = 0;
};

}  // namespace tarvex
