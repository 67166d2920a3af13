#include "disasm/decoded_message.h"

#include <algorithm>

#include "disasm/wording.h"
#include "import/text/format_text.h"

namespace tarvex {
namespace {

bool FindOperation(const ZMTCatalog& catalog, const CapturedMessage& message, DecodedMessage& out) {
    out.block = catalog.GetAt(message.fBlockID);
    if (out.block == nullptr) {
        out.faults.push_back(FormatText("unknown function block 0x%02X", message.fBlockID));
        return false;
    }
    out.function = out.block->GetAt(message.fktID);
    if (out.function == nullptr) {
        out.faults.push_back(FormatText("unknown function 0x%03X", message.fktID));
        return false;
    }
    out.operation = out.function->GetAt(message.opType);
    if (out.operation == nullptr) {
        out.faults.push_back(FormatText("unknown operation 0x%X", message.opType));
        return false;
    }
    return true;
}

std::string AtByte(std::size_t offset) {
    return "byte " + std::to_string(offset) + ": ";
}

}  // namespace

void DecodeMessage(const ZMTCatalog& catalog, const CapturedMessage& message, DecodedMessage& out) {
    if (!FindOperation(catalog, message, out)) {
        return;
    }
    const bool isGood = std::ranges::all_of(out.operation->Items(), [&](const ZMTParam& param) {
        return param.Disassemble(out.items, message.data);
    });
    for (const DisassemblyFault& fault : out.items.Faults()) {
        out.faults.push_back(AtByte(fault.offset) + fault.text);
    }
    const std::size_t left = message.data.size() - out.items.Offset();
    if (isGood && left > 0) {
        out.faults.push_back(AtByte(out.items.Offset()) + ByteCount(left) + " left over");
    }
}

}  // namespace tarvex
