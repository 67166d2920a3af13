#include "catalogs.h"

#include <algorithm>
#include <filesystem>

#include <nlohmann/json.hpp>

#include "capture/line_prefix.h"
#include "capture/message_line.h"
#include "databases.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"
#include "export/exporter.h"
#include "import/text/wording.h"
#include "kestrel/reader.h"
#include "params/catalog_vocabulary.h"

namespace tarvex::fuzz {
namespace {

class LastingReader : public DocumentReader {
  public:
    explicit LastingReader(Vocabulary vocabulary) : reader_(MakeXercesReader(std::move(vocabulary))) {}
    void StartPlatform() override { reader_->StartPlatform(); }
    void StopPlatform() override { reader_->Release(); }
    const Element* Read(const std::string& path, bool validate, ZDOMErrorHandler& handler) override {
        return reader_->Read(path, validate, handler);
    }
    void Release() override { reader_->Release(); }

  private:
    std::unique_ptr<DocumentReader> reader_;
};

ExportFlags DrawFlags(Draw& draw) {
    ExportFlags flags;
    flags.writeSignals = draw.Below(8) != 0;
    for (bool ExportFlags::*flag :
         {&ExportFlags::uniqueSignalNames, &ExportFlags::strictExport, &ExportFlags::createNetworkNodes,
          &ExportFlags::assignMessagesToNodes, &ExportFlags::setMessageLength, &ExportFlags::makeExtended,
          &ExportFlags::makeReadOnly, &ExportFlags::safeLayout, &ExportFlags::writeScaling}) {
        flags.*flag = draw.Flag();
    }
    return flags;
}

/// The length in front of what a short stream holds.
std::size_t LengthBytes(const ZMostParameter& item) {
    return item.IsType(kParamShortStream) ? 1 : 0;
}

/// Items stand one behind the other, and so do those inside them; bits share the bytes of their field, and
/// signals those where one ends and the next begins.
void RequireInside(const ZMostParameterListBaseInfo& items, std::size_t begin, std::size_t end,
                   const std::vector<std::uint8_t>& data) {
    std::size_t offset = begin;
    for (const auto& item : items.Items()) {
        const auto bytes = item->Bytes();
        const std::size_t itemEnd = item->Offset() + bytes.size();
        const bool isBit = item->IsType(kParamBoolField);
        const bool mayShare = isBit || (item->IsType(kParamStreamSignal) && item->Offset() + 1 == offset);
        Require(item->Offset() >= begin && itemEnd <= end && (mayShare || item->Offset() == offset),
                "items stand one behind the other inside the message");
        Require(std::ranges::equal(bytes, std::span(data).subspan(item->Offset(), bytes.size())),
                "an item has the bytes of the message at its offset");
        if (item->Members() != nullptr) {
            RequireInside(*item->Members(), item->Offset() + LengthBytes(*item), itemEnd, data);
        }
        offset = isBit ? begin : itemEnd;
    }
}

}  // namespace

std::unique_ptr<DocumentReader> MakeLastingReader(Vocabulary vocabulary) {
    return std::make_unique<LastingReader>(std::move(vocabulary));
}

std::unique_ptr<ZMostFCatManager> MakeManager() {
    return std::make_unique<ZMostFCatManager>(MakeLastingReader(CatalogVocabulary()));
}

const ZMTCatalog& FixedCatalog() {
    static const std::unique_ptr<ZMostFCatManager> manager = MakeManager();
    static const ZMTCatalog* const catalog = [] {
        std::string name;
        manager->ReadNewer = true;
        manager->keepDocument = true;  // what is compared and shown is looked up in it
        Require(manager->Import(name, TARVEX_FUZZ_CATALOG, 1, ""), "the fixed catalog can be imported");
        return manager->FindCatalog(name);
    }();
    return *catalog;
}

std::vector<CapturedMessage> MessagesOf(const ZMTCatalog& catalog) {
    std::vector<CapturedMessage> messages(1);
    for (const ZMTFBlock* block : catalog.GetItems(false)) {
        for (const ZMTFunction* function : block->GetItems(false)) {
            for (const ZMTOperation* operation : function->GetItems(false)) {
                messages.push_back({.fBlockID = block->FBlockID(),
                                    .instID = 1,
                                    .fktID = function->FunctionID(),
                                    .opType = operation->OpType(),
                                    .data = {}});
            }
        }
    }
    return messages;
}

void RequireConversion(const ZMTCatalog& catalog, const std::string& aliasPath,
                       const std::string& networkPath, Draw& draw) {
    const ExportFlags flags = DrawFlags(draw);
    const std::string path = ScratchFile("converted.vorn");
    std::filesystem::remove(path);  // it may be protected against writing
    ZVornExporter exporter(&catalog, path, aliasPath, networkPath, {}, {}, flags);
    Require(exporter.Export() == 0, "a catalog can be converted");
    try {
        const auto database = kestrel::ReadDatabase(path);
        Require(VornOf(*database) == ReadFile(path), "a converted catalog stays the same");
        if (draw.Below(16) == 0) {
            RequireSameWhenReadAgain(*database, true);
            RequireKcd(*database);
            RequireCommands(*database);
        }
    } catch (const kestrel::ReadError& error) {
        Require(false, std::string("a converted catalog can be read: ") + error.what());
    }
}

void RequireDecoding(const ZMTCatalog& catalog, const CapturedMessage& message) {
    DecodedMessage decoded;
    DecodeMessage(catalog, message, decoded);
    RequireInside(decoded.items, 0, message.data.size(), message.data);
    Require(decoded.faults.size() <= 1 + decoded.items.CountOfAll(),
            "decoding ends at the first fault that is one");
    const auto& items = decoded.items.Items();
    const std::size_t end = items.empty() ? 0 : items.back()->Offset() + items.back()->Bytes().size();
    Require(!decoded.faults.empty() || end == message.data.size(), "a message is taken to its last byte");

    std::string text;
    TextReport().Message({.file = "", .number = 1}, message, decoded, text);
    std::string head;
    AppendPrefix(message, head);
    AppendAddress(message, head);
    Require(text.starts_with(head), "the text report begins with the address and what stands in front of it");
    std::string json;
    JsonReport().Message({.file = "", .number = 1}, message, decoded, json);
    Require(json.find('\n') == json.size() - 1, "the JSON report is one line");
    const nlohmann::json parsed = nlohmann::json::parse(json, nullptr, false);
    Require(parsed.is_object() && parsed.at("items").size() == items.size(), "the JSON report has all items");
    Require(parsed.at("errors").size() == decoded.faults.size(), "the JSON report has all faults");
}

void RequireSameLine(const CapturedMessage& message) {
    CapturedMessage again;
    const std::string line = AddressText(message) + " (" + HexText(message.data, " ") + ")";
    Require(ParseMessageLine(line, again).empty(), "a message can be written as a line");
    Require(AddressText(again) == AddressText(message) && again.data == message.data,
            "a line says what the message said");
}

}  // namespace tarvex::fuzz
