#include "export/exporter.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

#include "export/attributes.h"
#include "export/kestrel_values.h"
#include "export/message_names.h"
#include "export/strict_check.h"
#include "import/text/files.h"
#include "params/layout.h"

namespace tarvex {
namespace {

/// Of texts that are copied and written.
constexpr std::size_t kBytesPerStep = 16;

constexpr int kSuccess = 0;
constexpr int kFailure = -1;

/// The length of a message in bytes unless its signals say otherwise.
constexpr std::uint16_t kDefaultMessageLength = 12;

/// Block, function and OPType packed from the most significant part down; the instance takes no part.
constexpr std::uint32_t MessageIdentifier(std::uint32_t fBlockID, std::uint32_t fktID, std::uint32_t opType) {
    return ((((fBlockID & 0xFFU) << 12) | (fktID & 0xFFFU)) << 4) | (opType & 0xFU);
}
static_assert(MessageIdentifier(0x123, 0x1234, 0x1F) == ((0x23U << 16) | (0x234U << 4) | 0xFU));

std::size_t InputBytes(const ZMTCatalog* catalog) {
    return catalog == nullptr ? 0 : catalog->InputBytes();
}

/// Takes all write permissions from a file.
bool MakeReadOnly(const std::string& path) {
    struct stat status = {};
    constexpr mode_t kWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    return ::stat(path.c_str(), &status) == 0 &&
           ::chmod(path.c_str(), status.st_mode & 07777U & ~kWrite) == 0;
}

}  // namespace

ZVornExporter::ZVornExporter(const ZMTCatalog* catalog, std::string outputPath, std::string aliasNamesPath,
                             std::string networkConfigurationPath, NameSet include, NameSet exclude,
                             const ExportFlags& flags)
    : catalog_(catalog),
      outputPath_(std::move(outputPath)),
      aliasNamesPath_(std::move(aliasNamesPath)),
      networkConfigurationPath_(std::move(networkConfigurationPath)),
      run_(catalog == nullptr ? RunAllowance() : catalog->Run()),
      writer_(nullptr),  // there is no handle of the own process on this platform
      signals_(writer_, aliases_, {flags.uniqueSignalNames, flags.safeLayout, flags.writeScaling},
               SignalBudget(InputBytes(catalog), run_.TakeMost())),
      include_(std::move(include)),
      exclude_(std::move(exclude)),
      flags_(flags),
      attributeBytes_(std::min(kAttributeBytes.For(InputBytes(catalog)), run_.Left().memory / 4)) {}

int ZVornExporter::Export() {
    if (!std::exchange(isReady_, false) || catalog_ == nullptr) {
        return kFailure;
    }
    ReadAliasNames();
    ReadNetworkConfiguration();
    CreateDatabase();
    CreateNetworkNodes();
    CreateMessages();
    if (areMessagesCut_) {
        Tell("The catalog asks for too many messages, some are left out!");
    }
    if (signals_.IsCut()) {
        Tell("The catalog asks for too many signals or value descriptions, some are left out!");
    }
    if (attributeBytes_.IsSpent()) {
        Tell("The catalog asks for too many texts of attributes, some are left out!");
    }
    return WriteAndClose();
}

void ZVornExporter::Preview(SignalFilter hasSignals) {
    if (std::exchange(isReady_, false) && catalog_ != nullptr) {
        flags_.createNetworkNodes = false;
        hasSignals_ = std::move(hasSignals);
        CreateMessages();
    }
}

const msgblk* ZVornExporter::MessageOf(std::uint32_t fBlockID, std::uint32_t functionID,
                                       std::uint32_t opType) {
    return writer_.GetMessage(IdentifierOf(fBlockID, functionID, opType), nullptr);
}

void ZVornExporter::ReadAliasNames() {
    if (!aliasNamesPath_.empty()) {
        TellOf(aliasNamesPath_, aliases_.Read(aliasNamesPath_));
    }
}

void ZVornExporter::ReadNetworkConfiguration() {
    if (!networkConfigurationPath_.empty()) {
        TellOf(networkConfigurationPath_, ReadNodeAddresses(networkConfigurationPath_, nodeAddresses_));
    }
}

/// What is amiss with an alias or network file.
void ZVornExporter::TellOf(const std::string& path, ConfigFile file) const {
    if (file == ConfigFile::Missing) {
        Tell("Can not open file " + path + "!");
    } else if (file == ConfigFile::Cut) {
        Tell("The file " + path + " has too many lines, some are left out!");
    }
}

void ZVornExporter::CreateDatabase() {
    if (writer_.CreateDatabase(BaseName(outputPath_).c_str(), &database_, nullptr) == kKestrelOk) {
        DefineAttributes(writer_, database_, FileName(catalog_->AbsPath()));
        if (flags_.safeLayout) {
            DefineAttribute(writer_, database_, kLayoutDefinition);
        }
    }
}

void ZVornExporter::CreateNetworkNodes() {
    for (const auto& [address, name] : nodeAddresses_) {
        writer_.SetAttrValue(*NodeNamed(CleanName(name)), kMostNodeAdr, NumberValue(address));
    }
}

void ZVornExporter::CreateMessages() {
    for (const ZMTFBlock& block : catalog_->Items()) {
        if (!IsSelected(block)) {
            continue;
        }
        BlockPart blockPart{block, NamePart(aliases_.Of(block.GetName()))};
        for (const ZMTFunction& function : block.Items()) {
            const FunctionPart functionPart{function, NamePart(aliases_.Of(function.GetName()))};
            const unsigned end = std::max<unsigned>(function.Size(), std::size(kOpTypes));
            for (unsigned opType = 0; opType < end; ++opType) {
                if (const ZMTOperation* operation = function.GetAt(opType)) {
                    CreateMessage(blockPart, functionPart, *operation);
                } else if (flags_.safeLayout && function.LostParams().FirstOf(opType) != nullptr) {
                    // It has lost all that it had.
                    CreateMessage(blockPart, functionPart, ZMTOperation(function.Class(), opType));
                }
            }
        }
    }
}

/// Include wants the name or the alias to be listed, exclude both.
bool ZVornExporter::IsSelected(const ZMTFBlock& block) const {
    const std::string& name = block.GetName();
    const std::string& alias = aliases_.Of(name);
    if (!include_.empty() && !include_.contains(name) && !include_.contains(alias)) {
        return false;
    }
    return !exclude_.contains(name) || !exclude_.contains(alias);
}

std::uint32_t ZVornExporter::IdentifierOf(std::uint32_t fBlockID, std::uint32_t functionID,
                                          std::uint32_t opType) const {
    const std::uint32_t identifier = MessageIdentifier(fBlockID, functionID, opType);
    return flags_.makeExtended ? identifier | kExtendedIdentifier : identifier;
}

bool ZVornExporter::HasSignals(const ZMTOperation& operation) const {
    return flags_.writeSignals && (!hasSignals_ || hasSignals_(operation)) &&
           (!flags_.strictExport || PassesStrictCheck(&operation));
}

void ZVornExporter::CreateMessage(BlockPart& block, const FunctionPart& function,
                                  const ZMTOperation& operation) {
    const std::uint32_t identifier =
        IdentifierOf(block.block.FBlockID(), function.function.FunctionID(), operation.OpType());
    if (writer_.GetMessage(identifier, nullptr) != nullptr) {
        return;  // the first operation with an identifier wins
    }
    if (!run_.Take(kMessage)) {
        areMessagesCut_ = true;
        return;
    }
    msgblk& message = *writer_.CreateMessage(database_, 0);
    CopyName(message.name,
             messageNames_.Make(block.name, function.name, NamePart(aliases_.Of(operation.GetName()))));
    message.identifier = identifier;
    message.length = kDefaultMessageLength;
    if (flags_.createNetworkNodes) {
        AssignNode(message, block);
    }
    if (database_ != nullptr) {  // without a database no attribute is defined
        SetAttributes(message, block.block, function.function, operation);
        if (flags_.safeLayout) {
            const Layout layout = operation.GetParent() == nullptr ? Layout::Incomplete : LayoutOf(operation);
            writer_.SetAttrValue(message, kLayoutAttribute, NumberValue(static_cast<unsigned>(layout)));
        }
    }
    if (HasSignals(operation)) {
        WriteSignals(message, operation);
    }
}

/// The values of attributes are the catalog's own names, without aliases.
void ZVornExporter::SetAttributes(msgblk& message, const ZMTFBlock& block, const ZMTFunction& function,
                                  const ZMTOperation& operation) {
    // A long name would stand at each of its messages.
    const std::size_t size = block.GetName().size() + function.GetName().size();
    if (!attributeBytes_.Take(size) || !run_.Take({size / kBytesPerStep, size, size})) {
        attributeBytes_.End();
        return;
    }
    writer_.SetAttrValue(message, kFBlockAttribute, TextValue(block.GetName()));
    writer_.SetAttrValue(message, kFunctionAttribute, TextValue(function.GetName()));
    writer_.SetAttrValue(message, kOpTypeAttribute,
                         NumberValue(OpTypeValue(function.Class(), operation.OpType())));
    writer_.SetAttrValue(message, kFunctionClassAttribute,
                         NumberValue(function.Class() == ClassKind::Method ? 1 : 0));
}

void ZVornExporter::AssignNode(msgblk& message, BlockPart& part) {
    if (part.node == nullptr) {
        part.node = NodeNamed(CleanName(part.block.GetName()));
    }
    message.node = flags_.assignMessagesToNodes ? part.node : nullptr;
}

void ZVornExporter::WriteSignals(msgblk& message, const ZMTOperation& operation) {
    const std::uint16_t length = signals_.Write(message, operation);
    if (flags_.setMessageLength) {
        message.length = length;
    }
}

/// The node of that name, created when the name is new. The look-up cuts names as the record does, so it
/// finds one.
symblk* ZVornExporter::NodeNamed(const std::string& cleanName) {
    if (nodeNames_.insert(cleanName).second) {
        CopyName(writer_.CreateNode(database_, 0)->name, cleanName);
    }
    return writer_.GetNode(cleanName.c_str(), database_);
}

void ZVornExporter::Tell(const std::string& line) const {
    if (MessageSink) {
        MessageSink(line);
    }
}

/// A file that the conversion has read is no place for its output.
bool ZVornExporter::IsInput(const std::string& path) const {
    return IsSameFile(path, catalog_->FilePath()) || IsSameFile(path, aliasNamesPath_) ||
           IsSameFile(path, networkConfigurationPath_);
}

int ZVornExporter::WriteAndClose() {
    if (IsInput(outputPath_) || writer_.WriteDatabase(database_, outputPath_.c_str()) != kKestrelOk) {
        return kFailure;
    }
    writer_.CloseDatabase(database_, false);
    if (flags_.makeReadOnly && !MakeReadOnly(outputPath_)) {
        return kFailure;
    }
    return kSuccess;
}

}  // namespace tarvex
