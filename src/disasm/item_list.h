/// The decoded parameters of a message, and the faults that decoding has found.

#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "catalog/hole.h"
#include "disasm/item.h"
#include "params/param_decoder.h"

namespace tarvex {

/// One message gives so many items at most; the parameter that needs more is a fault.
inline constexpr std::size_t kMaxItems = 65536;

/// Something in a message that does not fit its description.
struct DisassemblyFault {
    std::string text;
    /// In bytes from the beginning of the message.
    std::size_t offset;
    /// What follows can't be read, as the catalog lacks something.
    bool isHole = false;
};

/// Collects the items of one message, or those of an array, record or stream in it. Parameters take their
/// bytes at its offset, one behind the other.
class ZMostParameterListBaseInfo : public ParamDecoder {
  public:
    /// For a message, from its first byte on.
    ZMostParameterListBaseInfo() = default;
    /// For the members of an item that is about to join `outer`: from outer's offset on, with outer's faults.
    /// `outer` outlives this list's use by Disassemble; what is asked of the finished list is asked of it
    /// alone.
    explicit ZMostParameterListBaseInfo(ZMostParameterListBaseInfo& outer)
        : root_(outer.root_), outer_(&outer), offset_(outer.offset_) {}
    ZMostParameterListBaseInfo(const ZMostParameterListBaseInfo&) = delete;
    ZMostParameterListBaseInfo& operator=(const ZMostParameterListBaseInfo&) = delete;
    ~ZMostParameterListBaseInfo() override = default;

    // Each is defined in the file of the item that it appends: the one for numbers in number_item.cpp.
    bool Decode(const ZMTParamArray& array, Bytes message) override;
    bool Decode(const ZMTParamBitField& field, Bytes message) override;
    bool Decode(const ZMTParamBoolField& bit, Bytes message) override;
    bool Decode(const ZMTParamClassifiedStream& stream, Bytes message) override;
    bool Decode(const ZMTParamEnum& enumeration, Bytes message) override;
    bool Decode(const ZMTParamFktIDBitStream& stream, Bytes message) override;
    bool Decode(const ZMTParamNumber& number, Bytes message) override;
    bool Decode(const ZMTParamRecord& record, Bytes message) override;
    bool Decode(const ZMTParamShortStream& stream, Bytes message) override;
    bool Decode(const ZMTParamStream& stream, Bytes message) override;
    bool Decode(const ZMTParamStreamCase& streamCase, Bytes message) override;
    bool Decode(const ZMTParamStreamSignal& signal, Bytes message) override;
    bool Decode(const ZMTParamString& string, Bytes message) override;
    bool Decode(const ZMTParamVoid& voidParam, Bytes message) override;

    /// Where the next parameter begins, in bytes from the beginning of the message.
    std::size_t Offset() const { return offset_; }
    void SetOffset(std::size_t offset) { offset_ = offset; }

    /// Makes room for the items of a parameter; false, and a fault, when the message has too many.
    bool Reserve(const ZMTNode& parameter, std::size_t items = 1);
    /// Makes room for them and takes the next `count` bytes of the message for the parameter; the offset
    /// moves behind them. Nothing, and a fault, when they are not all there.
    std::optional<std::span<const std::uint8_t>> Take(const ZMTNode& parameter, std::int64_t count,
                                                      std::span<const std::uint8_t> message,
                                                      std::size_t items = 1);
    /// The bytes that a parameter takes which begins with its length in `lengthBytes` bytes, these included.
    /// Nothing, and a fault, when they are not all there; a fault alone when there are more than `most`
    /// behind the length.
    std::optional<std::int64_t> PeekLength(const ZMTNode& parameter, std::size_t lengthBytes,
                                           std::uint32_t most, std::span<const std::uint8_t> message);
    void Append(std::unique_ptr<ZMostParameter> item) { items_.push_back(std::move(item)); }
    const std::vector<std::unique_ptr<ZMostParameter>>& Items() const { return items_; }

    /// How many items the whole message has room made for.
    std::size_t CountOfAll() const { return root_->itemCount_; }

    /// The last item that was decoded from a parameter, in this list or while it is filled in one around it;
    /// null if there is none yet.
    const ZMostParameter* Find(const ZMTNode& parameter) const;

    /// Notes that the message does not fit the parameter at an offset. Always false.
    bool Fault(const ZMTNode& parameter, std::size_t offset, const std::string& what);
    /// The same for what the catalog does not know: the bytes from there on mean nothing.
    bool FaultAtHole(const ZMTNode& parameter, const Hole& hole) {
        return FaultAtHole(parameter, offset_, hole);
    }
    bool FaultAtHole(const ZMTNode& parameter, std::size_t offset, const Hole& hole);
    /// Those of the whole message.
    const std::vector<DisassemblyFault>& Faults() const { return root_->faults_; }

    /// Number of the only entry or field that arrays and records directly in this list have in the message; 0
    /// for all.
    unsigned MemberNumber() const { return memberNumber_; }
    void SetMemberNumber(unsigned number) { memberNumber_ = number; }

    /// The next repetition begins here. `onceCount`: of the items in front of all repetitions. Find looks at
    /// these and at the last repetition.
    void BeginRepetition(std::size_t onceCount) {
        onceCount_ = onceCount;
        repetition_ = items_.size();
    }

  private:
    const ZMostParameter* FindHere(const ZMTNode& parameter) const;

    ZMostParameterListBaseInfo* root_ = this;
    const ZMostParameterListBaseInfo* outer_ = nullptr;
    std::vector<std::unique_ptr<ZMostParameter>> items_;
    std::vector<DisassemblyFault> faults_;  // of the root
    std::size_t itemCount_ = 0;             // of the root
    std::size_t offset_ = 0;
    unsigned memberNumber_ = 0;
    std::size_t onceCount_ = 0;   // items in front of all repetitions
    std::size_t repetition_ = 0;  // where the last one begins
};

/// Takes `count` bytes of the message for a parameter and appends its item to the list. False, and a fault,
/// when they are not there or there is no room for so many items.
template <class Item, class Parameter>
bool TakeItem(ZMostParameterListBaseInfo& info, const Parameter& parameter, std::int64_t count,
              std::span<const std::uint8_t> message, std::size_t items = 1) {
    const std::size_t offset = info.Offset();
    const auto bytes = info.Take(parameter, count, message, items);
    if (!bytes) {
        return false;
    }
    info.Append(std::make_unique<Item>(parameter, *bytes, offset));
    return true;
}

}  // namespace tarvex
