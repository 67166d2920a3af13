#include "asm/encoder.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <utility>

#include "capture/captured_message.h"
#include "capture/data_bytes.h"
#include "disasm/coordinates.h"
#include "disasm/record_item.h"
#include "disasm/stream_item.h"
#include "import/text/names.h"
#include "import/text/wording.h"
#include "params/array.h"
#include "params/classified_stream.h"
#include "params/record.h"
#include "params/short_stream.h"
#include "params/stream.h"

namespace tarvex {
namespace {

/// Room for the bytes of any message and what is too much of it: the decoder points into them while they
/// grow.
constexpr std::size_t kRoom = 2 * kMaxMessageBytes;

bool IsErrorInfo(const ZMTParam& param) {
    const ZMTNode* parent = param.GetParent();
    return parent != nullptr && parent->IsType(kOperation) && NamesEqual(param.GetName(), "ErrorInfo") &&
           (param.IsType(kParamStream) || param.IsType(kParamShortStream));
}

/// "[2] Name" of a list, "Name" of others.
std::string NameOf(const ZMTParam& param, unsigned entry) {
    const std::string name = ShownName(param.GetName());
    return entry == 0 ? name : "[" + std::to_string(entry) + "]" + (name.empty() ? "" : " ") + name;
}

}  // namespace

/// Values and which of them were used.
class Encoder::Given {
  public:
    /// The fields outlive this object.
    Given(const std::vector<AsmField>& fields, const AsmPlace& end)
        : fields_(fields), used_(fields.size()), end_(end) {
        for (std::size_t i = fields.size(); i > 0; --i) {
            left_[{fields[i - 1].entry, Folded(fields[i - 1].name)}].push_back(i - 1);
        }
    }

    /// The parameters whose values may be given.
    template <class Params>
    void Expect(const Params& params) {
        for (const ZMTParam& param : params) {
            names_.insert(param.IsType(kParamFktIDBitStream) ? std::string_view("FktIDs")
                                                             : std::string_view(param.GetName()));
        }
    }
    /// The first value for that name and entry that was not used; null if there is none.
    const AsmField* Take(std::string_view name, unsigned entry) {
        const auto found = left_.find({entry, Folded(ShownName(name))});
        if (found == left_.end() || found->second.empty()) {
            return nullptr;
        }
        const std::size_t index = found->second.back();
        found->second.pop_back();
        used_[index] = true;
        return &fields_[index];
    }
    /// A value that nobody wanted; null when all were used.
    const AsmField* Unused() const {
        const auto found = std::ranges::find(used_, false);
        return found == used_.end() ? nullptr : &fields_[static_cast<std::size_t>(found - used_.begin())];
    }
    bool IsWanted(std::string_view name) const {
        return std::ranges::any_of(names_,
                                   [&](std::string_view one) { return NamesEqual(ShownName(one), name); });
    }
    /// A value for a name that no parameter has; null if there is none.
    const AsmField* Unknown() const {
        const auto found =
            std::ranges::find_if(fields_, [&](const AsmField& one) { return !IsWanted(one.name); });
        return found == fields_.end() ? nullptr : &*found;
    }
    std::vector<std::string_view> Names() const { return {names_.begin(), names_.end()}; }
    bool HasEntry(unsigned entry) const {
        const auto found = left_.lower_bound({entry, std::string()});
        return found != left_.end() && found->first.first == entry;
    }
    const AsmPlace& End() const { return end_; }

  private:
    static std::string Folded(std::string_view name) {
        std::string folded(name);
        std::ranges::transform(folded, folded.begin(), FoldCase);
        return folded;
    }

    const std::vector<AsmField>& fields_;
    std::vector<bool> used_;
    // By entry and name, the next one last.
    std::map<std::pair<unsigned, std::string>, std::vector<std::size_t>> left_;
    std::set<std::string_view> names_;
    AsmPlace end_;
};

std::optional<AsmFault> Encoder::Encode(const ZMTOperation& operation, const std::vector<AsmField>& values,
                                        const AsmPlace& end, AsmBytes& out) {
    bytes_.clear();
    bytes_.reserve(kRoom);
    fault_.reset();
    if (const auto& hole = operation.MissingAt()) {
        return AsmFault{"the operation can't be written: " + HoleText(*hole)};
    }
    List list;
    Given given(values, end);
    given.Expect(operation.Items());
    for (const ZMTParam& param : operation.Items()) {
        if (!EncodeNamed(param, given, 0, list)) {
            return fault_;
        }
    }
    if (!CheckUsed(given)) {
        return fault_;
    }
    out = bytes_;
    return std::nullopt;
}

bool Encoder::Fail(std::string text, const AsmPlace& place) {
    fault_ = {std::move(text), place};
    return false;
}

/// Tells of a value that no parameter takes.
bool Encoder::FailUnused(const AsmField& unused, const Given& given) {
    const std::string name = "'" + ShownText(unused.name) + "'";
    return Fail(given.IsWanted(unused.name)
                    ? name + " is one too many"
                    : "unknown parameter " + name + ExpectedNames(unused.name, given.Names()),
                unused.place);
}

/// False when there is a value that no parameter took.
bool Encoder::CheckUsed(const Given& given) {
    const AsmField* unused = given.Unused();
    return unused == nullptr || FailUnused(*unused, given);
}

/// Takes what came of a single parameter.
bool Encoder::Take(const ZMTParam& param, AsmResult result) {
    if (result.IsGood() || (result.mayBeForced && isForced_)) {
        return true;
    }
    return Fail(ShownName(param.GetName()) + ": " + result.fault, result.place);
}

/// Encodes a parameter with the value that was given for its name.
bool Encoder::EncodeNamed(const ZMTParam& param, Given& given, unsigned entry, List& list) {
    const AsmField* field =
        given.Take(param.IsType(kParamFktIDBitStream) ? "FktIDs" : param.GetName(), entry);
    if (field != nullptr) {
        return EncodeParam(param, field->value, list);
    }
    if (param.IsType(kParamVoid)) {
        param.Disassemble(list, bytes_);
        return true;
    }
    if (IsErrorInfo(param)) {
        return true;
    }
    if (const AsmField* unknown = given.Unknown()) {
        return FailUnused(*unknown, given);
    }
    return Fail("missing " + NameOf(param, entry) + ", expected " + ExpectedOf(param), given.End());
}

/// Encodes a parameter, and has the decoder read it, for what it selects.
bool Encoder::EncodeParam(const ZMTParam& param, const AsmValue& value, List& list) {
    const std::size_t begin = bytes_.size();
    if (value.isUnchanged && IsOf(param, value.original)) {
        const std::span<const std::uint8_t> kept = value.original->Bytes();
        bytes_.insert(bytes_.end(), kept.begin(), kept.end());
    } else if (value.form == AsmValue::Form::Bytes && !param.IsType(kParamStream) &&
               !param.IsType(kParamShortStream)) {
        bytes_.insert(bytes_.end(), value.bytes.begin(), value.bytes.end());
    } else if (!EncodeContent(param, value, list)) {
        return false;
    }
    if (bytes_.size() > kMaxMessageBytes) {
        return Fail("the message has more than " + std::to_string(kMaxMessageBytes) + " bytes", value.place);
    }
    list.SetOffset(begin);
    param.Disassemble(list, bytes_);
    list.SetOffset(bytes_.size());
    return true;
}

bool Encoder::EncodeContent(const ZMTParam& param, const AsmValue& value, List& list) {
    switch (param.Kind()) {
        case ParamKind::Number:
            return Take(param, EncodeNumber(static_cast<const ZMTParamNumber&>(param), value, bytes_));
        case ParamKind::Enum:
            return Take(param, EncodeEnum(static_cast<const ZMTParamEnum&>(param), value, bytes_));
        case ParamKind::BitField:
        case ParamKind::Bool:
            return Take(param, EncodeBits(static_cast<const ZMTParamBitField&>(param), value, bytes_));
        case ParamKind::String:
            return Take(param, EncodeString(static_cast<const ZMTParamString&>(param), value, bytes_));
        case ParamKind::FktIDBitStream:
            return Take(param, EncodeFunctionIDs(value, bytes_));
        case ParamKind::Array:
            return EncodeArray(static_cast<const ZMTParamArray&>(param), value, list);
        case ParamKind::Record:
            return EncodeRecord(static_cast<const ZMTParamRecord&>(param), value, list);
        case ParamKind::Stream:
            return EncodeStream(static_cast<const ZMTParamStream&>(param), value, list);
        case ParamKind::ShortStream:
            return EncodeStream(static_cast<const ZMTParamShortStream&>(param), value, list);
        case ParamKind::ClassifiedStream:
            return EncodeClassified(static_cast<const ZMTParamClassifiedStream&>(param), value);
        case ParamKind::Base:
        case ParamKind::BoolField:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::Void:
            break;
    }
    return true;
}

bool Encoder::EncodeArray(const ZMTParamArray& array, const AsmValue& value, List& list) {
    const auto [x, y] = CoordinatesOf(array, array.Selector(), list);
    const ZMTParam* element = array.GetAt(0);
    std::vector<const AsmValue*> entries;
    for (const AsmValue& entry : value.list) {
        entries.push_back(&entry);
    }
    for (const AsmField& field : value.fields) {
        entries.push_back(&field.value);
    }
    const bool isEmpty = value.form == AsmValue::Form::Item && value.text.empty();
    if (entries.empty() && value.form != AsmValue::Form::List && !isEmpty) {
        return Fail(ShownName(array.GetName()) + ": expected " + ExpectedOf(array), value.place);
    }
    if (element == nullptr || entries.size() > (x == 0 ? array.NMax() : 1) || (x != 0 && entries.empty())) {
        return Fail(ShownName(array.GetName()) + ": " + std::to_string(entries.size()) +
                        " entries, expected " +
                        (x == 0 ? "at most " + std::to_string(array.NMax()) : "one, as Pos says"),
                    value.place);
    }
    List inner(list);
    inner.SetMemberNumber(y);
    return std::ranges::all_of(entries,
                               [&](const AsmValue* entry) { return EncodeParam(*element, *entry, inner); });
}

bool Encoder::EncodeRecord(const ZMTParamRecord& record, const AsmValue& value, List& list) {
    const auto [field, member] = FieldCoordinates(record, CoordinatesOf(record, record.Selector(), list));
    if (value.fields.empty() && !value.list.empty()) {
        return Fail(ShownName(record.GetName()) + ": expected " + ExpectedOf(record), value.place);
    }
    List inner(list);
    Given given(value.fields, value.place);
    given.Expect(record.Items());
    if (field != 0) {
        const ZMTParam* only = record.GetAt(field);
        if (only == nullptr) {
            return Fail(ShownName(record.GetName()) + ": there is no field " + std::to_string(field),
                        value.place);
        }
        inner.SetMemberNumber(member);
        if (!EncodeNamed(*only, given, 0, inner)) {
            return false;
        }
    } else {
        for (const ZMTParam& param : record.Items()) {
            if (!EncodeNamed(param, given, 0, inner)) {
                return false;
            }
        }
    }
    return CheckUsed(given);
}

/// Appends bytes given as such, or as hexadecimal text. False when the value has none.
bool Encoder::AppendRaw(const AsmValue& value, std::string_view text) {
    if (value.form == AsmValue::Form::Bytes) {
        bytes_.insert(bytes_.end(), value.bytes.begin(), value.bytes.end());
        return true;
    }
    return ReadDataBytes(text, bytes_).empty();
}

bool Encoder::EncodeStream(const ZMTParamCaseStream& stream, const AsmValue& value, List& list) {
    const std::size_t begin = bytes_.size();
    const bool isShort = stream.IsType(kParamShortStream);
    const std::size_t lengthBytes = isShort ? 1 : 0;
    const ZMTParamStreamCase* streamCase = FindStreamCase(stream, list);
    if (streamCase == nullptr && (stream.Size() > 0 || stream.HasLostCases())) {
        return (IsErrorInfo(stream) && value.text.empty() && value.fields.empty() && value.bytes.empty()) ||
               Fail(ShownName(stream.GetName()) + ": no case fits what selects it", value.place);
    }
    bytes_.resize(begin + lengthBytes);
    List inner(list);
    inner.SetOffset(bytes_.size());
    if (streamCase == nullptr || streamCase->Size() == 0) {
        // A report has the name of the case in front of the bytes.
        std::string_view text = value.text;
        if (const std::size_t close = text.find(')');
            text.starts_with('(') && close != std::string_view::npos) {
            text.remove_prefix(close + 1);
        }
        if (!AppendRaw(value, text) || !value.fields.empty()) {
            return Fail(ShownName(stream.GetName()) + ": expected bytes such as hex:01FF", value.place);
        }
    } else if (value.form == AsmValue::Form::Bytes) {
        AppendRaw(value, {});
    } else if (!EncodeCase(*streamCase, value, inner)) {
        return false;
    }
    return !isShort ||
           EncodeLength(
               stream, value, begin, lengthBytes,
               static_cast<const ZMTParamShortStream&>(static_cast<const ZMTParam&>(stream)).MaxLength());
}

/// Writes the length into the bytes that stand in front of the content.
bool Encoder::EncodeLength(const ZMTParam& param, const AsmValue& value, std::size_t begin,
                           std::size_t lengthBytes, std::uint32_t most) {
    const std::size_t length = bytes_.size() - begin - lengthBytes;
    const std::size_t bound = lengthBytes == 1 ? 0xFF : 0xFFFF;
    if (length > bound || (length > most && !isForced_)) {
        return Fail(ShownName(param.GetName()) + ": " + ByteCount(length) + ", expected at most " +
                        std::to_string(std::min<std::size_t>(bound, most)),
                    value.place);
    }
    for (std::size_t i = 0; i < lengthBytes; ++i) {
        bytes_[begin + i] = static_cast<std::uint8_t>(length >> 8 * (lengthBytes - 1 - i));
    }
    return true;
}

bool Encoder::EncodeCase(const ZMTParamStreamCase& streamCase, const AsmValue& value, List& list) {
    // A list has the repetitions of a group that nothing stands in front of.
    std::vector<AsmField> repeated;
    for (const AsmValue& entry : value.list) {
        for (AsmField field : entry.fields) {
            field.entry = static_cast<unsigned>(&entry - value.list.data()) + 1;
            repeated.push_back(std::move(field));
        }
    }
    Given given(value.list.empty() ? value.fields : repeated, value.place);
    given.Expect(streamCase.Items());
    if (streamCase.Count() > 0 && streamCase.Items().begin()->IsType(kParamStreamSignal)) {
        if (!EncodeSignals(streamCase, given)) {
            return false;
        }
    } else if (streamCase.RepeatedFrom() != ZMTParamStreamCase::kNotRepeated) {
        if (!EncodeRepetitions(streamCase, given, list)) {
            return false;
        }
    } else {
        for (const ZMTParam& param : streamCase.Items()) {
            if (!EncodeNamed(param, given, 0, list)) {
                return false;
            }
        }
    }
    return CheckUsed(given);
}

bool Encoder::EncodeRepetitions(const ZMTParamStreamCase& streamCase, Given& given, List& list) {
    for (unsigned slot = 0; slot < streamCase.RepeatedFrom(); ++slot) {
        if (!EncodeNamed(*streamCase.GetAt(slot), given, 0, list)) {
            return false;
        }
    }
    const std::size_t onceCount = list.Items().size();
    for (unsigned entry = 1; given.HasEntry(entry); ++entry) {
        list.BeginRepetition(onceCount);
        for (unsigned slot = streamCase.RepeatedFrom(); slot < streamCase.Size(); ++slot) {
            if (!EncodeNamed(*streamCase.GetAt(slot), given, entry, list)) {
                return false;
            }
        }
    }
    return true;
}

bool Encoder::EncodeSignals(const ZMTParamStreamCase& streamCase, Given& given) {
    const std::size_t begin = bytes_.size();
    std::size_t bit = 0;
    for (const ZMTParam& param : streamCase.Items()) {
        const auto& signal = static_cast<const ZMTParamStreamSignal&>(param);
        const AsmField* field = given.Take(param.GetName(), 0);
        if (field == nullptr) {
            return Fail("missing " + NameOf(param, 0) + ", expected " + ExpectedOf(param), given.End());
        }
        std::uint32_t value = 0;
        if (!Take(param, ReadSignal(signal, field->value, value))) {
            return false;
        }
        bytes_.resize(begin + (bit + signal.BitLength() + kBitsPerByte - 1) / kBitsPerByte);
        for (std::uint32_t left = signal.BitLength(); left > 0; --left, ++bit) {
            const std::uint32_t one = value >> (left - 1) & 1U;
            std::uint8_t& byte = bytes_[begin + bit / kBitsPerByte];
            byte = static_cast<std::uint8_t>(byte | one << (kBitsPerByte - 1 - bit % kBitsPerByte));
        }
    }
    return true;
}

/// {media_type="text/plain",content=hex:41}, or as a report has it: "text/plain: 41".
bool Encoder::EncodeClassified(const ZMTParamClassifiedStream& stream, const AsmValue& value) {
    constexpr std::size_t kLengthBytes = 2;
    const std::size_t begin = bytes_.size();
    std::string_view type = value.text;
    bytes_.resize(begin + kLengthBytes);
    const std::size_t colon = value.fields.empty() ? type.find(": ") : std::string_view::npos;
    std::string_view content = colon == std::string_view::npos ? std::string_view() : type.substr(colon + 2);
    type = type.substr(0, colon);
    const AsmValue* bytes = nullptr;
    for (const AsmField& field : value.fields) {
        if (NamesEqual(field.name, "media_type")) {
            type = field.value.text;
        } else if (NamesEqual(field.name, "content")) {
            content = field.value.text;
            bytes = &field.value;
        } else {
            return Fail("unknown field '" + ShownText(field.name) + "', expected media_type, content",
                        field.place);
        }
    }
    constexpr std::string_view kNotTerminated = " {NotTerm}";
    const bool isOpen = type.ends_with(kNotTerminated);
    type.remove_suffix(isOpen ? kNotTerminated.size() : 0);
    if (type.empty() && content.empty() && bytes == nullptr && value.fields.empty()) {
        return EncodeLength(stream, value, begin, kLengthBytes, stream.MaxLength());
    }
    bytes_.insert(bytes_.end(), type.begin(), type.end());
    bytes_.resize(bytes_.size() + (isOpen ? 0 : 1));
    if (!AppendRaw(bytes == nullptr ? value : *bytes, content)) {
        return Fail(ShownName(stream.GetName()) + ": expected " + ExpectedOf(stream), value.place);
    }
    return EncodeLength(stream, value, begin, kLengthBytes, stream.MaxLength());
}

}  // namespace tarvex
