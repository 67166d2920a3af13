#include "review/catalog_reading.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

#include "import/text/shown_text.h"
#include "params/catalog_vocabulary.h"

namespace tarvex::review {
namespace {

constexpr const char* kStandardInput = "-";

/// No catalog on standard input, or in a pipe, is longer. It is kept in a file that nobody else sees.
constexpr std::size_t kMaxStandardInput = std::size_t{1} << 30;

/// All that a stream says, in a file without a name.
File CopyOf(std::FILE* stream, const std::string& name) {
    File copy(std::tmpfile());
    if (!copy) {
        throw std::runtime_error("can't keep what " + name + " says: there is no room for temporary files");
    }
    std::array<char, std::size_t{1} << 16> buffer{};
    std::size_t size = 0;
    for (std::size_t count = 1; count > 0; size += count) {
        count = std::fread(buffer.data(), 1, buffer.size(), stream);
        if (size + count > kMaxStandardInput) {
            throw std::runtime_error(name + " is too long for a catalog");
        }
        if (std::fwrite(buffer.data(), 1, count, copy.get()) != count) {
            throw std::runtime_error("can't keep what " + name + " says: the disk is full");
        }
    }
    if (std::ferror(stream) != 0 || std::fflush(copy.get()) != 0) {
        throw std::runtime_error("can't read " + name + " to its end");
    }
    return copy;
}

bool IsPipe(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

/// What can be read only once, in a file that can be read again; null for other paths.
File KeptCopy(const std::string& path) {
    if (path == kStandardInput) {
        return CopyOf(stdin, "standard input");
    }
    if (!IsPipe(path)) {
        return nullptr;
    }
    const File pipe(std::fopen(path.c_str(), "rb"));
    if (!pipe) {
        throw std::runtime_error("can't read '" + Shown(path) + "'");
    }
    return CopyOf(pipe.get(), "'" + Shown(path) + "'");
}

}  // namespace

std::unique_ptr<DocumentReader> CatalogReading::MakeReader(const ReadingOptions& options) {
    auto reader =
        options.makeReader(options.areDescriptionsRead ? DescriptionVocabulary() : FaultVocabulary());
    reader->SetOnProgress([this](std::size_t bytes) {
        if (bar_) {
            bar_->Show(bytes);
        }
    });
    return reader;
}

CatalogReading::CatalogReading(const std::string& path, const ReadingOptions& options)
    : shownPath_(path), path_(path), manager_(MakeReader(options)) {
    std::string name;
    copy_ = KeptCopy(path);
    if (copy_) {
        path_ = "/proc/self/fd/" + std::to_string(::fileno(copy_.get()));
        name = "catalog";
    }
    if (!OpenForReading(path_)) {
        throw std::runtime_error("can't read '" + Shown(path) + "'");
    }
    bar_.emplace(path, FileSize(path_));
    std::string failure;
    manager_.Validate = options.isValidated;
    manager_.ReadNewer = options.areNewerRead;
    manager_.keepDocument = true;
    manager_.faults = &faults_;
    manager_.MessageSink = [&](const std::string& text, ImportEvent /*event*/) {
        failure.append(" ").append(text);
    };
    const bool isImported = manager_.Import(name, path_, kCatalogGroup, "");
    bar_.reset();
    if (isImported) {
        catalog_ = manager_.FindCatalog(name);
    } else if (faults_.All().empty()) {
        throw std::runtime_error("can't import '" + Shown(path) + "':" + Shown(failure));
    }
}

CatalogReading::~CatalogReading() = default;

}  // namespace tarvex::review
