#include "asm/assembly.h"

#include <algorithm>

#include "capture/line_prefix.h"
#include "import/text/wording.h"

namespace tarvex::test {
namespace {

class TextSink : public AsmSink {
  public:
    void TakeMessage(const CapturedMessage& message) override {
        AppendPrefix(message, text);
        AppendAddress(message, text);
        text += " (" + HexText(message.data, " ") + ")\n";
    }
    void TakeFault(std::uint64_t line, const AsmFault& fault) override {
        text += "!" + std::to_string(line + fault.place.line) + ":" + std::to_string(fault.place.column) +
                ": " + fault.text + "\n";
    }
    std::string text;
};

}  // namespace

std::string Assembled(const ZMTCatalog& catalog, std::string_view lines, bool isForced) {
    TextSink sink;
    Assembler assembler(catalog, isForced, sink);
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        assembler.TakeLine(lines.substr(0, end));
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    assembler.Finish();
    return sink.text;
}

}  // namespace tarvex::test
