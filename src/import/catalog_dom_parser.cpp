#include "import/catalog_dom_parser.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "import/dom_access.h"
#include "import/files.h"
#include "import/names.h"

namespace tarvex {
namespace {

/// More entity references than any catalog has; a hostile one would expand to gigabytes.
constexpr XMLSize_t kMaxEntityExpansions = 50'000;

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
    FileSource(std::optional<std::string> path, const XMLCh* systemId)
        : InputSource(systemId), path_(std::move(path)) {}
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

/// What stands for a DTD that cannot be opened.
std::unique_ptr<xercesc::InputSource> EmptySource(const XMLCh* systemId) {
    static constexpr XMLByte kBlank[] = {' '};
    return std::make_unique<xercesc::MemBufInputSource>(kBlank, sizeof kBlank, systemId);
}

}  // namespace

CatalogDomParser::CatalogDomParser(const std::string& path, bool validate, Vocabulary vocabulary)
    : path_(path), isValidating_(validate), builder_(std::move(vocabulary)) {
    useScanner(xercesc::XMLUni::fgDGXMLScanner);  // catalogs have DTDs, never schemas
    setValidationScheme(validate ? Val_Auto : Val_Never);
    setDoNamespaces(false);
    setDisableDefaultEntityResolution(true);
    security_.setEntityExpansionLimit(kMaxEntityExpansions);
    setSecurityManager(&security_);
    setXMLEntityResolver(this);
    paths_[ToDomText(path)] = path;
}

void CatalogDomParser::Parse() {
    parse(FileSource(path_, ToDomText(path_).c_str()));
}

void CatalogDomParser::error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type,
                             const XMLCh* text, const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line,
                             XMLFileLoc column) {
    using xercesc::XMLValid;
    if (xercesc::XMLString::equals(domain, xercesc::XMLUni::fgValidityDomain) &&
        (code == XMLValid::NoWSForStandalone || code == XMLValid::NoDefAttForStandalone)) {
        type = xercesc::XMLErrorReporter::ErrType_Warning;
    }
    XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
}

void CatalogDomParser::doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* publicId,
                                   const XMLCh* systemId, bool hasInternalSubset, bool hasExternalSubset) {
    externalDtd_ = hasExternalSubset && systemId != nullptr ? systemId : DomText();
    XercesDOMParser::doctypeDecl(root, publicId, systemId, hasInternalSubset, hasExternalSubset);
}

xercesc::InputSource* CatalogDomParser::resolveEntity(xercesc::XMLResourceIdentifier* resource) {
    const DomText systemId = resource->getSystemId() != nullptr ? resource->getSystemId() : DomText();
    const std::string shown = Transcode(systemId.c_str());
    const std::optional<std::string> path = LocalPath(shown, PathOf(resource->getBaseURI()));
    const DomText shownId = path ? ToDomText(*path) : systemId;
    if (path) {
        paths_[shownId] = *path;
    }
    if (!isValidating_ && systemId == externalDtd_ && !(path && OpenForReading(*path))) {
        WarnOfDtd(shown, *resource);
        return EmptySource(shownId.c_str()).release();
    }
    return std::make_unique<FileSource>(path, shownId.c_str()).release();
}

std::string CatalogDomParser::PathOf(const XMLCh* systemId) const {
    const auto found = paths_.find(systemId != nullptr ? systemId : DomText());
    return found == paths_.end() ? std::string() : found->second;
}

void CatalogDomParser::WarnOfDtd(const std::string& systemId,
                                 const xercesc::XMLResourceIdentifier& resource) {
    const DomText text = ToDomText("cannot open the DTD '" + systemId + "'; it counts as empty");
    const xercesc::Locator* locator = resource.getLocator();
    getErrorHandler()->warning(
        xercesc::SAXParseException(text.c_str(), resource.getPublicId(), resource.getBaseURI(),
                                   locator != nullptr ? locator->getLineNumber() : 0,
                                   locator != nullptr ? locator->getColumnNumber() : 0));
}

void CatalogDomParser::docCharacters(const XMLCh* chars, XMLSize_t length, bool isCData) {
    if (isCData) {
        builder_.PartText();  // no text to the DOM
    } else {
        builder_.Text(chars, length);
    }
}

void CatalogDomParser::ignorableWhitespace(const XMLCh* chars, XMLSize_t length, bool /*isCData*/) {
    builder_.Text(chars, length);
}

void CatalogDomParser::docComment(const XMLCh* /*comment*/) {
    builder_.PartText();
}

void CatalogDomParser::docPI(const XMLCh* /*target*/, const XMLCh* /*data*/) {
    builder_.PartText();
}

void CatalogDomParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int /*uri*/,
                                    const XMLCh* /*prefix*/,
                                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                    XMLSize_t attributeCount, bool isEmpty, bool /*isRoot*/) {
    builder_.StartElement(declaration, attributes, attributeCount);
    if (isEmpty) {
        builder_.EndElement();
    }
}

void CatalogDomParser::endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*uri*/,
                                  bool /*isRoot*/, const XMLCh* /*prefix*/) {
    builder_.EndElement();
}

// An entity's content takes the place of the reference, so a text goes on over its ends.
void CatalogDomParser::startEntityReference(const xercesc::XMLEntityDecl& /*declaration*/) {}
void CatalogDomParser::endEntityReference(const xercesc::XMLEntityDecl& /*declaration*/) {}

}  // namespace tarvex
