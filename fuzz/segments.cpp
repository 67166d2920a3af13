/// Segments in any order. Of each four bytes of the input the first chooses telegram, source and operation,
/// the second is the number, the third the time that has gone by, and the fourth the number of bytes.

#include <map>

#include "capture/segment_joiner.h"
#include "support.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

/// Counts what comes out.
class CountingSink : public MessageSink {
  public:
    void TakeMessage(const CapturedMessage& message) override {
        Require(message.telegram == Telegram::Whole, "messages are whole");
        Require(message.data.size() <= kMaxMessageBytes, "messages are no longer than they may be");
        Require(++seen[message.line] == 1, "a line begins one message at most");
        bytes += message.data.size();
    }
    void TakeBroken(const CapturedMessage& message, std::string_view fault) override {
        Require(!fault.empty() && message.line > 0, "what is broken is told with its line");
        Require(++seen[message.line] == 1, "a line is told once");
    }
    void TakeUnreadable(std::uint64_t /*line*/, std::string_view /*text*/,
                        std::string_view /*fault*/) override {
        Require(false, "every segment is a message");
    }
    std::map<std::uint64_t, int> seen;
    std::size_t bytes = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kStep = 4;
    CountingSink sink;
    SegmentJoiner joiner(sink, {.messages = 3, .bytes = 400, .seconds = 50, .age = 8});
    std::size_t given = 0;
    unsigned time = 0;
    for (std::size_t at = 0; at + kStep <= size; at += kStep) {
        CapturedMessage message{
            .fBlockID = 0x22, .instID = 1, .fktID = 0x400U + (data[at] >> 4 & 1U), .opType = 0xC};
        message.telegram = static_cast<Telegram>(data[at] % kTelegramEnd);
        message.source = data[at] >> 2 & 3U;
        message.line = at / kStep + 1;
        time += data[at + 2] % 64;
        if ((data[at] & 0x80U) != 0) {
            message.time = std::to_string(time) + ".5";
        }
        message.data.assign(data[at + 3], data[at + 1]);
        given += message.data.size();
        joiner.TakeMessage(message);
    }
    joiner.Finish();
    Require(sink.bytes <= given, "no bytes come from nowhere");
    const std::size_t seen = sink.seen.size();
    joiner.Finish();
    Require(sink.seen.size() == seen, "nothing is open at the end");
    return 0;
}
