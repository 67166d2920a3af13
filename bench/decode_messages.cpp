#include <chrono>
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

#include "capture/message_line.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"
#include "import/import_manager.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace tarvex;

double Seconds(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::vector<std::string> ReadLines(const char* path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!IsCommentLine(line)) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// Seconds for all messages, with or without a report of each.
double Decode(const ZMTCatalog& catalog, const std::vector<CapturedMessage>& messages, const Report* report) {
    std::string out;
    const auto start = Clock::now();
    for (const CapturedMessage& message : messages) {
        DecodedMessage decoded;
        DecodeMessage(catalog, message, decoded);
        if (report != nullptr) {
            out.clear();
            report->Message({}, message, decoded, out);
        }
    }
    return Seconds(start);
}

}  // namespace

/// Times the steps that the disassembler takes with the messages of a capture, without reading and writing.
int main(int argc, char** argv) try {
    if (argc != 3) {
        std::fprintf(stderr, "Usage: decode-messages CATALOG CAPTURE\n");
        return 2;
    }
    ZMostFCatManager manager;
    manager.Validate = false;
    std::string name;
    if (!manager.Import(name, argv[1], 1, "")) {
        std::fprintf(stderr, "can't import %s\n", argv[1]);
        return 1;
    }
    const ZMTCatalog& catalog = *manager.FindCatalog(name);
    const std::vector<std::string> lines = ReadLines(argv[2]);
    std::vector<CapturedMessage> messages(lines.size());
    auto start = Clock::now();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ParseMessageLine(lines[i], messages[i]);
    }
    std::printf("%zu messages\nread lines:      %6.2f s\n", lines.size(), Seconds(start));
    const TextReport text;
    const JsonReport json;
    const double decode = Decode(catalog, messages, nullptr);
    std::printf("decode:          %6.2f s\n", decode);
    std::printf("put into text:   %6.2f s\n", Decode(catalog, messages, &text) - decode);
    std::printf("put into JSON:   %6.2f s\n", Decode(catalog, messages, &json) - decode);
    return 0;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "%s\n", exception.what());
    return 1;
}
