/// Reading of XML files, whichever parser does it.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "import/xml/element.h"
#include "import/xml/vocabulary.h"

namespace tarvex {

class ZDOMErrorHandler;

/// Parses XML files into documents. The import manager reaches the XML parser only through this.
class DocumentReader {
  public:
    DocumentReader() = default;
    DocumentReader(const DocumentReader&) = delete;
    DocumentReader& operator=(const DocumentReader&) = delete;
    virtual ~DocumentReader() = default;

    /// Starts the XML platform, once per process. Throws what the parser throws.
    virtual void StartPlatform() = 0;
    /// Ends the XML platform after a parse has thrown. It is never started again in the process.
    virtual void StopPlatform() = 0;

    /// Parses a file and reports its faults to the handler. The document stays valid until Release. May throw
    /// anything that the parser throws.
    virtual const Element* Read(const std::string& path, bool validate, ZDOMErrorHandler& handler) = 0;
    /// Is told while documents are read: how many bytes are read so far.
    virtual void SetOnProgress(std::function<void(std::size_t bytes)> /*onProgress*/) {}
    /// The files that the document was read from, with those of its external entities, until Release.
    virtual std::vector<std::string> Files() const { return {}; }
    /// Those of them that could be opened.
    virtual std::set<std::string> OpenedFiles() const { return {}; }
    /// The DTD that the document was to be checked against, as it names it, if that can't be opened; else
    /// empty.
    virtual std::string MissingDtd() const { return {}; }
    /// Bytes of memory that the parser holds for the document, until Release.
    virtual std::size_t Memory() const { return 0; }
    /// Drops the document and the parser.
    virtual void Release() = 0;
};

/// The reader that uses Xerces-C.
///
/// With `validate` a document is validated exactly when it declares a document type. DTDs and other external
/// entities are read from local, regular files only, relative to the file that names them; nothing is
/// fetched. Without `validate` an external DTD that cannot be opened counts as empty and is reported as a
/// warning. Entities are expanded into the text around them, up to a bound.
///
/// The document has the words of the vocabulary only, with what lies above them; without a vocabulary it has
/// all elements.
std::unique_ptr<DocumentReader> MakeXercesReader(Vocabulary vocabulary = {});

/// Called while an exception of a reader is handled: what the parser says in it; nothing for an exception
/// that is not the parser's.
std::optional<std::string> ParserExceptionText();

}  // namespace tarvex
