#include "import/xml/dom_error_handler.h"

#include <xercesc/sax/SAXParseException.hpp>

#include "import/text/format_text.h"
#include "import/text/shown_text.h"
#include "import/xml/transcode.h"

namespace tarvex {

void ZDOMErrorHandler::warning(const xercesc::SAXParseException& exception) {
    Collect(Text::ParserWarning, Kind::Warning, exception);
}

void ZDOMErrorHandler::error(const xercesc::SAXParseException& exception) {
    hasError_ = true;
    if (complaints_.errors++ == 0) {
        complaints_.file = Transcode(exception.getSystemId());
        complaints_.line = exception.getLineNumber();
        complaints_.column = exception.getColumnNumber();
        complaints_.text = Transcode(exception.getMessage());
    }
    Collect(Text::ParserError, Kind::Error, exception);
}

void ZDOMErrorHandler::fatalError(const xercesc::SAXParseException& exception) {
    hasError_ = true;
    complaints_.isFatal = true;
    Collect(Text::ParserFatalError, Kind::Fatal, exception);
}

void ZDOMErrorHandler::Collect(Text text, Kind kind, const xercesc::SAXParseException& exception) {
    if (faults_ != nullptr && faults_->HasRoom()) {
        faults_->Add({kind,
                      true,
                      0,
                      Transcode(exception.getMessage()),
                      {},
                      {},
                      Transcode(exception.getSystemId()),
                      exception.getLineNumber(),
                      exception.getColumnNumber()});
    }
    if (messages_.size() > maxMessages_) {
        if (leftOut_++ == 0) {
            messages_ += "(more parser messages are left out)\n";
        }
        return;
    }
    std::string message = FormatText(
        LoadText(text), Transcode(exception.getSystemId()), static_cast<int>(exception.getLineNumber()),
        static_cast<int>(exception.getColumnNumber()), Transcode(exception.getMessage()));
    HideControls(message);
    messages_ += message + '\n';
}

}  // namespace tarvex
