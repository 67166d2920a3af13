#include "review/find.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>
#include <span>
#include <utility>

#include "import/text/format_text.h"
#include "import/text/names.h"
#include "import/text/nearest_name.h"
#include "review/own_texts.h"

namespace tarvex::review {
namespace {

/// The numbers of an address, as far as it has them.
struct AddressNumbers {
    std::uint32_t block = 0;
    std::optional<std::uint32_t> function = std::nullopt;
    std::optional<std::uint32_t> opType = std::nullopt;
};

/// The parts between points; empty ones, too.
std::vector<std::string_view> PartsOf(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t point = 0; point != std::string_view::npos;) {
        point = text.find('.');
        parts.push_back(TrimBlanks(text.substr(0, point)));
        text.remove_prefix(point == std::string_view::npos ? text.size() : point + 1);
    }
    return parts;
}

std::optional<std::uint32_t> Hexadecimal(std::string_view digits, std::int32_t end) {
    std::uint32_t number = 0;
    const char* const last = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), last, number, 16);
    const bool isGood = error == std::errc() && rest == last && number < static_cast<std::uint32_t>(end);
    return isGood ? std::optional(number) : std::nullopt;
}

std::optional<AddressNumbers> ReadAddress(std::string_view what) {
    constexpr std::int32_t kInstanceEnd = 256;
    constexpr std::int32_t kOpTypeEnd = std::size(kOpTypes);
    std::vector<std::string_view> parts = PartsOf(what);
    for (std::string_view& part : parts) {
        part.remove_prefix(part.starts_with("0x") || part.starts_with("0X") ? 2 : 0);
    }
    // Of three parts the second is an instance when only the third has the digits of a function.
    if (parts.size() == 4 || (parts.size() == 3 && parts[1].size() <= 2 && parts[2].size() > 1)) {
        if (!Hexadecimal(parts[1], kInstanceEnd)) {
            return std::nullopt;
        }
        parts.erase(parts.begin() + 1);
    }
    const auto block = Hexadecimal(parts[0], kFBlockIDEnd);
    if (!block || parts.size() > 3) {
        return std::nullopt;
    }
    AddressNumbers numbers{*block};
    if (parts.size() > 1 && !(numbers.function = Hexadecimal(parts[1], kFunctionIDEnd))) {
        return std::nullopt;
    }
    if (parts.size() > 2 && !(numbers.opType = Hexadecimal(parts[2], kOpTypeEnd))) {
        return std::nullopt;
    }
    return numbers;
}

/// The parts of a name as the tree has them; what stands for letters is kept.
std::vector<std::string> NamesIn(std::string_view what) {
    std::vector<std::string> names;
    for (const std::string_view part : PartsOf(what)) {
        std::string& name = names.emplace_back();
        for (const char& c : part) {
            name += c == '*' || c == '?' ? std::string(1, c) : SanitizeName({&c, 1});
        }
    }
    return names;
}

/// Whether a whole name is what a pattern says.
bool Matches(std::string_view pattern, std::string_view name) {
    std::size_t p = 0;
    std::size_t behindStar = std::string_view::npos;
    std::size_t tried = 0;  // the letters up to there are what the last star stands for
    for (std::size_t n = 0; n < name.size() || p < pattern.size();) {
        if (p < pattern.size() && pattern[p] == '*') {
            behindStar = ++p;
            tried = n;
        } else if (n < name.size() && p < pattern.size() &&
                   (pattern[p] == '?' || FoldCase(pattern[p]) == FoldCase(name[n]))) {
            ++p;
            ++n;
        } else if (behindStar != std::string_view::npos && tried < name.size()) {
            p = behindStar;
            n = ++tried;
        } else {
            return false;
        }
    }
    return true;
}

/// A part of a name that somebody asks for.
class NamePattern {
  public:
    /// `text`: as it was written, `name`: as the tree would have it.
    NamePattern(std::string_view text, std::string name)
        : text_(WithoutSpaces(text)), name_(std::move(name)), isWhole_(text_.size() == name_.size()) {}

    bool IsEmpty() const { return text_.empty(); }
    bool HasWildcard() const { return text_.find_first_of("*?") != std::string::npos; }
    /// What names in the tree lack is looked for in the catalog.
    template <class Node>
    bool Matches(const Node& node) const {
        return isWhole_ ? review::Matches(name_, node.GetName())
                        : review::Matches(text_, WithoutSpaces(OwnName(node)));
    }
    bool Matches(const ZMTOperation& operation) const { return review::Matches(name_, operation.GetName()); }

  private:
    static std::string WithoutSpaces(std::string_view text) {
        std::string name(text);
        std::ranges::replace(name, ' ', '_');
        return name;
    }

    std::string text_;
    std::string name_;
    bool isWhole_;
};

std::vector<NamePattern> PatternsIn(std::string_view what) {
    const std::vector<std::string_view> parts = PartsOf(what);
    const std::vector<std::string> names = NamesIn(what);
    std::vector<NamePattern> patterns;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        patterns.emplace_back(parts[i], names[i]);
    }
    return patterns;
}

void FindOperations(const Target& function, const NamePattern& pattern, std::vector<Target>& found) {
    for (const ZMTOperation& operation : function.function->Items()) {
        if (pattern.Matches(operation)) {
            found.push_back({function.block, function.function, operation.OpType()});
        }
    }
}

/// `parts`: of the function, and of an operation if it is asked for.
void FindFunctions(const ZMTFBlock& block, std::span<const NamePattern> parts, std::vector<Target>& found) {
    for (const ZMTFunction& function : block.Items()) {
        if (!parts[0].Matches(function)) {
            continue;
        }
        if (parts.size() == 1) {
            found.push_back({&block, &function});
        } else {
            FindOperations({&block, &function}, parts[1], found);
        }
    }
}

/// Names that are like each other stand once.
using Names = std::set<std::string, std::less<>>;

void AddNames(const ZMTFBlock& block, std::size_t parts, Names& names) {
    const std::string& name = block.GetName();
    if (parts == 1) {
        names.insert(name);
    }
    for (const ZMTFunction& function : block.Items()) {
        names.insert(parts == 1 ? function.GetName() : name + "." + function.GetName());
        for (const ZMTOperation& operation : function.Items()) {
            if (parts > 2) {
                names.insert(name + "." + function.GetName() + "." + operation.GetName());
            }
            for (const ZMTParam& param : operation.Items()) {
                if (parts == 1) {
                    names.insert(param.GetName());
                }
            }
        }
    }
}

}  // namespace

std::optional<Target> FindByAddress(const ZMTCatalog& catalog, std::string_view what) {
    const std::optional<AddressNumbers> numbers = ReadAddress(what);
    Target target{numbers ? catalog.GetAt(numbers->block) : nullptr};
    if (target.block == nullptr || !numbers->function) {
        return target.block == nullptr ? std::nullopt : std::optional(target);
    }
    target.function = target.block->GetAt(*numbers->function);
    if (target.function == nullptr) {
        return std::nullopt;
    }
    target.opType = numbers->opType;
    const bool isThere = !target.opType || target.function->GetAt(*target.opType) != nullptr ||
                         target.function->LostParams().FirstOf(*target.opType) != nullptr;
    return isThere ? std::optional(target) : std::nullopt;
}

std::vector<Target> FindByName(const ZMTCatalog& catalog, std::string_view what) {
    const std::vector<NamePattern> parts = PatternsIn(what);
    std::vector<Target> found;
    if (parts.size() > 3 || std::ranges::any_of(parts, &NamePattern::IsEmpty)) {
        return found;
    }
    const std::span<const NamePattern> behindBlock = std::span(parts).subspan(1);
    for (const ZMTFBlock& block : catalog.Items()) {
        const bool isBlock = parts[0].Matches(block);
        if (isBlock && behindBlock.empty()) {
            found.push_back({&block});
        } else if (isBlock) {
            FindFunctions(block, behindBlock, found);
        }
        if (behindBlock.empty() && parts[0].HasWildcard()) {
            FindFunctions(block, parts, found);
        }
    }
    return found;
}

std::string WhyLost(const ZMTCatalog& catalog, std::string_view what) {
    const std::optional<AddressNumbers> numbers = ReadAddress(what);
    if (!numbers) {
        return {};
    }
    const ZMTFBlock* block = catalog.GetAt(numbers->block);
    const unsigned message =
        block == nullptr ? catalog.LostBlocks().MessageOf(numbers->block)
                         : block->LostFunctions().MessageOf(numbers->function.value_or(kFunctionIDEnd));
    if (message == 0) {
        return {};
    }
    return std::string(block == nullptr ? "the block" : "the function") +
           FormatText(" could not be imported (message %u)", message);
}

std::vector<std::string> NearestTo(const ZMTCatalog& catalog, std::string_view what) {
    constexpr std::size_t kNearest = 3;
    std::string name;
    const std::vector<std::string> parts = NamesIn(what);
    for (const std::string& part : parts) {
        name.append(name.empty() ? "" : ".").append(part);
    }
    Names names;
    for (const ZMTFBlock& block : catalog.Items()) {
        AddNames(block, parts.size(), names);
    }
    const std::vector<std::string_view> all(names.begin(), names.end());
    const std::vector<std::string_view> nearest = NearestNames(name, all, kNearest);
    return {nearest.begin(), nearest.end()};
}

}  // namespace tarvex::review
