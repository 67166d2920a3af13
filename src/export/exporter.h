/// From the catalog tree to the bus database: nodes, messages and their attributes.

#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "catalog/catalog.h"
#include "export/alias_names.h"
#include "export/message_names.h"
#include "export/network_nodes.h"
#include "export/signals.h"
#include "import/text/allowance.h"
#include "kestrel/kestrel.h"

namespace tarvex {

/// Names of function blocks in a filter setting; compared exactly.
using NameSet = std::set<std::string>;

/// The flags of a conversion.
struct ExportFlags {
    bool writeSignals = true;
    bool uniqueSignalNames = true;
    bool strictExport = false;
    bool createNetworkNodes = true;
    bool assignMessagesToNodes = true;
    bool setMessageLength = true;
    bool makeExtended = true;
    bool makeReadOnly = true;
    bool safeLayout = false;
    bool writeScaling = false;
};

/// Turns one imported catalog into one bus database. The catalog is read, never changed, and outlives the
/// exporter. An exporter runs once.
class ZVornExporter {
  public:
    /// The names in the attributes of all messages take up so many bytes; the attributes of further messages
    /// are left out, and the sink is told.
    static constexpr Bound kAttributeBytes{std::size_t{256} << 20, 16};
    /// A message with its node and its attributes, but for the names in them.
    static constexpr Cost kMessage{300, 600, 600};
    /// Receives what the user should know, a line each.
    using Sink = std::function<void(const std::string& line)>;

    /// Everything that the conversion needs: the catalog (may be null), the output file, the alias-names and
    /// the network-configuration file (empty for none), the function blocks to include and to exclude, and
    /// the flags.
    ZVornExporter(const ZMTCatalog* catalog, std::string outputPath, std::string aliasNamesPath,
                  std::string networkConfigurationPath, NameSet include, NameSet exclude,
                  const ExportFlags& flags);

    /// Builds the database and writes it. Returns 0, or -1 without a catalog, at a second call, when the file
    /// cannot be written or made read-only, or when it is a file that the conversion reads. An alias or
    /// network file that cannot be opened is told and left out, of one that is too long the last lines.
    int Export();

    /// Tells whether the message of an operation gets signals.
    using SignalFilter = std::function<bool(const ZMTOperation& operation)>;
    /// Creates the messages in memory, in the place of Export, and writes nothing: with the names,
    /// identifiers, lengths and signals of a database, but without nodes and attributes. Files are not read.
    void Preview(SignalFilter hasSignals);
    /// The message of an operation, once there are messages; null for none. It belongs to the exporter.
    const msgblk* MessageOf(std::uint32_t fBlockID, std::uint32_t functionID, std::uint32_t opType);

    Sink MessageSink;  ///< May be empty. Set before Export.

  private:
    void ReadAliasNames();
    void ReadNetworkConfiguration();
    void CreateDatabase();
    void CreateNetworkNodes();
    void CreateMessages();
    int WriteAndClose();

    bool IsInput(const std::string& path) const;
    bool IsSelected(const ZMTFBlock& block) const;
    /// What the messages of a block share.
    struct BlockPart {
        const ZMTFBlock& block;
        NamePart name;
        symblk* node = nullptr;  // once a message needs it
    };
    /// And those of a function.
    struct FunctionPart {
        const ZMTFunction& function;
        NamePart name;
    };
    std::uint32_t IdentifierOf(std::uint32_t fBlockID, std::uint32_t functionID, std::uint32_t opType) const;
    bool HasSignals(const ZMTOperation& operation) const;
    void CreateMessage(BlockPart& block, const FunctionPart& function, const ZMTOperation& operation);
    void SetAttributes(msgblk& message, const ZMTFBlock& block, const ZMTFunction& function,
                       const ZMTOperation& operation);
    void AssignNode(msgblk& message, BlockPart& part);
    void WriteSignals(msgblk& message, const ZMTOperation& operation);
    symblk* NodeNamed(const std::string& cleanName);
    void Tell(const std::string& line) const;
    void TellOf(const std::string& path, ConfigFile file) const;

    const ZMTCatalog* catalog_;
    std::string outputPath_;
    std::string aliasNamesPath_;
    std::string networkConfigurationPath_;
    const char* database_ = nullptr;  // the key, kept by the writer
    RunAllowance run_;                // what the import has left
    KestrelWriteManager writer_;
    AliasNames aliases_;
    SignalWriter signals_;
    MessageNames messageNames_;
    kestrel::KeyedSet<std::string> nodeNames_;
    NameSet include_;
    NameSet exclude_;
    NodeAddresses nodeAddresses_;
    ExportFlags flags_;
    SignalFilter hasSignals_;  // none: all messages have
    Allowance attributeBytes_;
    bool areMessagesCut_ = false;
    bool isReady_ = true;
};

}  // namespace tarvex
