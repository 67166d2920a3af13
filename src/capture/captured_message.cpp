#include "capture/captured_message.h"

#include "import/text/wording.h"

namespace tarvex {
std::string AddressText(const CapturedMessage& message) {
    std::string text;
    AppendAddress(message, text);
    return text;
}

void AppendAddress(const CapturedMessage& message, std::string& out) {
    AppendHexNumber(out, message.fBlockID, 2);
    AppendHexNumber(out += '.', message.instID, 2);
    AppendHexNumber(out += '.', message.fktID, 3);
    AppendHexNumber(out += '.', message.opType, 1);
}

}  // namespace tarvex
