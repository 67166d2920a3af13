#pragma once

#include <ostream>
#include <string>
#include <unistd.h>
#include <vector>

#include <xercesc/util/PlatformUtils.hpp>

#include "import/import_manager.h"
#include "params/catalog_vocabulary.h"
#include "support/temp_dir.h"

namespace tarvex::test {

/// Ends the test program when a call hangs, so that a hang is a failure.
class Deadline {
  public:
    explicit Deadline(unsigned seconds = 60) { ::alarm(seconds); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    ~Deadline() { ::alarm(0); }
};

/// The XML platform for tests that make exceptions of the parser themselves.
class XmlPlatform {
  public:
    XmlPlatform() { xercesc::XMLPlatformUtils::Initialize(); }
    XmlPlatform(const XmlPlatform&) = delete;
    XmlPlatform& operator=(const XmlPlatform&) = delete;
    ~XmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
};

/// A text that went to the message sink.
struct SinkText {
    std::string text;
    int level;
    bool operator==(const SinkText&) const = default;
};
std::ostream& operator<<(std::ostream& out, const SinkText& sinkText);

/// A catalog that imports without any message: a string parameter of the function Volume in the block Amp.
std::string CleanCatalog();

/// A catalog that imports with the warnings 67, 68, 69 and 70, each once.
std::string CatalogWithFourWarnings();

/// A catalog that imports with error 128 and the warnings 67 to 70.
std::string CatalogWithOneErrorAndFourWarnings();

/// The text with every "@PATH@" replaced.
std::string WithPath(std::string text, const std::string& path);

/// Everything that a manager sends, and the directory that its files lie in.
class ManagerRun {
  public:
    explicit ManagerRun(std::unique_ptr<DocumentReader> reader = MakeXercesReader(CatalogVocabulary()));
    ManagerRun(const ManagerRun&) = delete;
    ManagerRun& operator=(const ManagerRun&) = delete;
    ~ManagerRun() = default;

    /// Imports into group 1 under a name of the file's own.
    bool Import(const std::string& path, const std::string& logPath = "");
    /// Imports into a group under a given name.
    bool ImportAs(std::string name, const std::string& path, std::uint16_t group = 1);
    /// How many texts of the console begin so.
    std::size_t CountOfTexts(std::string_view start) const;

    TempDir dir;
    std::vector<SinkText> console;
    ZMostFCatManager manager;
};

}  // namespace tarvex::test
