#pragma once

#include <string>
#include <string_view>

namespace tarvex::test {

/// A new directory that is deleted with everything in it.
class TempDir {
  public:
    TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    ~TempDir();

    /// Absolute, without a slash at the end.
    const std::string& Path() const { return path_; }
    /// The path of a file in the directory.
    std::string File(std::string_view name) const;
    /// Writes a file in the directory and returns its path.
    std::string Write(std::string_view name, std::string_view content) const;

  private:
    std::string path_;
};

/// A file's bytes; fails the test when it cannot be read.
std::string ReadFile(const std::string& path);

bool FileExists(const std::string& path);

/// Makes a directory the working directory until the end of the scope.
class WorkingDir {
  public:
    explicit WorkingDir(const std::string& path);
    WorkingDir(const WorkingDir&) = delete;
    WorkingDir& operator=(const WorkingDir&) = delete;
    ~WorkingDir();

  private:
    std::string previous_;
};

}  // namespace tarvex::test
