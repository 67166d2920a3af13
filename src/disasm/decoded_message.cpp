#include "disasm/decoded_message.h"

#include <algorithm>

#include "import/text/format_text.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

std::string LostText(const std::string& what, unsigned message) {
    return "the catalog has " + what + ", but it could not be imported (message " + std::to_string(message) +
           ")";
}

bool FindOperation(const ZMTCatalog& catalog, const CapturedMessage& message, DecodedMessage& out) {
    out.block = catalog.GetAt(message.fBlockID);
    if (out.block == nullptr) {
        const std::string what = FormatText("function block 0x%02X", message.fBlockID);
        const unsigned lost = catalog.LostBlocks().MessageOf(message.fBlockID);
        out.faults.push_back(lost != 0 ? LostText(what, lost) : "unknown " + what);
        return false;
    }
    out.function = out.block->GetAt(message.fktID);
    if (out.function == nullptr) {
        const std::string what = FormatText("function 0x%03X", message.fktID);
        const unsigned lost = out.block->LostFunctions().MessageOf(message.fktID);
        out.faults.push_back(lost != 0 ? LostText(what, lost) : "unknown " + what);
        return false;
    }
    out.operation = out.function->GetAt(message.opType);
    if (out.operation == nullptr) {
        const std::string what = FormatText("operation 0x%X", message.opType);
        const Losses& losses = out.function->LostParams();
        if (const Hole* lost = losses.FirstOf(message.opType)) {
            out.faults.push_back("the catalog has " + what + ", but " + HoleText(*lost));
        } else if (const Hole* all = losses.FirstOf(kEveryOperation)) {
            out.faults.push_back("unknown " + what + "; the function has lost parameters (message " +
                                 std::to_string(all->message) + ")");
        } else {
            out.faults.push_back("unknown " + what);
        }
        return false;
    }
    return true;
}

std::string AtByte(std::size_t offset) {
    return "byte " + std::to_string(offset) + ": ";
}

/// What nobody can read any more.
std::string RestText(std::span<const std::uint8_t> data, std::size_t offset) {
    const std::string bytes = HexText(data.subspan(std::min(offset, data.size())), " ");
    return bytes.empty() ? bytes : "; the rest is " + bytes;
}

/// Reads the parameters in front of the first one that is missing; false when one does not fit.
bool ReadParams(const ZMTOperation& operation, std::span<const std::uint8_t> data, DecodedMessage& out) {
    unsigned left = operation.SoundCount();
    for (const ZMTParam& param : operation.Items()) {
        if (left-- == 0) {
            break;
        }
        if (!param.Disassemble(out.items, data)) {
            return false;
        }
    }
    return true;
}

}  // namespace

void DecodeMessage(const ZMTCatalog& catalog, const CapturedMessage& message, DecodedMessage& out) {
    if (!FindOperation(catalog, message, out)) {
        return;
    }
    out.data = message.data;
    const bool isGood = ReadParams(*out.operation, out.data, out);
    for (const DisassemblyFault& fault : out.items.Faults()) {
        out.faults.push_back(AtByte(fault.offset) + fault.text +
                             (fault.isHole ? RestText(message.data, fault.offset) : std::string()));
    }
    if (!isGood) {
        return;
    }
    const std::size_t end = out.items.Offset();
    if (const std::optional<Hole>& hole = out.operation->MissingAt()) {
        out.faults.push_back(AtByte(end) + HoleText(*hole) + RestText(message.data, end));
    } else if (end < message.data.size()) {
        out.faults.push_back(AtByte(end) + ByteCount(message.data.size() - end) + " left over");
    }
}

}  // namespace tarvex
