#include "catalog/fblock.h"

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

bool ZMTFBlock::Import(const Element& element, ImportContext& context) {
    if (!ImportHead(element, context)) {
        return false;
    }
    for (const Element* child = NextDescendant(element, element); child != nullptr;
         child = NextDescendant(element, *child)) {
        if (!HasTagName(*child, "Function")) {
            continue;
        }
        auto function = std::make_unique<ZMTFunction>();
        function->SetParent(this);
        if (function->Import(*child, context)) {
            const std::uint32_t id = function->FunctionID();
            SetAt(std::move(function), id);
        } else {
            NoteLost(*child, context);
            Raise<kFunctionFailed>(context.At(child), "Function");
        }
        if (context.log.FatalCount() > 0) {
            return false;
        }
    }
    if (Count() == 0) {
        return Raise<kFBlockEmpty>(context.At(element));
    }
    return true;
}

/// A copy would have had the number of its original, whatever its element says.
void ZMTFBlock::NoteLost(const Element& functionElement, const ImportContext& context) {
    const unsigned message = context.log.LastError();
    std::string fktDefRef;
    const ZMTNode* original =
        GetAttribute(functionElement, "FktDefRef", fktDefRef) ? context.functions.Find(fktDefRef) : nullptr;
    if (original != nullptr && original->IsType(kFunction)) {
        lostFunctions_.Note(static_cast<const ZMTFunction&>(*original).FunctionID(), message);
    } else {
        lostFunctions_.Note(functionElement, "FunctionID", kFunctionIDEnd, message);
    }
}

bool ZMTFBlock::ImportHead(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetChildElementText(element, "FBlockName", text)) {
        return Raise<kFBlockWithoutName>(context.AtChild(element, "FBlockName"), "FBlockName");
    }
    SetName(SanitizeName(text));
    if (!GetChildElementText(element, "FBlockID", text)) {
        return Raise<kFBlockWithoutId>(context.AtChild(element, "FBlockID"), "FBlockID");
    }
    std::int32_t id = 0;
    if (!ParseInteger(text, id)) {
        return Raise<kFBlockIdUnreadable>(context.AtChild(element, "FBlockID"), text);
    }
    if (id < 0 || id >= kFBlockIDEnd) {
        return Raise<kFBlockIdOutOfRange>(context.AtChild(element, "FBlockID"), id, 0, kFBlockIDEnd);
    }
    fBlockID_ = static_cast<std::uint32_t>(id);
    const ZMTNode* catalog = GetParent();
    if (catalog != nullptr && catalog->GetChild(fBlockID_) != nullptr) {
        return Raise<kFBlockIdTwice>(context.AtChild(element, "FBlockID"), fBlockID_);
    }
    if (catalog != nullptr && catalog->FindChild(GetName()) != nullptr) {
        return Raise<kFBlockNameTwice>(context.AtChild(element, "FBlockName"), GetName());
    }
    return true;
}

bool ZMTFBlock::Resolve(ImportContext& context) {
    return ZMTNode::Resolve(context) && ResolveAll(context);
}

bool ZMTFBlock::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "FBLOCK: " + GetName());
    DumpLine(treeLog, FormatText(".FBlockID: 0x%02X", fBlockID_));
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
