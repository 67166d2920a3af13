#include "capture/capture_run.h"

#include "capture/capture_reader.h"
#include "import/text/wording.h"

namespace tarvex::test {
namespace {

class ReportSink : public MessageSink {
  public:
    ReportSink(const ZMTCatalog& catalog, const Report& report, std::string& out)
        : catalog_(catalog), report_(report), out_(out) {}

    void TakeMessage(const CapturedMessage& message) override {
        DecodedMessage decoded;
        DecodeMessage(catalog_, message, decoded);
        report_.Message({.file = "", .number = message.line}, message, decoded, out_);
    }
    void TakeBroken(const CapturedMessage& message, std::string_view fault) override {
        DecodedMessage nothing;
        nothing.faults.emplace_back(fault);
        report_.Message({.file = "", .number = message.line}, message, nothing, out_);
    }
    void TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) override {
        report_.BadLine({.file = "", .number = line}, text, fault, out_);
    }

  private:
    const ZMTCatalog& catalog_;
    const Report& report_;
    std::string& out_;
};

class ListSink : public MessageSink {
  public:
    explicit ListSink(std::vector<std::string>& out) : out_(out) {}

    void TakeMessage(const CapturedMessage& message) override { out_.push_back(Shown(message)); }
    void TakeBroken(const CapturedMessage& message, std::string_view fault) override {
        out_.push_back(Shown(message) + " !" + std::string(fault));
    }
    void TakeUnreadable(std::uint64_t line, std::string_view /*text*/, std::string_view fault) override {
        out_.push_back(std::to_string(line) + ": !" + std::string(fault));
    }

  private:
    static std::string Shown(const CapturedMessage& message) {
        return std::to_string(message.line) + ": " + AddressText(message) + " " + HexText(message.data, "");
    }
    std::vector<std::string>& out_;
};

}  // namespace

std::string ReportOfCapture(const ZMTCatalog& catalog, std::string_view capture, const Report& report,
                            std::string_view columns) {
    std::string out;
    const AddressNames names(&catalog);
    const auto table = TableColumns::FromList(columns);
    ReportSink sink(catalog, report, out);
    SegmentJoiner joiner(sink);
    CaptureReader reader(names, table ? &*table : nullptr, joiner);
    while (!capture.empty()) {
        const std::size_t end = std::min(capture.find('\n'), capture.size());
        reader.TakeLine(capture.substr(0, end));
        capture.remove_prefix(std::min(end + 1, capture.size()));
    }
    reader.Finish();
    joiner.Finish();
    return out;
}

std::vector<std::string> Joined(const std::vector<CapturedMessage>& messages, const SegmentBounds& bounds) {
    std::vector<std::string> out;
    ListSink sink(out);
    SegmentJoiner joiner(sink, bounds);
    for (const CapturedMessage& message : messages) {
        joiner.TakeMessage(message);
    }
    joiner.Finish();
    return out;
}

}  // namespace tarvex::test
