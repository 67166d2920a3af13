/// From lines of names and values to messages.

#pragma once

#include <nlohmann/json_fwd.hpp>

#include "asm/encoder.h"
#include "capture/address_names.h"

namespace tarvex {

/// Takes what was made of the lines.
class AsmSink {
  public:
    AsmSink() = default;
    AsmSink(const AsmSink&) = delete;
    AsmSink& operator=(const AsmSink&) = delete;
    virtual ~AsmSink() = default;

    virtual void TakeMessage(const CapturedMessage& message) = 0;
    /// `line`: of the message, from 1.
    virtual void TakeFault(std::uint64_t line, const AsmFault& fault) = 0;
};

/// Reads lines such as "AudioAmp.01.Bass__Treble.Set Bass=12.5 Treble=-3", and both reports of the
/// disassembler. A message of a report that says still what its bytes say keeps them; otherwise its values
/// count.
class Assembler {
  public:
    /// The catalog and the sink outlive this object. With `isForced` values may be out of range and off the
    /// step.
    Assembler(const ZMTCatalog& catalog, bool isForced, AsmSink& sink);

    void TakeLine(std::string_view line);
    void Finish();

  private:
    void TakeHeader(std::string_view line);
    void TakeJson(std::string_view line);
    std::optional<AsmFault> ReadJson(const nlohmann::json& json);
    void FinishReport();
    bool SaysTheSame(const std::vector<std::string>& items) const;
    bool SaysTheSame(const nlohmann::json& items) const;
    const ZMTOperation* OperationOf(const CapturedMessage& message, std::string& fault) const;
    std::optional<AsmFault> Encode(const std::vector<AsmField>& values, const AsmPlace& end);

    const ZMTCatalog& catalog_;
    AddressNames names_;
    Encoder encoder_;
    AsmSink& sink_;
    CapturedMessage message_;
    std::uint64_t number_ = 0;
    bool isReportOpen_ = false;
    std::vector<std::string> items_;  // the lines below a message of a report
};

}  // namespace tarvex
