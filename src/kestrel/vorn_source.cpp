#include "kestrel/vorn_source.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "kestrel/errors.h"

namespace kestrel {

bool VornSource::Fill() {
    next_ = 0;
    end_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    if (std::ferror(file_.get()) != 0) {
        throw ReadError(std::strerror(errno));
    }
    return end_ > 0;
}

void VornSource::FailAtZero() const {
    throw ReadError("line " + std::to_string(line_) + ": the file has a zero byte");
}

}  // namespace kestrel
