/// Decoded streams and short streams.

#pragma once

#include "disasm/container_item.h"
#include "import/text/wording.h"
#include "params/case_stream.h"
#include "params/stream_signal.h"

namespace tarvex {

/// The first case that holds the value of the selector, which stands in the list or around it. A single case
/// needs no selector. Null when none fits.
const ZMTParamStreamCase* FindStreamCase(const ZMTParamCaseStream& stream,
                                         const ZMostParameterListBaseInfo& info);

/// What one case of a stream holds, or the bytes of a stream without one.
class ZMostParameterStream : public ContainerItem {
  public:
    /// `streamCase`: null for just bytes. `lengthBytes`: in front of the content.
    ZMostParameterStream(const ZMTParam& stream, const ZMTParamStreamCase* streamCase,
                         std::size_t lengthBytes, ZMostParameterListBaseInfo& info)
        : ContainerItem(stream, info), streamCase_(streamCase), lengthBytes_(lengthBytes) {
        Members().SetOffset(Offset() + lengthBytes);
    }

    /// The name of the case, the selector and its values; without parameters the bytes, behind the name if
    /// there is a selector.
    void AppendText(std::string& out) const override;
    unsigned EntryNumber(std::size_t member) const override;

    /// Reads the content, which ends with `message`. False, and a fault, when it does not fit.
    bool Read(std::span<const std::uint8_t> message);

  private:
    bool ReadRepetitions(std::span<const std::uint8_t> message);
    bool ReadSignals(std::span<const std::uint8_t> message);

    const ZMTParamStreamCase* streamCase_;
    std::size_t lengthBytes_;
};

/// A signal of a stream case: the bytes that its bits lie in, and their value.
class ZMostParameterStreamSignal : public ZMostParameter {
  public:
    ZMostParameterStreamSignal(const ZMTParamStreamSignal& signal, std::span<const std::uint8_t> bytes,
                               std::size_t offset, std::uint32_t value)
        : ZMostParameter(signal, bytes, offset), value_(value) {}

    void AppendText(std::string& out) const override { AppendNumber(out, value_); }
    std::uint32_t Value() const { return value_; }

  private:
    std::uint32_t value_;
};

}  // namespace tarvex
