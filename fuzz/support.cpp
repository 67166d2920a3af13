#include "support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tarvex::fuzz {
namespace {

class ScratchDirectory {
  public:
    ScratchDirectory() : path_((std::filesystem::temp_directory_path() / "tarvex-fuzz-XXXXXX").string()) {
        Require(::mkdtemp(path_.data()) != nullptr, "there is a directory for files");
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ~ScratchDirectory() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    const std::string& Path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace

void Require(bool holds, std::string_view what) {
    if (!holds) {
        std::fprintf(stderr, "Does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
        std::abort();
    }
}

std::string ScratchFile(std::string_view name) {
    static const ScratchDirectory directory;
    return directory.Path() + "/" + std::string(name);
}

void WriteFile(const std::string& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    Require(file.good(), "a file can be written: " + path);
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Require(file.is_open(), "there is a file " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

Draw::Draw(std::string_view input) : state_(14695981039346656037U) {
    for (const char c : input) {  // FNV-1a
        state_ = (state_ ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
}

unsigned Draw::Below(unsigned end) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<unsigned>((state_ >> 33) % end);
}

}  // namespace tarvex::fuzz
