#include "import/xml/catalog_parser.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/internal/ReaderMgr.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "import/text/files.h"
#include "import/text/names.h"
#include "import/xml/file_source.h"

namespace tarvex {

using xercesc::XMLString;

namespace {

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

CatalogParser::CatalogParser(const std::string& path, bool validate, Vocabulary vocabulary)
    : XercesDOMParser(nullptr, &budget_),
      path_(path),
      isValidating_(validate),
      dtd_(budget_),
      builder_(std::move(vocabulary), &documentMemory_) {
    useScanner(xercesc::XMLUni::fgDGXMLScanner);  // catalogs have DTDs, never schemas
    setValidationScheme(validate ? Val_Auto : Val_Never);
    setDoNamespaces(false);
    setDisableDefaultEntityResolution(true);
    setXMLEntityResolver(this);
    getScanner()->setDocTypeHandler(&dtd_);
    budget_.SetLocator(getScanner()->getLocator());
    paths_[ToDomText(path)] = path;
}

void CatalogParser::Parse() {
    try {
        parse(FileSource(path_, ToDomText(path_).c_str(), budget_, openedFiles_));
    } catch (const ParserStop&) {  // told below, even if the parser has caught it on its way
    }
    if (const ParserStop* stop = budget_.Excess()) {
        getErrorHandler()->fatalError(xercesc::SAXParseException(
            ToDomText(stop->reason).c_str(), nullptr, stop->systemId.c_str(), stop->line, stop->column));
    }
}

std::vector<std::string> CatalogParser::Files() const {
    std::vector<std::string> files;
    for (const auto& [systemId, path] : paths_) {
        files.push_back(path);
    }
    return files;
}

void CatalogParser::error(unsigned int code, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type,
                          const XMLCh* text, const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line,
                          XMLFileLoc column) {
    using xercesc::XMLValid;
    if (XMLString::equals(domain, xercesc::XMLUni::fgValidityDomain) &&
        (code == XMLValid::NoWSForStandalone || code == XMLValid::NoDefAttForStandalone)) {
        type = xercesc::XMLErrorReporter::ErrType_Warning;
    }
    XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
}

xercesc::InputSource* CatalogParser::resolveEntity(xercesc::XMLResourceIdentifier* resource) {
    const DomText systemId = resource->getSystemId() != nullptr ? resource->getSystemId() : DomText();
    const std::string shown = Transcode(systemId.c_str());
    const std::optional<std::string> path = LocalPath(shown, PathOf(resource->getBaseURI()));
    const DomText shownId = path ? ToDomText(*path) : systemId;
    if (path) {
        paths_[shownId] = *path;
    }
    if (systemId == dtd_.ExternalDtd() && !(path && OpenForReading(*path))) {
        if (!isValidating_) {
            Warn("cannot open the DTD '" + shown + "'; it counts as empty");
            return EmptySource(shownId.c_str()).release();
        }
        missingDtd_ = shown;
    }
    return std::make_unique<FileSource>(path, shownId.c_str(), budget_, openedFiles_).release();
}

std::string CatalogParser::PathOf(const XMLCh* systemId) const {
    const auto found = paths_.find(systemId != nullptr ? systemId : DomText());
    return found == paths_.end() ? std::string() : found->second;
}

void CatalogParser::Warn(const std::string& text) {
    getErrorHandler()->warning(
        xercesc::SAXParseException(ToDomText(text).c_str(), *getScanner()->getLocator()));
}

void CatalogParser::MarkPlace() {
    const xercesc::XMLReader* reader = getScanner()->getReaderMgr()->getCurrentReader();
    if (reader != nullptr && (reader == documentReader_ || documentReader_ == nullptr)) {
        place_ = {static_cast<std::uint32_t>(reader->getLineNumber()),
                  static_cast<std::uint32_t>(reader->getColumnNumber())};
    }
}

void CatalogParser::XMLDecl(const XMLCh* /*version*/, const XMLCh* /*encoding*/, const XMLCh* /*standalone*/,
                            const XMLCh* /*autoEncoding*/) {
    MarkPlace();
}

void CatalogParser::docCharacters(const XMLCh* chars, XMLSize_t length, bool isCData) {
    if (isCData) {
        budget_.AddEvent(length);
        builder_.PartText();  // no text to the DOM
    } else {
        AddText(chars, length);
    }
    MarkPlace();
}

void CatalogParser::ignorableWhitespace(const XMLCh* chars, XMLSize_t length, bool /*isCData*/) {
    AddText(chars, length);
    MarkPlace();
}

void CatalogParser::AddText(const XMLCh* chars, XMLSize_t length) {
    budget_.AddEvent(length);
    if (!builder_.Text(chars, length)) {
        Warn("the text of the element is cut to " + std::to_string(ElementBuilder::kMaxText) + " characters");
    }
}

void CatalogParser::docComment(const XMLCh* comment) {
    budget_.AddEvent(XMLString::stringLen(comment));
    builder_.PartText();
    MarkPlace();
}

void CatalogParser::docPI(const XMLCh* /*target*/, const XMLCh* data) {
    budget_.AddEvent(XMLString::stringLen(data));
    builder_.PartText();
    MarkPlace();
}

void CatalogParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int /*uri*/,
                                 const XMLCh* /*prefix*/,
                                 const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                 XMLSize_t attributeCount, bool isEmpty, bool /*isRoot*/) {
    budget_.EndDtd();
    const DtdWatch::Cost cost = dtd_.CostOf(declaration);
    XMLSize_t content = XMLString::stringLen(declaration.getFullName()) + cost.own;
    if (isValidating_ && !childCosts_.empty()) {
        content += childCosts_.back();
    }
    dtd_.AddAttributes(attributes, attributeCount, isValidating_);
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
        content += 1 + XMLString::stringLen(attributes.elementAt(i)->getValue());
    }
    budget_.AddElement(builder_.Depth() + 1, content);
    if (builder_.Depth() == 0) {
        documentReader_ = getScanner()->getReaderMgr()->getCurrentReader();
    }
    if (!builder_.StartElement(declaration, attributes, attributeCount, place_)) {
        Warn("an attribute of the element is cut to " + std::to_string(ElementBuilder::kMaxText) +
             " characters");
    }
    if (isEmpty) {
        builder_.EndElement();
    } else {
        childCosts_.push_back(cost.child);
    }
    MarkPlace();
}

void CatalogParser::endElement(const xercesc::XMLElementDecl& /*declaration*/, unsigned int /*uri*/,
                               bool /*isRoot*/, const XMLCh* /*prefix*/) {
    childCosts_.pop_back();
    builder_.EndElement();
    MarkPlace();
}

// An entity's content takes the place of the reference, so a text goes on over its ends.
void CatalogParser::startEntityReference(const xercesc::XMLEntityDecl& declaration) {
    budget_.AddReference(declaration.getValueLen());
}
void CatalogParser::endEntityReference(const xercesc::XMLEntityDecl& /*declaration*/) {
    MarkPlace();
}

}  // namespace tarvex
