#include "support/temp_dir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace tarvex::test {

TempDir::TempDir() : path_((std::filesystem::temp_directory_path() / "tarvex-test-XXXXXX").string()) {
    EXPECT_NE(::mkdtemp(path_.data()), nullptr);
}

TempDir::~TempDir() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::string TempDir::File(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::string TempDir::Write(std::string_view name, std::string_view content) const {
    std::string path = File(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

bool FileExists(const std::string& path) {
    return std::filesystem::exists(path);
}

WorkingDir::WorkingDir(const std::string& path) : previous_(std::filesystem::current_path().string()) {
    std::filesystem::current_path(path);
}

WorkingDir::~WorkingDir() {
    std::error_code error;
    std::filesystem::current_path(previous_, error);
}

}  // namespace tarvex::test
