#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <stdexcept>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "import/document_reader.h"
#include "import/dom_access.h"
#include "import/files.h"
#include "import/names.h"

namespace tarvex {
namespace {

using DomText = std::basic_string<XMLCh>;

/// More entity references than any catalog has; a hostile one would expand to gigabytes.
constexpr XMLSize_t kMaxEntityExpansions = 50'000;

/// The state of the XML platform. It belongs to the process, not to a reader.
enum class Platform { NotStarted, Started, Stopped };
Platform platform = Platform::NotStarted;

/// A file's bytes, for the parser.
class FileStream : public xercesc::BinInputStream {
  public:
    explicit FileStream(File file) : file_(std::move(file)) {}
    XMLFilePos curPos() const override { return position_; }
    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        const XMLSize_t count = std::fread(toFill, 1, maxToRead, file_.get());
        position_ += count;
        return count;
    }
    const XMLCh* getContentType() const override { return nullptr; }

  private:
    File file_;
    XMLFilePos position_ = 0;
};

/// A local file by its path in bytes; the system identifier is only what messages show. Without a path it is
/// a source that cannot be opened, for entities that must not be fetched.
class FileSource : public xercesc::InputSource {
  public:
    FileSource(std::optional<std::string> path, const DomText& systemId)
        : InputSource(systemId.c_str()), path_(std::move(path)) {}
    xercesc::BinInputStream* makeStream() const override {
        File file = path_ ? OpenForReading(*path_) : nullptr;
        return file ? std::make_unique<FileStream>(std::move(file)).release() : nullptr;
    }

  private:
    std::optional<std::string> path_;
};

/// "http:", "file:" and the like; a path has a "/" before any ":".
bool HasScheme(std::string_view uri) {
    return uri.find(':') < uri.find('/');
}

/// Replaces "%20" and the like by the bytes that they stand for; anything malformed stays.
std::string DecodePercent(std::string_view uri) {
    std::string path;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        unsigned byte = 0;
        const char* digits = uri.data() + i + 1;
        if (uri[i] == '%' && i + 2 < uri.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            path += static_cast<char>(byte);
            i += 2;
        } else {
            path += uri[i];
        }
    }
    return path;
}

/// The local path that a system identifier means, seen from the file that names it; none for one that leads
/// to the network.
std::optional<std::string> LocalPath(std::string_view systemId, const std::string& namedIn) {
    constexpr std::string_view kFileScheme = "file:";
    std::string path(systemId);
    if (NamesEqual(systemId.substr(0, kFileScheme.size()), kFileScheme)) {
        systemId.remove_prefix(kFileScheme.size());
        if (systemId.starts_with("//")) {  // a host, which can only be this one
            systemId.remove_prefix(std::min(systemId.find('/', 2), systemId.size()));
        }
        path = DecodePercent(systemId);
    } else if (HasScheme(systemId)) {
        return std::nullopt;
    }
    const std::size_t slash = namedIn.rfind('/');
    if (!path.starts_with('/') && slash != std::string::npos) {
        path.insert(0, namedIn, 0, slash + 1);
    }
    return OpenForReading(path) ? path : DecodePercent(path);
}

/// The DOM parser with the catalog's rules on external files and on standalone documents.
class CatalogDomParser : public xercesc::XercesDOMParser, private xercesc::XMLEntityResolver {
  public:
    CatalogDomParser(const std::string& path, bool validate) : isValidating_(validate) {
        setValidationScheme(validate ? Val_Auto : Val_Never);
        setDoNamespaces(false);
        setCreateEntityReferenceNodes(false);
        setDisableDefaultEntityResolution(true);
        security_.setEntityExpansionLimit(kMaxEntityExpansions);
        setSecurityManager(&security_);
        setXMLEntityResolver(this);
        paths_[ToDomText(path)] = path;
    }

    void Parse(const std::string& path) { parse(FileSource(path, ToDomText(path))); }

    /// A document that calls itself standalone breaks two constraints as soon as it is indented or leaves
    /// attributes to their defaults. They say nothing about the catalog.
    void error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type,
               const XMLCh* text, const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line,
               XMLFileLoc column) override {
        using xercesc::XMLValid;
        if (xercesc::XMLString::equals(domain, xercesc::XMLUni::fgValidityDomain) &&
            (code == XMLValid::NoWSForStandalone || code == XMLValid::NoDefAttForStandalone)) {
            type = xercesc::XMLErrorReporter::ErrType_Warning;
        }
        XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
    }

    void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* publicId, const XMLCh* systemId,
                     bool hasInternalSubset, bool hasExternalSubset) override {
        externalDtd_ = hasExternalSubset && systemId != nullptr ? systemId : DomText();
        XercesDOMParser::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
    }

    /// Every external entity comes from here, so that none is fetched.
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override {
        const DomText systemId = resource->getSystemId() != nullptr ? resource->getSystemId() : DomText();
        const std::string shown = Transcode(systemId.c_str());
        const std::optional<std::string> path = LocalPath(shown, PathOf(resource->getBaseURI()));
        const DomText shownId = path ? ToDomText(*path) : systemId;
        if (path) {
            paths_[shownId] = *path;
        }
        if (!isValidating_ && systemId == externalDtd_ && !(path && OpenForReading(*path))) {
            WarnOfDtd(shown, *resource);
            return EmptySource(shownId).release();
        }
        return std::make_unique<FileSource>(path, shownId).release();
    }

  private:
    std::string PathOf(const XMLCh* systemId) const {
        const auto found = paths_.find(systemId != nullptr ? systemId : DomText());
        return found == paths_.end() ? std::string() : found->second;
    }

    static std::unique_ptr<xercesc::InputSource> EmptySource(const DomText& systemId) {
        static constexpr XMLByte kBlank[] = {' '};
        return std::make_unique<xercesc::MemBufInputSource>(kBlank, sizeof kBlank, systemId.c_str());
    }

    void WarnOfDtd(const std::string& systemId, const xercesc::XMLResourceIdentifier& resource) {
        const DomText text = ToDomText("cannot open the DTD '" + systemId + "'; it counts as empty");
        const xercesc::Locator* locator = resource.getLocator();
        getErrorHandler()->warning(
            xercesc::SAXParseException(text.c_str(), resource.getPublicId(), resource.getBaseURI(),
                                       locator != nullptr ? locator->getLineNumber() : 0,
                                       locator != nullptr ? locator->getColumnNumber() : 0));
    }

    bool isValidating_;
    xercesc::SecurityManager security_;
    DomText externalDtd_;
    std::map<DomText, std::string> paths_;  // of the files read so far, by the system identifier they go by
};

class XercesReader : public DocumentReader {
  public:
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

    const xercesc::DOMDocument* Read(const std::string& path, bool validate,
                                     xercesc::ErrorHandler& handler) override {
        if (platform != Platform::Started) {
            throw std::logic_error("the XML platform has been stopped");
        }
        parser_ = std::make_unique<CatalogDomParser>(path, validate);
        parser_->setErrorHandler(&handler);
        parser_->Parse(path);
        return parser_->getDocument();
    }

    void Release() override { parser_.reset(); }

  private:
    std::unique_ptr<CatalogDomParser> parser_;
};

}  // namespace

std::unique_ptr<DocumentReader> MakeXercesReader() {
    return std::make_unique<XercesReader>();
}

}  // namespace tarvex
