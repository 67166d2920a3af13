/// The lines of a capture in any style, in pieces as a pipe would give them. The byte 0xFF and the one behind
/// it stand for 65,536 of the latter, so that short inputs make lines that are cut.

#include <algorithm>
#include <unistd.h>

#include "captures.h"
#include "driver/line_reader.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

constexpr std::size_t kRun = 65536;
constexpr int kMaxRuns = 12;

std::string Expanded(std::string_view input) {
    std::string text;
    int runs = 0;
    for (std::size_t i = 0; i < input.size(); ++i) {
        if (input[i] == '\xFF' && i + 1 < input.size() && runs < kMaxRuns) {
            text.append(kRun, input[++i]);
            ++runs;
        } else {
            text += input[i];
        }
    }
    return text;
}

/// The lines that a text has, as a reader of all of it would find them.
std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// A pipe that gets a text piece by piece.
class Pipe {
  public:
    Pipe(std::string_view text, Draw draw) : rest_(text), draw_(draw) {
        Require(::pipe(ends_) == 0, "there is a pipe");
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        ::close(ends_[0]);
        Close();
    }
    int Descriptor() const { return ends_[0]; }
    bool Feed() {
        // A pipe takes much more than this without anybody who reads.
        const unsigned most = rest_.size() > kRun ? 16384 : draw_.Flag() ? 64 : 4096;
        const std::size_t size = std::min<std::size_t>(rest_.size(), 1 + draw_.Below(most));
        if (size == 0) {
            Close();
            return true;
        }
        Require(::write(ends_[1], rest_.data(), size) == static_cast<ssize_t>(size), "a pipe takes a piece");
        rest_.remove_prefix(size);
        return true;
    }

  private:
    void Close() {
        if (ends_[1] >= 0) {
            ::close(ends_[1]);
        }
        ends_[1] = -1;
    }

    std::string_view rest_;
    Draw draw_;
    int ends_[2] = {-1, -1};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = Expanded(TextOf(data, size));
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        return 0;  // lines of UTF-16 are no lines of the text
    }
    Pipe pipe(text, Draw(text));
    LineReader reader(pipe.Descriptor(), [&] { return pipe.Feed(); });
    std::string_view line;
    CaptureCheck check;
    for (const std::string_view expected : LinesOf(text)) {
        Require(reader.Next(line), "every line is read");
        Require(line == expected.substr(0, kMaxLine), "a line is read as it stands");
        Require(reader.IsCut() == (expected.size() > kMaxLine), "a long line is told to be cut");
        check.TakeLine(line, reader.IsCut());
    }
    check.Finish();
    Require(!reader.Next(line) && !reader.HasFailed(), "behind the last line is the end");
    return 0;
}
