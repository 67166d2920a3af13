#include "review/baseline.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

#include "import/text/files.h"
#include "import/text/shown_text.h"
#include "kestrel/atomic_file.h"
#include "review/fault_text.h"

namespace tarvex::review {
namespace {

constexpr std::string_view kFirstLine = "tarvex-catalog baseline 1";

/// Everything in front of the separator, which is dropped with it; nothing without one.
std::optional<std::string_view> TakeUntil(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

/// False for a text that is no number as a whole.
template <class Number>
bool ReadNumber(std::string_view text, Number& number) {
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end && !text.empty();
}

/// Nothing is there, or nothing but a baseline.
bool MayBeReplaced(const std::string& path) {
    const File file = OpenForReading(path);
    std::string beginning(kFirstLine.size() + 1, '\0');
    beginning.resize(file ? std::fread(beginning.data(), 1, beginning.size(), file.get()) : 0);
    return beginning.empty() || beginning == std::string(kFirstLine) + "\n";
}

}  // namespace

/// Texts are as they are shown, so that none has a tab or the end of a line in it.
Baseline::Key Baseline::KeyOf(const Fault& fault) {
    return {Shown(PathBelowCatalog(fault.path)), fault.number, Shown(fault.text)};
}

void Baseline::Add(const Fault& fault) {
    ++counts_[KeyOf(fault)];
}

void Baseline::Join(const Baseline& other) {
    for (const auto& [key, count] : other.counts_) {
        std::size_t& known = counts_[key];
        known = std::max(known, count);
    }
}

bool Baseline::Take(const Fault& fault) {
    const auto found = counts_.find(KeyOf(fault));
    if (found == counts_.end() || found->second == 0) {
        return false;
    }
    --found->second;
    return true;
}

Baseline Baseline::Read(const std::string& path) {
    const auto fail = [&](std::size_t line, const std::string& why) -> std::runtime_error {
        return std::runtime_error(Shown(path) + ":" + std::to_string(line) + ": " + why);
    };
    if (FileSize(path) > kMaxBytes) {
        throw fail(1, "the file is too large for a baseline");
    }
    const std::optional<std::string> content = ReadFile(path, kMaxBytes);
    if (!content) {
        throw std::runtime_error("can't read '" + Shown(path) + "'");
    }
    std::string_view rest = *content;
    if (TakeUntil(rest, '\n') != kFirstLine) {
        throw fail(1, "this is no baseline: its first line is not '" + std::string(kFirstLine) + "'");
    }
    Baseline baseline;
    for (std::size_t line = 2; !rest.empty(); ++line) {
        std::optional<std::string_view> row = TakeUntil(rest, '\n');
        if (!row) {
            throw fail(line, "the file ends within a line");
        }
        const auto count = TakeUntil(*row, '\t');
        const auto number = count ? TakeUntil(*row, '\t') : std::nullopt;
        const auto nodePath = number ? TakeUntil(*row, '\t') : std::nullopt;
        std::size_t often = 0;
        unsigned messageNumber = 0;
        if (!nodePath || !ReadNumber(*count, often) || !ReadNumber(*number, messageNumber)) {
            throw fail(line, "expected count, number, path and text, parted by tabs");
        }
        baseline.counts_[{std::string(*nodePath), messageNumber, std::string(*row)}] += often;
    }
    return baseline;
}

void Baseline::Write(const std::string& path) const {
    if (!MayBeReplaced(path)) {
        throw std::runtime_error("can't write '" + Shown(path) + "': it is no baseline, and is not replaced");
    }
    kestrel::AtomicFile file;
    if (!file.Open(path)) {
        throw std::runtime_error("can't write '" + Shown(path) + "'");
    }
    file.Append(kFirstLine);
    file.Append("\n");
    for (const auto& [key, count] : counts_) {
        const auto& [nodePath, number, text] = key;
        for (const std::string& field : {std::to_string(count), std::to_string(number), nodePath}) {
            file.Append(field);
            file.Append("\t");
        }
        file.Append(text);
        file.Append("\n");
    }
    if (!file.Commit()) {
        throw std::runtime_error("can't write '" + Shown(path) + "'; what was there before is unchanged");
    }
}

}  // namespace tarvex::review
