#pragma once

#include "capture/capture_reader.h"
#include "capture/segment_joiner.h"
#include "catalogs.h"

namespace tarvex::fuzz {

/// Reads a capture with the fixed catalog, and requires of each message that it can be decoded, and of what
/// is no message that the reports can tell it.
class CaptureCheck {
  public:
    CaptureCheck();
    void TakeLine(std::string_view line, bool isCut);
    void Finish();

  private:
    class Sink : public MessageSink {
      public:
        void TakeMessage(const CapturedMessage& message) override;
        void TakeBroken(const CapturedMessage& message, std::string_view fault) override;
        void TakeUnreadable(std::uint64_t line, std::string_view text, std::string_view fault) override;
        std::uint64_t lines = 0;
    };

    AddressNames names_;
    Sink sink_;
    SegmentJoiner joiner_;
    CaptureReader reader_;
};

}  // namespace tarvex::fuzz
