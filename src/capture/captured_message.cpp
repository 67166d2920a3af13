#include "capture/captured_message.h"

#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr unsigned kDeviceDigits = 4;

}  // namespace

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

void AppendPrefix(const CapturedMessage& message, std::string& out) {
    if (!message.time.empty()) {
        (out += message.time) += ' ';
    }
    if (!message.direction.empty()) {
        (out += message.direction) += ' ';
    }
    if (message.source) {
        AppendHexNumber(out, *message.source, kDeviceDigits);
        out += ' ';
    }
    if (message.destination) {
        AppendHexNumber(out += "-> ", *message.destination, kDeviceDigits);
        out += ' ';
    }
}

}  // namespace tarvex
