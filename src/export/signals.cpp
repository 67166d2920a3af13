#include "export/signals.h"

#include <algorithm>
#include <iterator>

#include "export/kestrel_values.h"
#include "export/message_names.h"
#include "export/scaling.h"
#include "import/text/format_text.h"
#include "params/bit_field.h"
#include "params/enumeration.h"
#include "params/layout.h"
#include "params/number.h"
#include "params/pos_and_data.h"
#include "params/record.h"

namespace tarvex {
namespace {

/// Names of enumerations and single bits are kept short.
constexpr std::size_t kShortName = 26;
constexpr std::size_t kLongName = kNameSize;

/// The value of the multiplexor under which all elements of a record follow each other.
constexpr std::uint32_t kAllElements = 0;

std::string CleanSignalName(std::string_view name) {
    std::string clean(name);
    std::erase_if(clean, [](char c) { return !IsLetterOrDigit(c) && c != '_'; });
    return clean;
}

std::uint16_t LengthInBits(const ZMTParam& param) {
    return static_cast<std::uint16_t>(static_cast<std::uint32_t>(param.GetBytesInMsg()) * kBitsPerByte);
}

/// Bits of signals can be counted that far.
bool HasRoom(const ZMTParam& param, std::uint32_t bit) {
    constexpr std::int64_t kBits = 0x10000;
    return bit + std::int64_t{param.GetBytesInMsg()} * kBitsPerByte <= kBits;
}

/// In the numbering of big-endian signals, where the highest bit of byte 0 is 7.
std::uint16_t StartBit(std::uint32_t bit) {
    return static_cast<std::uint16_t>(bit / kBitsPerByte * kBitsPerByte + (kBitsPerByte - 1) -
                                      bit % kBitsPerByte);
}

/// Makes the signal a big-endian one whose most significant bit is at the bit position.
void PlaceBigEndian(sigblk& signal, std::uint32_t bit) {
    signal.flags |= kSignalBigEndian;
    signal.start_bit = StartBit(bit);
}

/// The coordinates of an operation that has lost a parameter, which may have been the record that they choose
/// from.
bool MayBeSwitch(const ZMTParam& number) {
    const ZMTNode* parent = number.GetParent();
    return HasCoordinates(number) && !IsSwitch(number) && parent != nullptr && parent->IsType(kOperation) &&
           static_cast<const ZMTOperation&>(*parent).MissingAt();
}

/// How many fields stand in front of the first one that is missing.
unsigned SoundFields(const ZMTParamRecord& record) {
    const std::optional<Hole> missing = MissingMember(record);
    return missing ? *missing->position - 1 : record.Count();
}

/// Appends a value description to the list that ends here, and gives its new end.
valdesc** AppendDescription(valdesc** end, std::uint32_t value, std::string_view text) {
    auto* entry = static_cast<valdesc*>(kestrel_malloc(sizeof(valdesc)));
    entry->value = value;
    CopyName(entry->text, text);
    entry->next = nullptr;
    *end = entry;
    return &entry->next;
}

}  // namespace

std::uint16_t SignalWriter::Write(msgblk& message, const ZMTOperation& operation) {
    message_ = &message;
    signalCount_ = 0;
    isSwitched_ = false;
    names_.StartMessage();
    std::uint32_t bit = 0;
    unsigned left = options_.isSafe ? operation.SoundCount() : operation.Count();
    for (const ZMTParam& param : operation.Items()) {
        if (left-- == 0 || !WriteParam(param, bit, std::nullopt)) {
            break;
        }
    }
    return static_cast<std::uint16_t>((bit + kBitsPerByte - 1) / kBitsPerByte);
}

/// Writes a parameter at a bit position, which advances. False when nothing can follow it.
bool SignalWriter::WriteParam(const ZMTParam& param, std::uint32_t& bit, MultiplexerValue multiplexer) {
    if (options_.isSafe && !HasRoom(param, bit)) {
        return false;
    }
    switch (param.Kind()) {
        case ParamKind::Number:
            if (options_.isSafe && (UnsureEnd(param) || MayBeSwitch(param))) {
                return false;
            }
            WriteNumber(static_cast<const ZMTParamNumber&>(param), bit, multiplexer);
            return true;
        case ParamKind::Enum:
            if (options_.isSafe && UnsureEnd(param)) {
                return false;
            }
            WriteEnum(static_cast<const ZMTParamEnum&>(param), bit, multiplexer);
            return true;
        case ParamKind::Bool:
        case ParamKind::BitField:
            return WriteBits(static_cast<const ZMTParamBitField&>(param), bit, multiplexer);
        case ParamKind::Record:
            if (options_.isSafe) {
                return WriteSafeRecord(static_cast<const ZMTParamRecord&>(param), bit, multiplexer);
            }
            WriteGroup(static_cast<const ZMTParamRecord&>(param), bit);
            return false;
        case ParamKind::Void:
            return options_.isSafe;  // it has no bytes
        case ParamKind::Array:
        case ParamKind::Base:
        case ParamKind::BoolField:
        case ParamKind::ClassifiedStream:
        case ParamKind::FktIDBitStream:
        case ParamKind::ShortStream:
        case ParamKind::Stream:
        case ParamKind::StreamCase:
        case ParamKind::StreamSignal:
        case ParamKind::String:
            break;
    }
    return false;
}

void SignalWriter::WriteNumber(const ZMTParamNumber& number, std::uint32_t& bit,
                               MultiplexerValue multiplexer) {
    const bool isSwitch = IsSwitch(number);
    isSwitched_ = isSwitched_ || isSwitch;
    const std::optional<sigscale> scaling =
        options_.areScaled ? std::optional(ScalingOf(number)) : std::nullopt;
    if (sigblk* signal = Create(aliases_.Of(number.GetName()), isSwitch ? "X" : "", kLongName, multiplexer,
                                scaling ? CostOf(*scaling) : Cost())) {
        if (isSwitch) {
            signal->flags |= kSignalMultiplexor;  // and little-endian
            signal->start_bit = options_.isSafe ? static_cast<std::uint16_t>(bit) : signal->start_bit;
        } else {
            PlaceBigEndian(*signal, bit);
        }
        if (number.IsSigned()) {
            signal->flags |= kSignalSigned;
        }
        signal->length = LengthInBits(number);
        if (scaling) {
            writer_.SetScaling(*message_, *signal, *scaling);
        }
    }
    bit += LengthInBits(number);
}

void SignalWriter::WriteEnum(const ZMTParamEnum& enumeration, std::uint32_t& bit,
                             MultiplexerValue multiplexer) {
    const std::uint16_t length = LengthInBits(enumeration);
    if (sigblk* signal = Create(aliases_.Of(enumeration.GetName()), "", kShortName, multiplexer)) {
        PlaceBigEndian(*signal, bit);
        signal->length = length;
        Describe(*signal, enumeration);
    }
    bit += length;
}

/// Gives each code its value's text, up to the largest code that the signal can hold.
void SignalWriter::Describe(sigblk& signal, const ZMTParamEnum& enumeration) {
    const std::uint64_t codesEnd = std::uint64_t{1} << std::min<unsigned>(signal.length, 16);
    valdesc** end = &signal.value_descriptions;
    unsigned count = 0;
    for (const ZMTEnumValue& value : enumeration.Items()) {
        const std::string& text = aliases_.Of(value.GetName());
        const std::uint64_t valueEnd = std::min(std::uint64_t{value.CodeMax()} + 1, codesEnd);
        for (std::uint64_t code = value.CodeMin(); code < valueEnd; ++code) {
            if (count == left_.descriptionsPerSignal || !TakeDescription()) {
                return;
            }
            end = AppendDescription(end, static_cast<std::uint32_t>(code), text);
            ++count;
        }
    }
}

/// One signal for each named bit that has room in the field.
bool SignalWriter::WriteBits(const ZMTParamBitField& field, std::uint32_t& bit,
                             MultiplexerValue multiplexer) {
    if (field.GetBytesInMsg() < 1) {
        return false;
    }
    const std::uint32_t size = LengthInBits(field);
    for (const ZMTParamBoolField& boolField : field.Items()) {
        if (boolField.BitPos() < size) {
            WriteBit(field, boolField, bit + size - 1 - boolField.BitPos(), multiplexer);
        }
    }
    bit += size;
    return true;
}

void SignalWriter::WriteBit(const ZMTParamBitField& field, const ZMTParamBoolField& boolField,
                            std::uint32_t bit, MultiplexerValue multiplexer) {
    const std::string baseName = boolField.GetName().empty() ? aliases_.Of(field.GetName()) + "_NN_" +
                                                                   std::to_string(boolField.BitPos())
                                                             : aliases_.Of(boolField.GetName());
    if (sigblk* signal = Create(baseName, "", kShortName, multiplexer)) {
        PlaceBigEndian(*signal, bit);
        signal->length = 1;
        valdesc** end = &signal->value_descriptions;
        end = AppendDescription(end, 1, aliases_.Of(boolField.TrueDesc()));
        AppendDescription(end, 0, aliases_.Of(boolField.FalseDesc()));
    }
}

/// Each element stands twice: one behind the other for the multiplexor's value 0, and alone, at the start of
/// the record, for the value that is the element's number.
void SignalWriter::WriteGroup(const ZMTParamRecord& record, std::uint32_t& bit) {
    const std::uint32_t start = bit;
    const unsigned sound = options_.isSafe ? SoundFields(record) : record.Count();
    std::uint32_t elementNumber = 0;
    for (const ZMTParam& element : record.Items()) {
        if (elementNumber++ == sound) {
            return;
        }
        const unsigned countBefore = signalCount_;
        const bool goesOn = WriteParam(element, bit, kAllElements);
        // Where nothing was written, or nothing more can be, the second time is spared: records inside
        // records would double it with every level.
        if (signalCount_ > countBefore && signalCount_ < left_.signalsPerMessage) {
            std::uint32_t ownBit = start;
            WriteParam(element, ownBit, elementNumber);
        }
        if (!goesOn) {
            return;
        }
    }
}

/// A group if a switch of the operation chooses the fields, else each field once. False when nothing can
/// follow it.
bool SignalWriter::WriteSafeRecord(const ZMTParamRecord& record, std::uint32_t& bit,
                                   MultiplexerValue multiplexer) {
    if (isSwitched_ && !multiplexer) {
        WriteGroup(record, bit);
        return false;
    }
    return !HasChosenFields(record) && WriteFields(record, bit, multiplexer);
}

bool SignalWriter::WriteFields(const ZMTParamRecord& record, std::uint32_t& bit,
                               MultiplexerValue multiplexer) {
    unsigned left = SoundFields(record);
    for (const ZMTParam& field : record.Items()) {
        if (left-- == 0 || !WriteParam(field, bit, multiplexer)) {
            return false;
        }
    }
    return !MissingMember(record) && !UnsureEnd(record);
}

/// A long name is cleaned and shortened letter by letter. `more`: what the signal takes besides.
bool SignalWriter::TakeSignal(std::size_t nameLength, const Cost& more) {
    constexpr std::size_t kLettersPerStep = 4;
    Cost cost = SignalBudget::kSignal;
    cost.steps += nameLength / kLettersPerStep + more.steps;
    cost.memory += more.memory;
    cost.written += more.written;
    if (!left_.signals.Take(1) || !left_.run.Take(cost)) {
        left_.signals.End();
    }
    return !left_.signals.IsSpent();
}

bool SignalWriter::TakeDescription() {
    if (!left_.descriptions.Take(1) || !left_.run.Take(SignalBudget::kDescription)) {
        left_.descriptions.End();
    }
    return !left_.descriptions.IsSpent();
}

/// A new signal of the message that has a name; null when the message has no room for one more.
sigblk* SignalWriter::Create(const std::string& baseName, std::string suffix, std::size_t maxNameLength,
                             MultiplexerValue multiplexer, const Cost& more) {
    if (signalCount_ == left_.signalsPerMessage || !TakeSignal(baseName.size(), more)) {
        return nullptr;
    }
    ++signalCount_;
    sigblk* signal = writer_.CreateSignal(*message_, 0);
    if (multiplexer) {
        suffix = FormatText("_M%x", *multiplexer);
        signal->flags |= kSignalMultiplexed;
        signal->multiplexer_value = *multiplexer;
    }
    CopyName(signal->name,
             names_.Make(*message_, CleanSignalName(baseName), std::move(suffix), maxNameLength));
    return signal;
}

}  // namespace tarvex
