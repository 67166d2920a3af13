#include <cstdlib>
#include <stdexcept>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "import/text/shown_text.h"
#include "import/xml/catalog_parser.h"
#include "import/xml/document_reader.h"
#include "import/xml/dom_error_handler.h"

namespace tarvex {
namespace {

/// The state of the XML platform. It belongs to the process, not to a reader.
enum class Platform { NotStarted, Started, Stopped };
Platform platform = Platform::NotStarted;
/// Parsers that keep a document, of all readers. They need the platform to their end.
unsigned parsers = 0;

class XercesReader : public DocumentReader {
  public:
    explicit XercesReader(Vocabulary vocabulary) : vocabulary_(std::move(vocabulary)) {}
    XercesReader(const XercesReader&) = delete;
    XercesReader& operator=(const XercesReader&) = delete;
    ~XercesReader() override { ReleaseParser(); }

    void StartPlatform() override {
        // The parser would refuse every document type. How they are read is decided here.
        ::unsetenv("XERCES_DISABLE_DTD");
        if (platform == Platform::NotStarted) {
            xercesc::XMLPlatformUtils::Initialize();
            platform = Platform::Started;
        }
    }

    void StopPlatform() override {
        Release();
        if (platform == Platform::Started && parsers == 0) {
            xercesc::XMLPlatformUtils::Terminate();
            platform = Platform::Stopped;
        }
    }

    const Element* Read(const std::string& path, bool validate, ZDOMErrorHandler& handler) override {
        if (platform != Platform::Started) {
            throw std::logic_error("the XML platform has been stopped");
        }
        ReleaseParser();
        parser_ = std::make_unique<CatalogParser>(path, validate, vocabulary_);
        ++parsers;
        parser_->setErrorHandler(&handler);
        parser_->SetOnProgress(onProgress_);
        parser_->Parse();
        return &parser_->Document();
    }

    void SetOnProgress(std::function<void(std::size_t bytes)> onProgress) override {
        onProgress_ = std::move(onProgress);
    }

    std::vector<std::string> Files() const override {
        return parser_ ? parser_->Files() : std::vector<std::string>();
    }

    std::set<std::string> OpenedFiles() const override {
        return parser_ ? parser_->OpenedFiles() : std::set<std::string>();
    }
    std::string MissingDtd() const override { return parser_ ? parser_->MissingDtd() : std::string(); }
    std::size_t Memory() const override { return parser_ ? parser_->Memory() : 0; }

    void Release() override { ReleaseParser(); }

  private:
    void ReleaseParser() {
        parsers -= parser_ ? 1 : 0;
        parser_.reset();
    }

    Vocabulary vocabulary_;
    std::function<void(std::size_t bytes)> onProgress_;
    std::unique_ptr<CatalogParser> parser_;
};

std::string ShownMessage(const XMLCh* message) {
    std::string text = Transcode(message);
    HideControls(text);
    return text;
}

}  // namespace

std::unique_ptr<DocumentReader> MakeXercesReader(Vocabulary vocabulary) {
    return std::make_unique<XercesReader>(std::move(vocabulary));
}

std::optional<std::string> ParserExceptionText() {
    try {
        throw;
    } catch (const xercesc::XMLException& exception) {
        return ShownMessage(exception.getMessage());
    } catch (const xercesc::DOMException& exception) {
        return ShownMessage(exception.getMessage());
    } catch (...) {
        return std::nullopt;
    }
}

}  // namespace tarvex
