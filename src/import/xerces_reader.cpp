#include <stdexcept>

#include <xercesc/util/PlatformUtils.hpp>

#include "import/catalog_dom_parser.h"
#include "import/document_reader.h"

namespace tarvex {
namespace {

/// The state of the XML platform. It belongs to the process, not to a reader.
enum class Platform { NotStarted, Started, Stopped };
Platform platform = Platform::NotStarted;

class XercesReader : public DocumentReader {
  public:
    explicit XercesReader(Vocabulary vocabulary) : vocabulary_(std::move(vocabulary)) {}

    void StartPlatform() override {
        if (platform == Platform::NotStarted) {
            xercesc::XMLPlatformUtils::Initialize();
            platform = Platform::Started;
        }
    }

    void StopPlatform() override {
        Release();
        if (platform == Platform::Started) {
            xercesc::XMLPlatformUtils::Terminate();
            platform = Platform::Stopped;
        }
    }

    const xercesc::DOMNode* Read(const std::string& path, bool validate,
                                 xercesc::ErrorHandler& handler) override {
        if (platform != Platform::Started) {
            throw std::logic_error("the XML platform has been stopped");
        }
        parser_ = std::make_unique<CatalogDomParser>(path, validate, vocabulary_);
        parser_->setErrorHandler(&handler);
        parser_->Parse();
        return &parser_->Document();
    }

    std::vector<std::string> Files() const override {
        return parser_ ? parser_->Files() : std::vector<std::string>();
    }

    void Release() override { parser_.reset(); }

  private:
    Vocabulary vocabulary_;
    std::unique_ptr<CatalogDomParser> parser_;
};

}  // namespace

std::unique_ptr<DocumentReader> MakeXercesReader(Vocabulary vocabulary) {
    return std::make_unique<XercesReader>(std::move(vocabulary));
}

}  // namespace tarvex
