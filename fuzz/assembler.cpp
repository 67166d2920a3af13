/// Lines of names and values, and of reports, for the fixed catalog. What they become can be decoded, and its
/// reports become it again.

#include "asm/assembler.h"

#include <algorithm>

#include "catalogs.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

/// Keeps the messages.
class KeepingSink : public AsmSink {
  public:
    void TakeMessage(const CapturedMessage& message) override { messages.push_back(message); }
    void TakeFault(std::uint64_t line, const AsmFault& fault) override {
        Require(line > 0 && fault.place.column > 0 && !fault.text.empty(), "a fault has a place and a text");
        Require(fault.text.find('\n') == std::string::npos, "a fault is one line");
    }
    std::vector<CapturedMessage> messages;
};

std::vector<CapturedMessage> Assemble(std::string_view text, bool isForced) {
    KeepingSink sink;
    Assembler assembler(FixedCatalog(), isForced, sink);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        assembler.TakeLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    assembler.Finish();
    return std::move(sink.messages);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = TextOf(data, size);
    for (const CapturedMessage& message : Assemble(text, Draw(text).Flag())) {
        RequireDecoding(FixedCatalog(), message);
        DecodedMessage decoded;
        DecodeMessage(FixedCatalog(), message, decoded);
        std::string report;
        if (Draw(text).Below(3) == 0) {
            JsonReport().Message({.file = "", .number = 1}, message, decoded, report);
        } else {
            TextReport().Message({.file = "", .number = 1}, message, decoded, report);
        }
        const std::vector<CapturedMessage> again = Assemble(report, false);
        Require(again.size() == 1 && AddressText(again[0]) == AddressText(message) &&
                    again[0].data == message.data,
                "a report becomes its message again");
    }
    return 0;
}
