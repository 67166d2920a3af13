#include "export/config_lines.h"

#include "import/text/files.h"

namespace tarvex {
namespace {

/// Hands over lines as long as they count.
class LineCounter {
  public:
    explicit LineCounter(const ConfigLineTaker& take) : take_(take) {}

    /// False for the first line that does not count any more.
    bool Add(std::string_view line) {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos) {
            return true;
        }
        if (lines_ == kMaxConfigLines) {
            return false;
        }
        ++lines_;
        take_(line.substr(0, comma), line.substr(comma + 1));
        return true;
    }

  private:
    const ConfigLineTaker& take_;
    std::size_t lines_ = 0;
};

}  // namespace

ConfigFile ReadConfigLines(const std::string& path, const ConfigLineTaker& take) {
    const File file = OpenForReading(path);
    if (!file) {
        return ConfigFile::Missing;
    }
    LineCounter lines(take);
    std::string line;
    bool doesCount = true;
    for (int c = 0; doesCount && (c = std::getc(file.get())) != EOF;) {
        if (c == '\n') {
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            doesCount = lines.Add(line);
            line.clear();
            continue;
        }
        if (line.size() == kMaxConfigLine) {
            doesCount = lines.Add(line);
            line.clear();
        }
        line += static_cast<char>(c);
    }
    if (std::ferror(file.get()) != 0) {
        return ConfigFile::Missing;
    }
    return doesCount && lines.Add(line) ? ConfigFile::Whole : ConfigFile::Cut;
}

}  // namespace tarvex
