/// Captures of JSON objects, alone, in arrays, over lines, broken.

#include <algorithm>

#include "captures.h"

using namespace tarvex;
using namespace tarvex::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = TextOf(data, size);
    CaptureCheck check;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        check.TakeLine(text.substr(0, end), false);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    check.Finish();
    return 0;
}
