#include "catalog/catalog.h"

#include <new>

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/xml/element.h"

namespace tarvex {

bool ZMTCatalog::Import(const Element& element, ImportContext& context) {
    context.catalog = this;
    try {
        if (!ImportDefinitions(element, context)) {
            return false;
        }
        ImportErrorFunctions(element, context);
        if (context.log.FatalCount() > 0 || !ImportFBlocks(element, context)) {
            return false;
        }
        return Resolve(context);
    } catch (const std::bad_alloc&) {
        return Raise<kOutOfMemory>(context.At(element));
    }
}

bool ZMTCatalog::ImportDefinitions(const Element& element, ImportContext& context) {
    const Element* definition = FindChildElement(&element, "Definition");
    if (definition == nullptr) {
        return Raise<kNoDefinition>(context.At(element), "Definition");
    }
    definitions_ = std::make_unique<ZMTDefinition>();
    definitions_->SetParent(this);
    if (!definitions_->Import(*definition, context)) {
        return Raise<kDefinitionFailed>(context.At(definition), "Definition");
    }
    context.definitions = definitions_.get();
    return true;
}

void ZMTCatalog::ImportErrorFunctions(const Element& element, ImportContext& context) {
    std::uint32_t index = 0;
    for (const Element* param = NextDescendant(element, element);
         param != nullptr && context.log.FatalCount() == 0; param = NextDescendant(element, *param)) {
        if (!HasTagName(*param, "ERParam")) {
            continue;
        }
        std::string paramDefId;
        if (GetAttribute(*param, "ParamDefId", paramDefId)) {
            auto function = std::make_unique<ZMTFunction>(paramDefId, index);
            function->SetParent(this);
            const std::string name = function->GetName();
            if (function->ImportErrorFunction(*param, context)) {
                context.functions.RegisterOwned(name, std::move(function));
            } else {
                context.functions.RegisterLost(name, std::move(function));
                Raise<kErrorFunctionFailed>(context.At(param), "ERParam");
            }
        }
        ++index;
    }
}

bool ZMTCatalog::ImportFBlocks(const Element& element, ImportContext& context) {
    for (const Element* child = FindChildElement(&element, "FBlock"); child != nullptr;
         child = FindNextSiblingElement(*child, "FBlock")) {
        auto block = std::make_unique<ZMTFBlock>();
        block->SetParent(this);
        if (block->Import(*child, context)) {
            const std::uint32_t id = block->FBlockID();
            SetAt(std::move(block), id);
        } else {
            lostBlocks_.Note(*child, "FBlockID", kFBlockIDEnd, context.log.LastError());
            Raise<kFBlockFailed>(context.At(child), "FBlock");
        }
        if (context.log.FatalCount() > 0) {
            return false;
        }
    }
    if (Count() == 0) {
        return Raise<kNoFBlock>(context.At(element));
    }
    return true;
}

bool ZMTCatalog::Resolve(ImportContext& context) {
    return ZMTNode::Resolve(context) && ResolveAll(context);
}

bool ZMTCatalog::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "CATALOG: " + GetName());
    DumpLine(treeLog, ".AbsPath: " + absPath_);
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    if (definitions_) {
        definitions_->Dump(treeLog);
    }
    return true;
}

}  // namespace tarvex
