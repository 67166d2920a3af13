/// A Vorn file as the JSON parser reads it.

#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "kestrel/input_file.h"

namespace kestrel {

/// The bytes of a file, and the line that they are in. Opening and reading throw `ReadError`.
class VornSource {
  public:
    explicit VornSource(const std::string& path) : file_(OpenInput(path)) {}

    /// The byte at the current position, or -1 at the end.
    int Peek() {
        if (next_ == end_ && !Fill()) {
            return -1;
        }
        const auto byte = static_cast<unsigned char>(buffer_[next_]);
        if (byte == 0) {
            FailAtZero();  // the parser would take it for the end
        }
        return byte;
    }
    void Advance() {
        if (Peek() == '\n') {
            ++line_;
        }
        ++next_;
    }
    std::size_t Line() const { return line_; }

  private:
    bool Fill();
    [[noreturn]] void FailAtZero() const;

    InputFile file_;
    std::vector<char> buffer_ = std::vector<char>(1U << 16);
    std::size_t next_ = 0;
    std::size_t end_ = 0;
    std::size_t line_ = 1;
};

/// Walks over a source as the parser wants it. One without a source is the end.
class VornSourceIterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    VornSourceIterator() = default;
    explicit VornSourceIterator(VornSource& source) : source_(&source) {}

    char operator*() const { return static_cast<char>(source_->Peek()); }
    VornSourceIterator& operator++() {
        source_->Advance();
        return *this;
    }
    VornSourceIterator operator++(int) {  // NOLINT(cert-dcl21-cpp): as the parser wants it
        VornSourceIterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const VornSourceIterator& a, const VornSourceIterator& b) {
        return a.IsEnd() == b.IsEnd();
    }
    friend bool operator!=(const VornSourceIterator& a, const VornSourceIterator& b) { return !(a == b); }

  private:
    bool IsEnd() const { return source_ == nullptr || source_->Peek() < 0; }

    VornSource* source_ = nullptr;
};

}  // namespace kestrel
