#include "driver/disasm_run.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

#include "driver/line_reader.h"
#include "import/import_manager.h"
#include "import/text/files.h"
#include "import/text/shown_text.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

constexpr std::size_t kOutputBuffer = std::size_t{1} << 16;

constexpr const char* kStandardInput = "-";

void Complain(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    std::fprintf(stderr, "tarvex-disasm: %s\n", text.c_str());
}

/// Null, after a complaint, when the catalog can't be imported.
const ZMTCatalog* ImportCatalog(ZMostFCatManager& manager, const std::string& path) {
    std::string events;
    std::string result;
    manager.Validate = false;
    manager.MessageSink = [&](const std::string& text, ImportEvent event) {
        (event == ImportEvent::Result ? result : events).append(" ").append(text);
    };
    std::string name;
    const bool isImported = manager.Import(name, path, kCatalogGroup, "");
    for (const std::string& file : manager.OutsideFiles()) {
        Complain("the catalog reads '" + Shown(file) + "', which is outside its folder");
    }
    if (!isImported) {
        Complain("can't import the catalog:" + events + result);
        return nullptr;
    }
    if (!result.empty()) {
        Complain(path + ":" + result);
    }
    return manager.FindCatalog(name);
}

/// Collects output and writes it in large pieces.
class Output {
  public:
    std::string& Text() { return text_; }
    void WriteIfLarge() {
        if (text_.size() >= kOutputBuffer) {
            Write();
        }
    }
    /// False once something could not be written.
    bool Write() {
        const bool isWritten = std::fwrite(text_.data(), 1, text_.size(), stdout) == text_.size();
        if ((!isWritten || std::fflush(stdout) != 0) && error_ == 0) {
            error_ = errno;
        }
        text_.clear();
        return error_ == 0;
    }
    bool HasFailed() const { return error_ != 0; }
    std::string Error() const { return std::strerror(error_); }

  private:
    std::string text_;
    int error_ = 0;
};

/// Decodes one capture. True when every line was a message that fits.
bool DecodeCapture(LineReader& reader, const std::string& name, const ZMTCatalog& catalog,
                   const Report& report, Output& output) {
    bool isClean = true;
    LinePlace place{name, 0};
    CapturedMessage message;
    for (std::string_view line; !output.HasFailed() && reader.Next(line); output.WriteIfLarge()) {
        if (++place.number == 1) {
            TakeByteOrderMark(line);
        }
        if (IsCommentLine(line)) {
            continue;
        }
        const std::string fault = reader.IsCut() ? "the line is too long" : ParseMessageLine(line, message);
        if (!fault.empty()) {
            report.BadLine(place, line, fault, output.Text());
            isClean = false;
            continue;
        }
        DecodedMessage decoded;
        DecodeMessage(catalog, message, decoded);
        report.Message(place, message, decoded, output.Text());
        isClean &= decoded.faults.empty();
    }
    return isClean;
}

}  // namespace

DisasmStatus RunDisasm(const std::string& catalogPath, const std::vector<std::string>& captures,
                       const Report& report) {
    ZMostFCatManager manager;
    const ZMTCatalog* catalog = ImportCatalog(manager, catalogPath);
    if (catalog == nullptr) {
        return kDisasmTrouble;
    }
    const std::vector<std::string> names =
        captures.empty() ? std::vector<std::string>{kStandardInput} : captures;
    DisasmStatus status = kDisasmClean;
    Output output;
    for (const std::string& name : names) {
        if (output.HasFailed()) {
            break;
        }
        const bool isStandardInput = name == kStandardInput;
        const File file(isStandardInput ? nullptr : std::fopen(name.c_str(), "rb"));  // pipes are welcome
        if (!isStandardInput && !file) {
            Complain("can't read '" + name + "'");
            status = kDisasmTrouble;
            continue;
        }
        LineReader reader(isStandardInput ? STDIN_FILENO : ::fileno(file.get()),
                          [&] { return output.Write(); });
        const bool isClean =
            DecodeCapture(reader, captures.empty() ? std::string() : name, *catalog, report, output);
        if (reader.HasFailed()) {
            Complain("can't read '" + name + "' to its end");
            status = kDisasmTrouble;
        } else if (!isClean) {
            status = std::max(status, kDisasmFaults);
        }
    }
    output.Write();
    if (output.HasFailed()) {
        Complain("can't write the output: " + output.Error());
        return kDisasmTrouble;
    }
    return status;
}

}  // namespace tarvex
