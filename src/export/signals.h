/// From the parameters of an operation to the signals of its message, bit by bit.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "catalog/operation.h"
#include "export/alias_names.h"
#include "export/signal_names.h"
#include "import/text/allowance.h"
#include "import/text/run_allowance.h"
#include "kestrel/kestrel.h"

namespace tarvex {

class ZMTParamBitField;
class ZMTParamBoolField;
class ZMTParamEnum;
class ZMTParamNumber;
class ZMTParamRecord;

/// One message takes so many signals: records inside records double them with every level. Parameters that
/// come after get none.
inline constexpr unsigned kMaxSignals = 4096;
/// One signal takes so many value descriptions: a code of two bytes has no more values.
inline constexpr unsigned kMaxValueDescriptions = 65536;

/// What the signals of a database may take. A few ranges in a catalog can ask for billions of value
/// descriptions, and records inside records for millions of signals; what goes beyond is left out.
struct SignalBudget {
    static constexpr Bound kSignals{std::size_t{1} << 20, 1, 4};
    static constexpr Bound kDescriptions{std::size_t{1} << 22, 1, 4};
    /// What catalogs usually have.
    static constexpr Bound kExpectedSignals{0, 1, 128};

    /// `part`: of the run's allowance, what signals may take of it.
    explicit SignalBudget(std::size_t catalogBytes = 0, const RunAllowance& part = RunAllowance())
        : run(part),
          signals(kSignals, catalogBytes),
          descriptions(kDescriptions, catalogBytes),
          expectedSignals(kExpectedSignals.For(catalogBytes)) {}

    /// A signal, with its name, and a value description, in the format where they take most.
    static constexpr Cost kSignal{160, 256, 160};
    static constexpr Cost kDescription{50, 72, 64};

    RunAllowance run;
    Allowance signals;
    Allowance descriptions;
    std::size_t expectedSignals;
    unsigned signalsPerMessage = kMaxSignals;
    unsigned descriptionsPerSignal = kMaxValueDescriptions;
};

/// What signals look like.
struct SignalOptions {
    bool areNamesUnique = true;  ///< A signal name occurs once in the whole database.
    bool isSafe = false;         ///< No signal stands where the catalog does not say for sure that it does.
    bool areScaled = false;      ///< Numbers have their factor, range, step and unit.
};

/// Lays the parameters of operations out as the signals of their messages, most significant bit first.
class SignalWriter {
  public:
    /// The database writer and the aliases outlive this object.
    SignalWriter(KestrelWriteManager& writer, const AliasNames& aliases, const SignalOptions& options,
                 const SignalBudget& budget = SignalBudget())
        : writer_(writer),
          aliases_(aliases),
          options_(options),
          names_(writer, options.areNamesUnique, budget.expectedSignals),
          left_(budget) {}

    /// Creates the signals of the operation in its message. Ends behind a record and at the first parameter
    /// of a kind that has no signals; with a safe layout in front of the first hole, and behind a record only
    /// where a switch chooses its fields. Returns the bytes that the parameters with signals take.
    std::uint16_t Write(msgblk& message, const ZMTOperation& operation);

    /// The budget or the run was too small; signals or value descriptions are missing.
    bool IsCut() const { return left_.signals.IsSpent() || left_.descriptions.IsSpent(); }

  private:
    /// The value of the multiplexor for which a signal is there; none outside records.
    using MultiplexerValue = std::optional<std::uint32_t>;

    bool WriteParam(const ZMTParam& param, std::uint32_t& bit, MultiplexerValue multiplexer);
    void WriteNumber(const ZMTParamNumber& number, std::uint32_t& bit, MultiplexerValue multiplexer);
    void WriteEnum(const ZMTParamEnum& enumeration, std::uint32_t& bit, MultiplexerValue multiplexer);
    bool WriteBits(const ZMTParamBitField& field, std::uint32_t& bit, MultiplexerValue multiplexer);
    void WriteBit(const ZMTParamBitField& field, const ZMTParamBoolField& boolField, std::uint32_t bit,
                  MultiplexerValue multiplexer);
    void WriteGroup(const ZMTParamRecord& record, std::uint32_t& bit);
    bool WriteSafeRecord(const ZMTParamRecord& record, std::uint32_t& bit, MultiplexerValue multiplexer);
    bool WriteFields(const ZMTParamRecord& record, std::uint32_t& bit, MultiplexerValue multiplexer);

    void Describe(sigblk& signal, const ZMTParamEnum& enumeration);
    bool TakeSignal(std::size_t nameLength, const Cost& more);
    bool TakeDescription();
    sigblk* Create(const std::string& baseName, std::string suffix, std::size_t maxNameLength,
                   MultiplexerValue multiplexer, const Cost& more = Cost());

    KestrelWriteManager& writer_;
    const AliasNames& aliases_;
    SignalOptions options_;
    SignalNames names_;
    msgblk* message_ = nullptr;  // the one being written
    unsigned signalCount_ = 0;   // of that message
    bool isSwitched_ = false;    // it has a switch
    SignalBudget left_;
};

}  // namespace tarvex
