#include "disasm/stream_item.h"

#include <algorithm>

#include "disasm/coordinates.h"
#include "import/text/parse_value.h"
#include "import/text/wording.h"
#include "params/number.h"
#include "params/pos_and_data.h"
#include "params/short_stream.h"
#include "params/stream.h"

namespace tarvex {
namespace {

/// Of a signed selector the bounds are signed too.
bool Holds(const ZMTParamStreamCase& streamCase, std::int64_t value, bool isSigned) {
    const std::uint32_t min = streamCase.PosYMin();
    const std::uint32_t max = streamCase.PosYMax();
    const bool isOpen = max == static_cast<std::uint32_t>(kOpenRangeEnd);
    if (isSigned) {
        return static_cast<std::int32_t>(min) <= value && (isOpen || value <= static_cast<std::int32_t>(max));
    }
    return std::int64_t{min} <= value && (isOpen || value <= std::int64_t{max});
}

bool HasCases(const ZMTParamCaseStream& stream) {
    return stream.Size() > 0 || stream.HasLostCases();
}

/// Always false. A case that the catalog has and the tree has not may be the one.
bool FaultWithoutCase(const ZMTParamCaseStream& stream, ZMostParameterListBaseInfo& info) {
    if (const unsigned message = stream.CaseLostBy(); message != 0) {
        return info.FaultAtHole(stream, {HoleCause::CaseLost, std::nullopt, message});
    }
    return info.Fault(stream, info.Offset(), "has no case that fits");
}

/// The stream is what an error report says beside its ErrorCode, has no case for that code, and the report
/// ends in front of it. Most codes say no more.
bool IsErrorWithoutInfo(const ZMTParamCaseStream& stream, std::size_t offset,
                        std::span<const std::uint8_t> message) {
    const ZMTNode* parent = stream.GetParent();
    constexpr unsigned kErrorAck = 0x9;
    constexpr unsigned kError = 0xF;
    if (offset < message.size() || parent == nullptr || !parent->IsType(kOperation) || !HasCases(stream) ||
        !NamesEqual(stream.GetName(), "ErrorInfo")) {
        return false;
    }
    const unsigned opType = static_cast<const ZMTOperation&>(*parent).OpType();
    return opType == kError || opType == kErrorAck;
}

/// The parts of a message up to the end of a stream of at most so many bytes that begins at the offset.
std::span<const std::uint8_t> UpTo(std::span<const std::uint8_t> message, std::size_t offset,
                                   std::uint32_t most) {
    const std::size_t left = message.size() - std::min(offset, message.size());
    return most > 0 && most < left ? message.first(offset + most) : message;
}

/// The bits from `bit` on, counted from the highest bit of the first byte.
std::uint32_t BitsAt(std::span<const std::uint8_t> bytes, std::size_t bit, std::uint32_t count) {
    std::uint32_t value = 0;
    for (const std::size_t end = bit + count; bit < end; ++bit) {
        value = value << 1U | (bytes[bit / kBitsPerByte] >> (kBitsPerByte - 1 - bit % kBitsPerByte) & 1U);
    }
    return value;
}

constexpr std::size_t BytesFor(std::size_t bits) {
    return (bits + kBitsPerByte - 1) / kBitsPerByte;
}

}  // namespace

const ZMTParamStreamCase* FindStreamCase(const ZMTParamCaseStream& stream,
                                         const ZMostParameterListBaseInfo& info) {
    const ZMTParam* selector = stream.Selector();
    const bool isOnly = stream.Count() == 1 && !stream.HasLostCases();
    const auto value = SelectorValue(selector, info);
    if (!value) {
        return selector == nullptr && isOnly ? &*stream.Items().begin() : nullptr;
    }
    const bool hasCoordinates = HasBothCoordinates(*selector);
    const bool isSigned =
        selector->IsType(kParamNumber) && static_cast<const ZMTParamNumber&>(*selector).IsSigned();
    const unsigned x = hasCoordinates ? info.Find(*selector)->RawValue(0, 1) : 0;
    for (const ZMTParamStreamCase& streamCase : stream.Items()) {
        if ((isOnly || !streamCase.IsNameUnknown()) &&
            Holds(streamCase, *value, isSigned && !hasCoordinates) &&
            (!hasCoordinates || streamCase.AdmitsX(x))) {
            return &streamCase;
        }
    }
    return nullptr;
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamStream& stream, Bytes message) {
    if (!Reserve(stream)) {
        return false;
    }
    const ZMTParamStreamCase* streamCase = FindStreamCase(stream, *this);
    if (streamCase == nullptr && HasCases(stream) && !IsErrorWithoutInfo(stream, Offset(), message)) {
        return FaultWithoutCase(stream, *this);
    }
    auto item = std::make_unique<ZMostParameterStream>(stream, streamCase, 0, *this);
    const bool isOpenEnded = streamCase == nullptr || streamCase->Size() == 0 ||
                             streamCase->RepeatedFrom() != ZMTParamStreamCase::kNotRepeated;
    const bool isGood = item->Read(isOpenEnded ? UpTo(message, Offset(), stream.Length()) : message);
    return ContainerItem::Finish(std::move(item), isGood, *this, message);
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamShortStream& stream, Bytes message) {
    constexpr std::size_t kLengthBytes = 1;
    const ZMTParamStreamCase* streamCase = FindStreamCase(stream, *this);
    if (streamCase == nullptr && IsErrorWithoutInfo(stream, Offset(), message)) {
        return Reserve(stream) &&
               ContainerItem::Finish(std::make_unique<ZMostParameterStream>(stream, nullptr, 0, *this), true,
                                     *this, message);
    }
    const auto size = PeekLength(stream, kLengthBytes, stream.MaxLength(), message);
    if (!size || !Reserve(stream)) {
        return false;
    }
    if (streamCase == nullptr && HasCases(stream)) {
        return FaultWithoutCase(stream, *this);
    }
    const std::size_t end = Offset() + static_cast<std::size_t>(*size);
    auto item = std::make_unique<ZMostParameterStream>(stream, streamCase, kLengthBytes, *this);
    const bool isGood = item->Read(message.first(end));
    ZMostParameterListBaseInfo& members = item->Members();
    if (isGood && members.Offset() < end) {
        members.Fault(stream, members.Offset(), "has " + ByteCount(end - members.Offset()) + " left over");
        members.SetOffset(end);
    }
    return ContainerItem::Finish(std::move(item), isGood, *this, message);
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamStreamCase& /*streamCase*/, Bytes /*message*/) {
    return false;
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamStreamSignal& /*signal*/, Bytes /*message*/) {
    return false;
}

bool ZMostParameterStream::Read(std::span<const std::uint8_t> message) {
    if (streamCase_ == nullptr || streamCase_->Size() == 0) {
        Members().SetOffset(std::max(Members().Offset(), message.size()));
        return true;
    }
    if (streamCase_->Count() > 0 && streamCase_->Items().begin()->IsType(kParamStreamSignal)) {
        return ReadSignals(message);
    }
    if (streamCase_->RepeatedFrom() != ZMTParamStreamCase::kNotRepeated && !MissingMember(*streamCase_)) {
        return ReadRepetitions(message);
    }
    return ReadMembers(*streamCase_, streamCase_->Items(), Members(), message);
}

/// What stands once, then the group again and again until the bytes end or it takes none.
bool ZMostParameterStream::ReadRepetitions(std::span<const std::uint8_t> message) {
    const unsigned first = streamCase_->RepeatedFrom();
    for (unsigned slot = 0; slot < first; ++slot) {
        if (!streamCase_->GetAt(slot)->Disassemble(Members(), message)) {
            return false;
        }
    }
    const std::size_t onceCount = Members().Items().size();
    bool tookBytes = true;
    while (tookBytes && Members().Offset() < message.size()) {
        const std::size_t begin = Members().Offset();
        Members().BeginRepetition(onceCount);
        for (unsigned slot = first; slot < streamCase_->Size(); ++slot) {
            if (!streamCase_->GetAt(slot)->Disassemble(Members(), message)) {
                return false;
            }
        }
        tookBytes = Members().Offset() > begin;
    }
    return true;
}

bool ZMostParameterStream::ReadSignals(std::span<const std::uint8_t> message) {
    const std::size_t begin = Members().Offset();
    const auto bytes = message.subspan(std::min(begin, message.size()));
    const std::optional<Hole> missing = MissingMember(*streamCase_);
    unsigned left = missing ? *missing->position - 1 : ~0U;
    std::size_t bit = 0;
    for (const ZMTParam& param : streamCase_->Items()) {
        if (left-- == 0) {
            break;
        }
        const auto& signal = static_cast<const ZMTParamStreamSignal&>(param);
        const std::size_t first = bit / kBitsPerByte;
        const std::size_t end = BytesFor(bit + signal.BitLength());
        if (end > bytes.size()) {
            return Members().Fault(signal, begin + std::min(first, bytes.size()), "is not all there");
        }
        if (!Members().Reserve(signal)) {
            return false;
        }
        Members().Append(std::make_unique<ZMostParameterStreamSignal>(
            signal, bytes.subspan(first, end - first), begin + first,
            BitsAt(bytes, bit, signal.BitLength())));
        bit += signal.BitLength();
        Members().SetOffset(begin + end);
    }
    return !missing || Members().FaultAtHole(*streamCase_, begin + bit / kBitsPerByte, *missing);
}

void ZMostParameterStream::AppendText(std::string& out) const {
    const std::string_view name =
        streamCase_ == nullptr ? std::string_view() : std::string_view(streamCase_->GetName());
    if (streamCase_ != nullptr && streamCase_->Size() > 0) {
        out += name;
        return;
    }
    const bool hasSelector =
        static_cast<const ZMTParamCaseStream&>(static_cast<const ZMTParam&>(Parameter())).Selector() !=
        nullptr;
    const auto content = Bytes().subspan(std::min(lengthBytes_, Bytes().size()));
    if (hasSelector) {
        out.append(name).append(name.empty() || content.empty() ? "" : " ");
    }
    AppendHex(out, content, " ");
}

unsigned ZMostParameterStream::EntryNumber(std::size_t member) const {
    const unsigned first =
        streamCase_ == nullptr ? ZMTParamStreamCase::kNotRepeated : streamCase_->RepeatedFrom();
    if (member < first) {
        return 0;
    }
    return static_cast<unsigned>((member - first) / (streamCase_->Size() - first)) + 1;
}

}  // namespace tarvex
