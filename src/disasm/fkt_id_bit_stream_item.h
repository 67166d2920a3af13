/// Decoded lists of FunctionIDs.

#pragma once

#include "disasm/item.h"
#include "params/fkt_id_bit_stream.h"

namespace tarvex {

/// The functions that a block offers: all bytes that are left of the message.
class ZMostParameterFktIDBitStream : public ZMostParameter {
  public:
    ZMostParameterFktIDBitStream(const ZMTParamFktIDBitStream& stream, std::span<const std::uint8_t> bytes,
                                 std::size_t offset)
        : ZMostParameter(stream, bytes, offset) {}

    std::string_view GetName() const override { return "FktIDs"; }
    /// The FunctionIDs in ascending order: "000, 001, 100..105".
    void AppendText(std::string& out) const override;
};

}  // namespace tarvex
