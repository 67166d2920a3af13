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
const ZMTCatalog* ImportCatalog(ZMostFCatManager& manager, const std::string& path,
                                const CatalogForms& forms) {
    std::string events;
    std::string result;
    manager.Validate = forms.areValidated;
    manager.ReadNewer = forms.areNewerRead;
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
    /// So many bytes of captures were read.
    void AddInput(std::size_t bytes) { input_ += bytes; }
    /// How long the report of a message may become.
    std::size_t Room() const {
        const std::size_t bound = kReportBytes.For(input_);
        return bound - std::min(bound, used_ + text_.size());
    }
    /// A report that was made in vain takes what it has found, and something for each of the items that were
    /// decoded for it, which the next lines have to earn.
    void UseUp(std::size_t items) {
        constexpr std::size_t kBytesPerItem = 256;
        used_ += Room() + items * kBytesPerItem;
    }
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
        used_ += text_.size();
        text_.clear();
        return error_ == 0;
    }
    bool HasFailed() const { return error_ != 0; }
    std::string Error() const { return std::strerror(error_); }

  private:
    std::string text_;
    std::size_t input_ = 0;
    std::size_t used_ = 0;  // of what the input allows
    int error_ = 0;
};

/// Decodes a message. True when it fits the catalog, and its report the output.
bool TellMessage(const LinePlace& place, const CapturedMessage& message, const ZMTCatalog& catalog,
                 const Report& report, Output& output) {
    if (output.Room() > 0) {
        DecodedMessage decoded;
        DecodeMessage(catalog, message, decoded);
        if (report.Message(place, message, decoded, output.Text(), output.Room())) {
            return decoded.faults.empty();
        }
        output.UseUp(decoded.items.CountOfAll());
    }
    DecodedMessage nothing;
    nothing.faults.emplace_back("the report would become too large");
    report.Message(place, message, nothing, output.Text());
    return false;
}

/// Decodes one capture. True when every line was a message that fits.
bool DecodeCapture(LineReader& reader, const std::string& name, const ZMTCatalog& catalog,
                   const Report& report, Output& output) {
    bool isClean = true;
    LinePlace place{name, 0};
    CapturedMessage message;
    for (std::string_view line; !output.HasFailed() && reader.Next(line); output.WriteIfLarge()) {
        output.AddInput(line.size() + 1);  // with its line feed
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
        isClean &= TellMessage(place, message, catalog, report, output);
    }
    return isClean;
}

}  // namespace

DisasmStatus RunDisasm(const std::string& catalogPath, const std::vector<std::string>& captures,
                       const Report& report, const CatalogForms& forms) {
    ZMostFCatManager manager;
    const ZMTCatalog* catalog = ImportCatalog(manager, catalogPath, forms);
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
