/// Opens the files that are read. Only regular ones: a pipe could be waited for without end.

#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace kestrel {

struct FileCloser {
    void operator()(std::FILE* file) const {
        std::fclose(file);  // NOLINT(cppcoreguidelines-owning-memory): it comes from the owner
    }
};
using InputFile = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a file. Throws `ReadError` for one that cannot be opened, or is something else.
InputFile OpenInput(const std::string& path);

/// The size of a file that somebody else is about to open. Throws as `OpenInput` does.
std::int64_t InputSize(const std::string& path);

}  // namespace kestrel
