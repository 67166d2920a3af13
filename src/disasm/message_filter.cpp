#include "disasm/message_filter.h"

#include <algorithm>

#include "capture/hexadecimal.h"
#include "import/text/names.h"
#include "import/text/nearest_name.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr std::string_view kAny = "*";

bool IsNumberOrAny(std::string_view field) {
    return field == kAny || HexOf(field);
}

bool FieldFits(std::optional<std::uint32_t> wanted, std::uint32_t value) {
    return !wanted || *wanted == value;
}

/// A name that no block and no function has, with the nearest that one of them has.
std::string UnknownAnywhere(std::string_view name, const ZMTCatalog& catalog) {
    std::vector<std::string_view> names;
    for (const ZMTFBlock& block : catalog.Items()) {
        names.push_back(block.GetName());
        for (const ZMTFunction& function : block.Items()) {
            names.push_back(function.GetName());
        }
    }
    const std::string_view nearest = NearestName(name, names);
    return "unknown function block or function '" + ShownText(name) + "'" +
           (nearest.empty() ? std::string() : " (" + ShownName(nearest) + "?)");
}

}  // namespace

std::string MessageFilter::Add(std::string_view wanted, const ZMTCatalog& catalog) {
    if (NamesEqual(wanted, "FAULTY")) {
        onlyFaulty_ = true;
        return {};
    }
    std::vector<std::string_view> fields = SplitTokens(wanted, ".");
    constexpr std::size_t kFields = 4;
    if (fields.empty() || fields.size() > kFields) {
        return "'" + ShownText(wanted) + "' is neither FAULTY nor an address nor a name";
    }
    if (fields.size() == 1 && !IsNumberOrAny(fields[0]) && catalog.FindChild(fields[0]) == nullptr) {
        return AddFunctions(fields[0], catalog) ? std::string() : UnknownAnywhere(fields[0], catalog);
    }
    // Names leave out the instance.
    if (fields.size() > 1 && !IsNumberOrAny(fields[1])) {
        fields.insert(fields.begin() + 1, kAny);
    }
    return AddPattern(fields, AddressNames(&catalog));
}

std::string MessageFilter::AddPattern(const std::vector<std::string_view>& fields,
                                      const AddressNames& names) {
    constexpr std::size_t kInst = 1;
    constexpr std::size_t kFunction = 2;
    constexpr std::size_t kOpType = 3;
    const auto given = [&](std::size_t field) { return field < fields.size() && fields[field] != kAny; };
    Pattern pattern;
    CapturedMessage read;
    std::string fault;
    if (given(0)) {
        fault = names.ReadBlock(fields[0], read);
        pattern.fBlock = read.fBlockID;
    }
    if (given(kInst)) {
        pattern.inst = HexOf(fields[kInst]);
        constexpr std::uint32_t kMaxInst = 0xFF;
        if (!pattern.inst || *pattern.inst > kMaxInst) {
            fault = "no valid InstID '" + ShownText(fields[kInst]) + "'";
        }
    }
    if (fault.empty() && given(kFunction)) {
        fault = names.ReadFunction(fields[kFunction], read);
        pattern.function = read.fktID;
    }
    if (fault.empty() && given(kOpType)) {
        fault = names.ReadOpType(fields[kOpType], read);
        pattern.opType = read.opType;
    }
    if (fault.empty()) {
        patterns_.push_back(pattern);
    }
    return fault;
}

/// The functions of that name in all blocks; false when there is none.
bool MessageFilter::AddFunctions(std::string_view name, const ZMTCatalog& catalog) {
    bool isFound = false;
    for (const ZMTFBlock& block : catalog.Items()) {
        if (const auto* function = static_cast<const ZMTFunction*>(block.FindChild(name))) {
            patterns_.push_back({block.FBlockID(), std::nullopt, function->FunctionID(), std::nullopt});
            isFound = true;
        }
    }
    return isFound;
}

bool MessageFilter::Fits(const Pattern& pattern, const CapturedMessage& message) {
    return FieldFits(pattern.fBlock, message.fBlockID) && FieldFits(pattern.inst, message.instID) &&
           FieldFits(pattern.function, message.fktID) && FieldFits(pattern.opType, message.opType);
}

bool MessageFilter::Shows(const CapturedMessage& message, bool isFaulty) const {
    return (isFaulty || !onlyFaulty_) &&
           (patterns_.empty() ||
            std::ranges::any_of(patterns_, [&](const Pattern& pattern) { return Fits(pattern, message); }));
}

}  // namespace tarvex
