/// A message of the fixed catalog: the first byte chooses the operation, the second whether the rest are the
/// bytes of the message or, as text, what stands behind its address in a capture.

#include "capture/message_line.h"
#include "catalogs.h"

using namespace tarvex;
using namespace tarvex::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<CapturedMessage> messages = MessagesOf(FixedCatalog());
    if (size < 2) {
        return 0;
    }
    CapturedMessage message = messages[data[0] % messages.size()];
    const bool isText = data[1] % 4 == 0;
    if (isText) {
        const std::string line = AddressText(message) + " " + std::string(TextOf(data + 2, size - 2));
        if (!ParseMessageLine(line, message).empty()) {
            return 0;
        }
    } else {
        message.data.assign(data + 2, data + size);
    }
    RequireDecoding(FixedCatalog(), message);
    RequireSameLine(message);
    return 0;
}
