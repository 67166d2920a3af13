#include "import/xml/file_source.h"

#include <memory>
#include <sys/stat.h>

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include "import/text/files.h"

namespace tarvex {
namespace {

class FileStream : public xercesc::BinInputStream {
  public:
    FileStream(File file, ParserBudget& budget) : file_(std::move(file)), budget_(budget) {
        struct stat status = {};
        isNew_ =
            ::fstat(::fileno(file_.get()), &status) == 0 && budget.IsNewFile(status.st_dev, status.st_ino);
    }

    XMLFilePos curPos() const override { return position_; }

    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        const XMLSize_t count = std::fread(toFill, 1, maxToRead, file_.get());
        if (std::ferror(file_.get()) != 0) {
            throw xercesc::RuntimeException("", 0, xercesc::XMLExcepts::File_CouldNotReadFromFile,
                                            xercesc::XMLPlatformUtils::fgMemoryManager);
        }
        position_ += count;
        if (isNew_) {
            budget_.AddInput(count);
        } else {
            budget_.AddRepeatedInput(count);
        }
        return count;
    }

    const XMLCh* getContentType() const override { return nullptr; }

  private:
    File file_;
    ParserBudget& budget_;
    bool isNew_ = false;
    XMLFilePos position_ = 0;
};

}  // namespace

xercesc::BinInputStream* FileSource::makeStream() const {
    File file = path_ ? OpenForReading(*path_) : nullptr;
    if (!file) {
        return nullptr;
    }
    opened_.insert(*path_);
    return std::make_unique<FileStream>(std::move(file), budget_).release();
}

}  // namespace tarvex
