/// The root of the catalog tree.

#pragma once

#include "catalog/definitions.h"
#include "catalog/fblock.h"
#include "import/text/run_allowance.h"

namespace tarvex {

/// The root of the tree: the function blocks, each in the slot of its FBlockID, and the definitions.
class ZMTCatalog : public ZMTListNode<ZMTNode, ZMTFBlock> {
  public:
    NodeType GetType() const override { return kCatalog; }
    /// Reads the "FunctionCatalog" element and resolves the tree. Raises fatal errors, 148, 149 and those of
    /// all nodes below; false after a fatal error.
    bool Import(const Element& element, ImportContext& context) override;
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// Null until the import has created them.
    const ZMTDefinition* Definitions() const { return definitions_.get(); }

    /// The function blocks that are in the catalog and not in the tree.
    const LostIDs& LostBlocks() const { return lostBlocks_; }

    /// The absolute path of the catalog file as it is shown: tidied up without regard to links, so it need
    /// not lead to the file. The import manager sets what follows, too.
    const std::string& AbsPath() const { return absPath_; }
    /// The path that leads to the catalog file, links resolved.
    const std::string& FilePath() const { return filePath_; }
    void SetFile(std::string absPath, std::string filePath) {
        absPath_ = std::move(absPath);
        filePath_ = std::move(filePath);
    }
    /// How many bytes the catalog was read from, its DTD and other entities included.
    std::size_t InputBytes() const { return inputBytes_; }
    void SetInputBytes(std::size_t bytes) {
        inputBytes_ = bytes;
        run_ = RunAllowance(bytes);
    }
    /// What the import and the logs have left for the rest of the conversion.
    const RunAllowance& Run() const { return run_; }
    RunAllowance& Run() { return run_; }

  private:
    bool ImportDefinitions(const Element& element, ImportContext& context);
    void ImportErrorFunctions(const Element& element, ImportContext& context);
    bool ImportFBlocks(const Element& element, ImportContext& context);

    std::unique_ptr<ZMTDefinition> definitions_;
    LostIDs lostBlocks_;
    std::string absPath_;
    std::string filePath_;
    std::size_t inputBytes_ = 0;
    RunAllowance run_;
};

}  // namespace tarvex
