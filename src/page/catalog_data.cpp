#include "page/catalog_data.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "export/exporter.h"
#include "import/text/files.h"
#include "page/block_rows.h"
#include "page/chunk_writer.h"
#include "page/function_data.h"
#include "page/function_piece.h"
#include "page/function_search.h"
#include "page/json_text.h"
#include "page/search_index.h"
#include "review/catalog_texts.h"
#include "review/fault_index.h"
#include "review/function_view.h"
#include "review/param_words.h"
#include "review/show.h"
#include "review/verdicts.h"

namespace tarvex::page {
namespace {

class CatalogWriter {
  public:
    CatalogWriter(const review::CatalogReading& reading, kestrel::AtomicFile& file)
        : reading_(reading),
          faults_(reading),
          texts_(reading),
          messages_(reading.Catalog(), "", "", "", {}, {}, review::PreviewFlags()),
          isFunctionFault_(reading.Faults().size()),
          chunks_(file) {}

    void Write() {
        auto verdicts = std::async([this] { return review::VerdictsOf(reading_); });
        messages_.Preview([](const ZMTOperation& /*operation*/) { return true; });
        functionRows_.BeginArray();
        blocks_.BeginArray();
        for (const review::BlockView& view : review::ViewOf(reading_).blocks) {
            AddBlock(view);
        }
        chunks_.Write("functions", functionRows_.EndArray().Take());
        const std::vector<Topic> topics = search_.Write(chunks_);
        chunks_.Write("overview", Overview(topics, verdicts.get()));
        chunks_.Finish();
    }

  private:
    void AddBlock(const review::BlockView& view) {
        BlockRows rows;
        for (const ZMTFunction& function : view.block->Items()) {
            AddFunction({view.block, &function}, rows);
            if (IsPieceFull()) {
                EndPiece(rows);
            }
        }
        EndPiece(rows);
        functionRows_.Json(rows.Json());
        AddBlockRow(view, rows);
        ++blockCount_;
    }

    /// A browser unpacks so much without anybody noticing.
    bool IsPieceFull() const {
        constexpr std::size_t kEnough = std::size_t{64} << 10;
        constexpr std::size_t kBytesOfOperation = 64;  // beside its name
        return search_.BytesGiven() - bytesBeforePiece_ + piece_->OperationCount() * kBytesOfOperation >
               kEnough;
    }

    void EndPiece(BlockRows& rows) {
        if (!piece_->IsEmpty()) {
            chunks_.Write("functions-" + std::to_string(pieces_), [piece = piece_] { return piece->Json(); });
            rows.EndPiece(pieces_++);
            piece_ = std::make_shared<FunctionPiece>(reading_);
            bytesBeforePiece_ = search_.BytesGiven();
        }
    }

    void AddFunction(const review::Target& target, BlockRows& rows) {
        const FunctionPart& part = piece_->Add(review::ViewOf(faults_, target, messages_));
        for (const Fault* fault : part.view.faults) {
            isFunctionFault_[NumberOf(fault)] = true;
        }
        rows.Add(part, ClassNumber(*target.function, part.texts));
        AddToSearch(part, functionCount_++, search_);
    }

    /// Few, so that they are kept as they are.
    std::size_t ClassNumber(const ZMTFunction& function, const review::FunctionTexts& texts) {
        std::pair<std::string_view, std::string> row(review::ClassName(function.Class()),
                                                     texts.functionClass);
        const auto found = std::ranges::find(classes_, row);
        const auto number = static_cast<std::size_t>(found - classes_.begin());
        if (found == classes_.end()) {
            classes_.push_back(std::move(row));
        }
        return number;
    }

    void AddBlockRow(const review::BlockView& view, const BlockRows& rows) {
        const review::BlockTexts texts = texts_.Of(*view.block);
        const Place place = Place::OfBlock(blockCount_);
        const std::string& inDatabases = view.block->GetName();
        const std::string name = PeoplesName(texts.name, *view.block);
        AddNames(Topic::Block, name, inDatabases, place, search_);
        search_.Add(Topic::Description, texts.description, kBlockContext, place);
        std::vector<const Fault*> own = faults_.About(view.block->GetPath());
        std::erase_if(own, [&](const Fault* fault) { return isFunctionFault_[NumberOf(fault)]; });
        blocks_.BeginObject().Key("id").Number(view.block->FBlockID()).Key("name").Text(name);
        if (inDatabases != name) {
            blocks_.Key("databaseName").Text(inDatabases);
        }
        blocks_.TextMember("kind", texts.kind).TextMember("description", texts.description);
        AddVersion(texts.version, blocks_);
        blocks_.NumberMember("faults", view.faults).NumberMember("incomplete", rows.IncompleteCount());
        if (std::string descriptions = rows.DescriptionsJson(); !descriptions.empty()) {
            const std::string id = "descriptions-" + std::to_string(blockCount_);
            chunks_.Write(id, std::move(descriptions));
            blocks_.Key("descriptions").Text(id);
        }
        if (!own.empty()) {
            blocks_.Key("ownFaults").Text(WriteFaults(std::move(own)));
        }
        blocks_.EndObject();
    }

    static void AddVersion(const review::Version& version, JsonText& json) {
        json.TextMember("version", review::VersionText(version));
    }

    /// The piece that has them.
    std::string WriteFaults(std::vector<const Fault*> faults) {
        std::string id = "faults-" + std::to_string(faultPieces_++);
        chunks_.Write(id, [this, faults = std::move(faults)] {
            JsonText json;
            json.BeginArray();
            for (const Fault* fault : faults) {
                AddFault(reading_, *fault, json);
            }
            return json.EndArray().Take();
        });
        return id;
    }

    std::string Overview(const std::vector<Topic>& topics, const review::Verdicts& verdicts) {
        JsonText json;
        json.BeginObject().Key("file").Text(CatalogName(reading_));
        AddVersion(texts_.CatalogVersion(), json);
        json.Key("blocks").Json(blocks_.EndArray().All());
        json.Key("classes").BeginArray();
        for (const auto& [kind, name] : classes_) {
            json.BeginArray().Text(kind).Text(name).EndArray();
        }
        json.EndArray();
        AddOperationNames(json);
        AddMeanings(json);
        AddVerdicts(verdicts, json);
        json.Key("search").BeginArray();
        for (const Topic topic : topics) {
            json.Text(kTopicNames[static_cast<std::size_t>(topic)]);
        }
        return json.EndArray().EndObject().Take();
    }

    /// By OPType.
    static void AddOperationNames(JsonText& json) {
        json.Key("operationNames").BeginObject();
        for (const ClassKind kind : {ClassKind::Property, ClassKind::Method}) {
            json.Key(review::ClassName(kind)).BeginArray();
            for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
                json.Text(OperationName(kind, opType));
            }
            json.EndArray();
        }
        json.EndObject();
    }

    /// What numbers in the other pieces stand for.
    static void AddMeanings(JsonText& json) {
        json.Key("layouts").BeginArray();
        for (const Layout layout : {Layout::Complete, Layout::Open, Layout::Incomplete}) {
            json.Text(review::LayoutWord(layout));
        }
        json.EndArray().Key("signalFlags").BeginObject();
        json.Key("isBigEndian").Number(kSignalBigEndian).Key("isSigned").Number(kSignalSigned);
        json.Key("isMultiplexor").Number(kSignalMultiplexor);
        json.Key("isMultiplexed").Number(kSignalMultiplexed).EndObject();
        json.Key("placesOfFunction").Number(Place::kPlacesOfFunction);
    }

    void AddVerdicts(const review::Verdicts& verdicts, JsonText& json) {
        json.Key("functions").Number(verdicts.functions).Key("messages").Number(verdicts.messages);
        json.NumberMember("lostBlocks", verdicts.lostBlocks);
        json.NumberMember("lostFunctions", verdicts.lostFunctions);
        json.NumberMember("lostMessages", verdicts.lostMessages);
        json.Key("incomplete").BeginArray();
        for (const review::Address& address : verdicts.incomplete) {
            json.Text(review::AddressText(address));
        }
        json.EndArray();
        json.Key("faults").Number(reading_.Faults().size());
        json.NumberMember("areFaultsCut", reading_.AreFaultsCut() ? 1 : 0);
        AddOtherFaults(json);
    }

    /// Those of no block.
    void AddOtherFaults(JsonText& json) {
        std::vector<bool> isOfBlock(reading_.Faults().size());
        for (const ZMTFBlock& block : reading_.Catalog()->Items()) {
            for (const Fault* fault : faults_.About(block.GetPath())) {
                isOfBlock[NumberOf(fault)] = true;
            }
        }
        std::vector<const Fault*> others;
        for (const Fault& fault : reading_.Faults()) {
            if (!isOfBlock[NumberOf(&fault)]) {
                others.push_back(&fault);
            }
        }
        if (!others.empty()) {
            json.Key("otherFaults").Text(WriteFaults(std::move(others)));
        }
    }

    std::size_t NumberOf(const Fault* fault) const {
        return static_cast<std::size_t>(fault - reading_.Faults().data());
    }

    const review::CatalogReading& reading_;
    review::FaultIndex faults_;
    review::CatalogTexts texts_;
    ZVornExporter messages_;
    SearchIndex search_;
    JsonText blocks_;
    JsonText functionRows_;
    std::vector<std::pair<std::string_view, std::string>> classes_;
    std::vector<bool> isFunctionFault_;
    std::size_t blockCount_ = 0;
    std::size_t functionCount_ = 0;
    std::size_t pieces_ = 0;
    std::size_t faultPieces_ = 0;
    std::shared_ptr<FunctionPiece> piece_ = std::make_shared<FunctionPiece>(reading_);
    std::size_t bytesBeforePiece_ = 0;
    ChunkWriter chunks_;  // makes pieces of all the others, so that it ends before them
};

}  // namespace

std::string CatalogName(const review::CatalogReading& reading) {
    constexpr std::string_view kStandardInput = "-";
    return reading.ShownPath() == kStandardInput ? "standard input" : FileName(reading.ShownPath());
}

void WriteCatalog(const review::CatalogReading& reading, kestrel::AtomicFile& file) {
    CatalogWriter(reading, file).Write();
}

}  // namespace tarvex::page
