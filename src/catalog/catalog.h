#pragma once

#include "catalog/child_list.h"
#include "catalog/definitions.h"
#include "catalog/fblock.h"

namespace tarvex {

/// The root of the tree: the function blocks, each in the slot of its FBlockID, and the definitions.
class ZMTCatalog : public ZMTNode, public ZMTChildList<ZMTFBlock> {
  public:
    int GetType() const override { return kCatalog; }
    /// Reads the "FunctionCatalog" element and resolves the tree. Raises fatal errors, 148, 149 and those of
    /// all nodes below; false after a fatal error.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }

    /// Null until the import has created them.
    const ZMTDefinition* Definitions() const { return definitions_.get(); }

    /// The absolute path of the catalog file as it is shown: tidied up without regard to links, so it need
    /// not lead to the file. Both paths are set by the import manager.
    const std::string& AbsPath() const { return absPath_; }
    /// The path that leads to the catalog file, links resolved.
    const std::string& FilePath() const { return filePath_; }
    void SetPaths(const std::string& absPath, const std::string& filePath) {
        absPath_ = absPath;
        filePath_ = filePath;
    }

  private:
    bool ImportDefinitions(const DOMElement& element, ImportContext& context);
    void ImportErrorFunctions(const DOMElement& element, ImportContext& context);
    bool ImportFBlocks(const DOMElement& element, ImportContext& context);

    std::unique_ptr<ZMTDefinition> definitions_;
    std::string absPath_;
    std::string filePath_;
};

}  // namespace tarvex
