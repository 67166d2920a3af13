#include "expansion.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <random>

namespace tarvex::fuzz {
namespace {

constexpr std::string_view kTimes = "<?times ";
constexpr std::string_view kEndOfTimes = "?>";
constexpr std::string_view kEnd = "<?end?>";
constexpr unsigned kMaxDepth = 8;

class Expansion {
  public:
    Expansion(std::string_view text, std::size_t most) : text_(text), most_(most) {}

    std::string Run() {
        while (at_ < text_.size()) {
            Piece("", 0, true);
        }
        out_.resize(std::min(out_.size(), most_));
        return std::move(out_);
    }

  private:
    /// Up to its end, behind which the text goes on.
    void Piece(std::string_view number, unsigned depth, bool isWanted) {
        while (at_ < text_.size()) {
            if (text_.substr(at_).starts_with(kEnd)) {
                at_ += kEnd.size();
                return;
            }
            if (text_.substr(at_).starts_with(kTimes) && depth < kMaxDepth) {
                Pieces(depth, isWanted);
                continue;
            }
            if (isWanted && out_.size() < most_) {
                Add(number);
            }
            ++at_;
        }
    }

    void Add(std::string_view number) {
        if (text_[at_] == '@' && !number.empty()) {
            out_ += number;
        } else {
            out_ += text_[at_];
        }
    }

    void Pieces(unsigned depth, bool isWanted) {
        at_ += kTimes.size();
        unsigned count = 0;
        std::from_chars(text_.data() + at_, text_.data() + text_.size(), count);
        at_ = std::min(text_.find(kEndOfTimes, at_), text_.size() - kEndOfTimes.size()) + kEndOfTimes.size();
        const std::size_t begin = at_;
        const std::size_t sizeBefore = out_.size();
        Piece("1", depth + 1, isWanted && count > 0);
        const bool addsSomething = out_.size() > sizeBefore;
        for (unsigned i = 2; i <= count && isWanted && addsSomething && out_.size() < most_; ++i) {
            at_ = begin;
            Piece(std::to_string(i), depth + 1, true);
        }
    }

    std::string_view text_;
    std::size_t most_;
    std::size_t at_ = 0;
    std::string out_;
};

}  // namespace

std::string Expanded(std::string_view text, std::size_t most) {
    return Expansion(text, most).Run();
}

std::string MutateTimes(std::string_view text, unsigned seed) {
    constexpr std::string_view kCounts[] = {"0",   "1",   "2",    "8",    "20",   "60",
                                            "100", "400", "1000", "4000", "20000"};
    std::minstd_rand random(seed + 1);
    const std::string_view count = kCounts[random() % std::size(kCounts)];
    const std::size_t start = text.empty() ? 0 : random() % text.size();
    std::string changed(text);
    const std::size_t at = text.find(kTimes, start);
    if (at != std::string_view::npos && random() % 4 != 0) {
        const std::size_t number = at + kTimes.size();
        const std::size_t end = std::min(text.find_first_not_of("0123456789", number), text.size());
        return changed.replace(number, end - number, count);
    }
    // From one tag or text to a later one; whether that is an element is left to chance.
    const std::size_t begin = text.find_first_of("<>", start);
    if (begin == std::string_view::npos) {
        return {};
    }
    std::size_t end = begin;
    for (unsigned tags = random() % 6; tags > 0 && end != std::string_view::npos; --tags) {
        end = text.find('>', end + 1);
    }
    changed.insert(end == std::string_view::npos ? text.size() : end + 1, kEnd);
    const std::size_t inside = text[begin] == '<' ? begin : begin + 1;
    return changed.insert(inside, std::string(kTimes) + std::string(count) + std::string(kEndOfTimes));
}

}  // namespace tarvex::fuzz
