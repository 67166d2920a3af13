#include "capture/address_names.h"

#include <algorithm>
#include <array>
#include <vector>

#include "capture/hexadecimal.h"
#include "import/text/nearest_name.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr std::uint32_t kMaxByte = 0xFF;
constexpr std::uint32_t kMaxFunction = 0xFFF;
constexpr std::uint32_t kMaxOpType = 0xF;

std::string NotValid(std::string_view field) {
    return "no valid " + std::string(field) + ", expected FBlockID.InstID.FktID.OPType";
}

/// A field that is a number and not too large.
bool TakeNumber(std::string_view text, std::uint32_t max, std::uint32_t& out) {
    const auto value = HexOf(text);
    if (value && *value <= max) {
        out = *value;
        return true;
    }
    return false;
}

/// The field may be meant as a name.
bool IsName(std::string_view text) {
    return !text.empty() && !HexOf(text) && std::ranges::all_of(text, IsNameCharacter) &&
           std::ranges::any_of(text, [](char c) { return FoldCase(c) >= 'a' && FoldCase(c) <= 'z'; });
}

/// "unknown function 'Volme' (Volume?)".
template <class List>
std::string UnknownName(std::string_view what, std::string_view name, const List& list) {
    std::vector<std::string_view> names;
    for (const auto& node : list.Items()) {
        names.push_back(node.GetName());
    }
    const std::string_view nearest = NearestName(name, names);
    return "unknown " + std::string(what) + " '" + ShownText(name) + "'" +
           (nearest.empty() ? std::string() : " (" + ShownName(nearest) + "?)");
}

/// The OPType that a function of some kind has under that name.
std::optional<std::uint32_t> OpTypeOf(std::string_view name, bool isProperty, bool isMethod) {
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const OpTypeRow& row = kOpTypes[opType];
        if ((isProperty && NamesEqual(row.propertyName, name)) ||
            (isMethod && NamesEqual(row.methodName, name))) {
            return opType;
        }
    }
    return std::nullopt;
}

/// The fields of an address, of which five are looked at.
constexpr std::size_t kMostFields = 5;
struct Split {
    std::array<std::string_view, kMostFields> fields;
    std::size_t count = 0;
};
Split SplitAtPoints(std::string_view text) {
    Split split;
    for (std::size_t begin = 0; split.count < kMostFields;) {
        const std::size_t point =
            split.count + 1 < kMostFields ? text.find('.', begin) : std::string_view::npos;
        split.fields[split.count++] =
            text.substr(begin, point == std::string_view::npos ? std::string_view::npos : point - begin);
        if (point == std::string_view::npos) {
            break;
        }
        begin = point + 1;
    }
    return split;
}

}  // namespace

bool IsNameCharacter(char c) {
    constexpr std::string_view kMarks = "[]()_-";
    return (FoldCase(c) >= 'a' && FoldCase(c) <= 'z') || (c >= '0' && c <= '9') ||
           kMarks.find(c) != std::string_view::npos;
}

std::string AddressNames::Read(std::string_view address, CapturedMessage& out,
                               std::optional<std::string_view>& length) const {
    const auto [fields, count] = SplitAtPoints(address);
    length = count == kMostFields ? std::optional(fields[kMostFields - 1]) : std::nullopt;
    if (count == 3 && IsName(fields[0]) && IsName(fields[1])) {
        return Read({fields[0], {}, fields[1], fields[2]}, out);
    }
    if (std::string fault = ReadBlock(fields[0], out); !fault.empty()) {
        return fault;
    }
    if (count < 2 || !TakeNumber(fields[1], kMaxByte, out.instID)) {
        return NotValid("InstID");
    }
    std::string fault = ReadFunction(count < 3 ? std::string_view() : fields[2], out);
    return fault.empty() ? ReadOpType(count < 4 ? std::string_view() : fields[3], out) : fault;
}

std::string AddressNames::Read(const AddressFields& fields, CapturedMessage& out) const {
    std::string fault = ReadBlock(fields.fBlock, out);
    out.instID = kUsualInstance;
    if (fault.empty() && !fields.inst.empty() && !TakeNumber(fields.inst, kMaxByte, out.instID)) {
        return NotValid("InstID");
    }
    if (fault.empty()) {
        fault = ReadFunction(fields.function, out);
    }
    return fault.empty() ? ReadOpType(fields.opType, out) : fault;
}

std::string AddressNames::ReadBlock(std::string_view text, CapturedMessage& out) const {
    if (TakeNumber(text, kMaxByte, out.fBlockID)) {
        return {};
    }
    if (catalog_ == nullptr || !IsName(text)) {
        return NotValid("FBlockID");
    }
    const auto* block = static_cast<const ZMTFBlock*>(catalog_->FindChild(text));
    if (block == nullptr) {
        return NotValid("FBlockID") + ": " + UnknownName("function block", text, *catalog_);
    }
    out.fBlockID = block->FBlockID();
    return {};
}

std::string AddressNames::ReadFunction(std::string_view text, CapturedMessage& out) const {
    if (TakeNumber(text, kMaxFunction, out.fktID)) {
        return {};
    }
    const ZMTFBlock* block = catalog_ == nullptr ? nullptr : catalog_->GetAt(out.fBlockID);
    if (block == nullptr || !IsName(text)) {
        return NotValid("FktID");
    }
    const auto* function = static_cast<const ZMTFunction*>(block->FindChild(text));
    if (function == nullptr) {
        return NotValid("FktID") + ": " + UnknownName("function", text, *block);
    }
    out.fktID = function->FunctionID();
    return {};
}

std::string AddressNames::ReadOpType(std::string_view text, CapturedMessage& out) const {
    if (TakeNumber(text, kMaxOpType, out.opType)) {
        return {};
    }
    if (!IsName(text)) {
        return NotValid("OPType");
    }
    const ZMTFunction* function = FunctionOf(out);
    const ClassKind kind = function == nullptr ? ClassKind::Unknown : function->Class();
    const auto opType = OpTypeOf(text, kind != ClassKind::Method, kind != ClassKind::Property);
    if (!opType) {
        return NotValid("OPType") +
               (function == nullptr ? std::string() : ": " + UnknownName("operation", text, *function));
    }
    out.opType = *opType;
    return {};
}

const ZMTFunction* AddressNames::FunctionOf(const CapturedMessage& message) const {
    const ZMTFBlock* block = catalog_ == nullptr ? nullptr : catalog_->GetAt(message.fBlockID);
    return block == nullptr ? nullptr : block->GetAt(message.fktID);
}

}  // namespace tarvex
