#include "driver/asm_run.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "asm/assembler.h"
#include "capture/line_prefix.h"
#include "disasm/json_report.h"
#include "driver/capture_output.h"
#include "driver/line_reader.h"
#include "import/text/files.h"
#include "import/text/shown_text.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr const char* kAsmProgram = "tarvex-asm";
constexpr const char* kAsmInput = "-";

/// Writes messages, and complains of lines.
class Writer : public AsmSink {
  public:
    Writer(bool isJson, CaptureOutput& output) : isJson_(isJson), output_(output) {}

    void BeginFile(const std::string& name) { file_ = name == kAsmInput ? std::string() : name + ":"; }
    bool IsClean() const { return isClean_; }

    void TakeMessage(const CapturedMessage& message) override {
        std::string& out = output_.Text();
        if (isJson_) {
            AppendJsonMessage(message, out);
            return;
        }
        AppendPrefix(message, out);
        AppendAddress(message, out);
        AppendHex(out += " (", message.data, " ");
        out += ")\n";
    }
    void TakeFault(std::uint64_t line, const AsmFault& fault) override {
        isClean_ = false;
        Complain(kAsmProgram, Shown(file_) + std::to_string(line + fault.place.line) + ":" +
                                  std::to_string(fault.place.column) + ": " + fault.text);
    }

  private:
    bool isJson_;
    CaptureOutput& output_;
    std::string file_;
    bool isClean_ = true;
};

/// False, after a complaint, when the file can't be read.
bool ReadLines(const std::string& name, Assembler& assembler, CaptureOutput& output) {
    const bool isStandardInput = name == kAsmInput;
    const File file(isStandardInput ? nullptr : std::fopen(name.c_str(), "rb"));  // pipes are welcome
    if (!isStandardInput && !file) {
        Complain(kAsmProgram, "can't read '" + name + "'");
        return false;
    }
    LineReader lines(isStandardInput ? STDIN_FILENO : ::fileno(file.get()), [&] { return output.Write(); });
    for (std::string_view line; !output.HasFailed() && lines.Next(line); output.WriteIfLarge()) {
        assembler.TakeLine(line, lines.IsCut());
        while (assembler.WantsMore() && !output.HasFailed() && lines.NextPiece(line)) {
            assembler.TakeMore(line, lines.IsCut());
            output.WriteIfLarge();
        }
    }
    assembler.Finish();
    if (lines.HasFailed()) {
        Complain(kAsmProgram, "can't read '" + name + "' to its end");
    }
    return !lines.HasFailed();
}

}  // namespace

AsmStatus RunAsm(const std::string& catalogPath, const std::vector<std::string>& files,
                 const AsmOptions& options) {
    ZMostFCatManager manager;
    const ZMTCatalog* catalog = ImportForMessages(manager, kAsmProgram, catalogPath, options.forms);
    if (catalog == nullptr) {
        return kAsmTrouble;
    }
    CaptureOutput output;
    Writer writer(options.isJson, output);
    AsmStatus status = kAsmClean;
    for (const std::string& name : files.empty() ? std::vector<std::string>{kAsmInput} : files) {
        Assembler assembler(*catalog, options.isForced, writer);
        writer.BeginFile(name);
        if (!output.HasFailed() && !ReadLines(name, assembler, output)) {
            status = kAsmTrouble;
        }
    }
    output.Write();
    if (output.HasFailed()) {
        Complain(kAsmProgram, "can't write the output: " + output.Error());
        return kAsmTrouble;
    }
    return writer.IsClean() ? status : std::max(status, kAsmFaults);
}

}  // namespace tarvex
