/// The base of all decoded parameters.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "catalog/node.h"

namespace tarvex {

class ZMostParameterListBaseInfo;

/// One decoded parameter of a message: the parameter of the catalog, its bytes, and the offset in the message
/// at which they stand. The catalog and the bytes of the message outlive the item.
class ZMostParameter {
  public:
    ZMostParameter(const ZMTNode& parameter, std::span<const std::uint8_t> bytes, std::size_t offset)
        : parameter_(parameter), bytes_(bytes), offset_(offset) {}
    ZMostParameter(const ZMostParameter&) = delete;
    ZMostParameter& operator=(const ZMostParameter&) = delete;
    virtual ~ZMostParameter() = default;

    /// The code of the parameter's class.
    virtual NodeType GetType() const { return parameter_.GetType(); }
    bool IsType(int code) const { return code == GetType(); }
    ParamKind Kind() const { return static_cast<ParamKind>(GetType()); }
    /// How the item is called: the parameter's name, unless the kind has names of its own.
    virtual std::string_view GetName() const { return parameter_.GetName(); }
    /// Appends how a text for people calls it.
    virtual void AppendLabel(std::string& out) const;
    /// Appends the value in words; nothing for kinds that have none.
    virtual void AppendText(std::string& /*out*/) const {}
    /// What AppendLabel and AppendText append.
    std::string GetLabel() const;
    std::string GetText() const;
    /// The items of which this one is made, in the order of the message; null for a scalar.
    virtual const ZMostParameterListBaseInfo* Members() const { return nullptr; }

    /// The number, counted from 1, of the entry or repetition that the member with that index belongs to; 0
    /// where members have no numbers.
    virtual unsigned EntryNumber(std::size_t /*member*/) const { return 0; }

    const ZMTNode& Parameter() const { return parameter_; }
    std::span<const std::uint8_t> Bytes() const { return bytes_; }
    /// In bytes from the beginning of the message.
    std::size_t Offset() const { return offset_; }

    /// The unsigned number in `length` bytes (1 to 4) that begin at a byte of the item, most significant
    /// first; 0 for another length or beyond the item's end.
    std::uint32_t RawValue(std::size_t begin, std::size_t length) const;
    /// That of all bytes.
    std::uint32_t RawValue() const { return RawValue(0, bytes_.size()); }

  protected:
    /// For items that know their bytes only when their members are decoded.
    void SetBytes(std::span<const std::uint8_t> bytes) { bytes_ = bytes; }

  private:
    const ZMTNode& parameter_;
    std::span<const std::uint8_t> bytes_;
    std::size_t offset_;
};

}  // namespace tarvex
