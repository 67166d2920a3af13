#include "driver/disasm_run.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "capture/capture_reader.h"
#include "capture/segment_joiner.h"
#include "disasm/message_filter.h"
#include "driver/capture_output.h"
#include "driver/line_reader.h"
#include "import/text/files.h"

namespace tarvex {
namespace {

constexpr const char* kProgram = "tarvex-disasm";
constexpr const char* kStandardInput = "-";

/// What a run has met.
struct Counts {
    std::uint64_t messages = 0;
    std::uint64_t faulty = 0;
    std::uint64_t unreadable = 0;

    bool IsClean() const { return faulty == 0 && unreadable == 0; }
};

/// Decodes messages and has them reported.
class Decoder : public MessageSink {
  public:
    Decoder(const ZMTCatalog& catalog, const Report& report, const DisasmOptions& options,
            CaptureOutput& output)
        : catalog_(catalog), report_(report), stats_(options.stats.has_value()), output_(output) {}

    MessageFilter& Filter() { return filter_; }
    const TrafficStats& Stats() const { return traffic_; }
    const Counts& Met() const { return counts_; }
    void BeginCapture(const std::string& name) { place_.file = name; }

    void TakeMessage(const CapturedMessage& message) override {
        place_.number = message.line;
        if (stats_ || output_.Room() > 0) {
            DecodedMessage decoded;
            DecodeMessage(catalog_, message, decoded);
            if (Tell(message, decoded)) {
                return;
            }
            output_.UseUp(decoded.items.CountOfAll());
        }
        TellFault(message, "the report would become too large");
    }
    void TakeBroken(const CapturedMessage& message, std::string_view fault) override {
        place_.number = message.line;
        TellFault(message, fault);
    }
    void TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) override {
        ++counts_.unreadable;
        place_.number = line;
        if (!stats_ && filter_.ShowsUnreadable() && output_.Room() > 0) {
            report_.BadLine(place_, text, fault, output_.Text());
        }
    }

  private:
    /// False when the report has no room for the message.
    bool Tell(const CapturedMessage& message, const DecodedMessage& decoded) {
        const bool isFaulty = !decoded.faults.empty();
        if (filter_.Shows(message, isFaulty)) {
            if (stats_) {
                traffic_.Add(message, decoded);
            } else if (!report_.Message(place_, message, decoded, output_.Text(), output_.Room())) {
                return false;
            }
        }
        ++counts_.messages;
        counts_.faulty += isFaulty ? 1 : 0;
        return true;
    }
    /// A message of which only this can be said.
    void TellFault(const CapturedMessage& message, std::string_view fault) {
        DecodedMessage nothing;
        nothing.faults.emplace_back(fault);
        ++counts_.messages;
        ++counts_.faulty;
        if (!filter_.Shows(message, true)) {
            return;
        }
        if (stats_) {
            traffic_.Add(message, nothing);
        } else {
            report_.Message(place_, message, nothing, output_.Text());
        }
    }

    const ZMTCatalog& catalog_;
    const Report& report_;
    bool stats_;
    CaptureOutput& output_;
    MessageFilter filter_;
    TrafficStats traffic_;
    Counts counts_;
    LinePlace place_;
};

/// A run with its catalog.
class Run {
  public:
    Run(const ZMTCatalog& catalog, const Report& report, const DisasmOptions& options)
        : options_(options), report_(report), names_(&catalog), decoder_(catalog, report, options, output_) {}

    /// Understands the options; false, after a complaint, when one is of no use.
    bool Prepare(const ZMTCatalog& catalog) {
        for (const std::string& wanted : options_.only) {
            if (const std::string fault = decoder_.Filter().Add(wanted, catalog); !fault.empty()) {
                Complain(kProgram, std::string("--only ").append(wanted).append(": ").append(fault));
                return false;
            }
        }
        columns_ = TableColumns::FromList(options_.columns);
        if (!columns_ && !options_.columns.empty()) {
            Complain(kProgram, "--columns " + options_.columns +
                                   ": expected data, and message or fblock, function and optype");
            return false;
        }
        return true;
    }

    /// Status of the captures read.
    DisasmStatus Decode(const std::vector<std::string>& captures) {
        if (!options_.stats) {
            report_.Begin(output_.Text());
        }
        DisasmStatus status = kDisasmClean;
        for (const std::string& name :
             captures.empty() ? std::vector<std::string>{kStandardInput} : captures) {
            decoder_.BeginCapture(captures.empty() ? std::string() : name);
            if (!output_.HasFailed() && !DecodeFile(name)) {
                status = kDisasmTrouble;
            }
        }
        return decoder_.Met().IsClean() ? status : std::max(status, kDisasmFaults);
    }

    /// False, after a complaint, when something could not be written.
    bool Finish() {
        if (options_.stats) {
            decoder_.Stats().Append(*options_.stats, output_.Text());
        }
        output_.Write();
        if (output_.HasFailed()) {
            Complain(kProgram, "can't write the output: " + output_.Error());
            return false;
        }
        const Counts& met = decoder_.Met();
        Complain(kProgram, std::to_string(met.messages) + (met.messages == 1 ? " message, " : " messages, ") +
                               std::to_string(met.faulty) + " faulty; " + std::to_string(met.unreadable) +
                               " unreadable");
        return true;
    }

  private:
    bool DecodeFile(const std::string& name) {
        const bool isStandardInput = name == kStandardInput;
        const File file(isStandardInput ? nullptr : std::fopen(name.c_str(), "rb"));  // pipes are welcome
        if (!isStandardInput && !file) {
            Complain(kProgram, "can't read '" + name + "'");
            return false;
        }
        LineReader lines(isStandardInput ? STDIN_FILENO : ::fileno(file.get()),
                         [&] { return output_.Write(); });
        SegmentBounds bounds;
        bounds.seconds = options_.segmentSeconds.value_or(bounds.seconds);
        SegmentJoiner joiner(decoder_, bounds);
        CaptureReader reader(names_, columns_ ? &*columns_ : nullptr, joiner);
        for (std::string_view line; !output_.HasFailed() && lines.Next(line); output_.WriteIfLarge()) {
            output_.AddInput(line.size() + 1);  // with its line feed
            reader.TakeLine(line, lines.IsCut());
            while (reader.WantsMore() && !output_.HasFailed() && lines.NextPiece(line)) {
                output_.AddInput(line.size());
                reader.TakeMore(line, lines.IsCut());
                output_.WriteIfLarge();
            }
        }
        reader.Finish();
        joiner.Finish();
        if (lines.HasFailed()) {
            Complain(kProgram, "can't read '" + name + "' to its end");
        }
        return !lines.HasFailed();
    }

    const DisasmOptions& options_;
    const Report& report_;
    AddressNames names_;
    std::optional<TableColumns> columns_;
    CaptureOutput output_;
    Decoder decoder_;
};

}  // namespace

DisasmStatus RunDisasm(const std::string& catalogPath, const std::vector<std::string>& captures,
                       const Report& report, const DisasmOptions& options) {
    ZMostFCatManager manager;
    const ZMTCatalog* catalog = ImportForMessages(manager, kProgram, catalogPath, options.forms);
    if (catalog == nullptr) {
        return kDisasmTrouble;
    }
    Run run(*catalog, report, options);
    if (!run.Prepare(*catalog)) {
        return kDisasmTrouble;
    }
    const DisasmStatus status = run.Decode(captures);
    return run.Finish() ? status : kDisasmTrouble;
}

}  // namespace tarvex
