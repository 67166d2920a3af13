/// From lines of names and values to messages.

#pragma once

#include <nlohmann/json_fwd.hpp>

#include "asm/encoder.h"
#include "capture/capture_reader.h"

namespace tarvex {

/// Takes what was made of the lines.
class AsmSink {
  public:
    AsmSink() = default;
    AsmSink(const AsmSink&) = delete;
    AsmSink& operator=(const AsmSink&) = delete;
    virtual ~AsmSink() = default;

    virtual void TakeMessage(const CapturedMessage& message) = 0;
    /// `line`: of the message, from 1. Columns count characters.
    virtual void TakeFault(std::uint64_t line, const AsmFault& fault) = 0;
};

/// Reads lines such as "AudioAmp.01.Bass__Treble.Set Bass=12.5 Treble=-3", both reports of the disassembler,
/// and captures. Parameters of a report that say still what their bytes say keep them; the values of all
/// others count.
class Assembler : private LineTaker, private MessageSink {
  public:
    /// The catalog and the sink outlive this object. With `isForced` values may be out of range and off the
    /// step.
    Assembler(const ZMTCatalog& catalog, bool isForced, AsmSink& sink);

    /// Lines come as to a CaptureReader.
    void TakeLine(std::string_view line, bool isCut = false) { reader_.TakeLine(line, isCut); }
    bool WantsMore() const { return reader_.WantsMore(); }
    void TakeMore(std::string_view more, bool isCut) { reader_.TakeMore(more, isCut); }
    void Finish();

  private:
    bool TakeOwnLine(std::string_view line, std::uint64_t number) override;
    bool TakeOwnObject(std::string_view object, std::uint64_t number) override;
    void TakeMessage(const CapturedMessage& message) override;
    void TakeBroken(const CapturedMessage& message, std::string_view fault) override;
    void TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) override;

    bool TakeValues(std::string_view line);
    std::optional<AsmFault> ReadJson(const nlohmann::json& json);
    std::optional<AsmFault> ReadItems(const nlohmann::json& items, bool hasData);
    void FinishReport();
    std::optional<AsmFault> ReadReport();
    const ZMTOperation* OperationOf(const CapturedMessage& message, std::string& fault) const;
    std::optional<AsmFault> Encode(const std::vector<AsmField>& values, const AsmPlace& end);
    void Tell(std::optional<AsmFault> fault, std::string_view line = {});

    const ZMTCatalog& catalog_;
    AddressNames names_;
    Encoder encoder_;
    AsmSink& sink_;
    CaptureReader reader_;
    CapturedMessage message_;
    bool isReportOpen_ = false;
    std::vector<std::string> items_;  // the lines below a message of a report
};

}  // namespace tarvex
