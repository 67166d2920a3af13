#include "catalog/node.h"

#include <algorithm>
#include <vector>

#include "import/log/tree_log.h"

namespace tarvex {

std::string ZMTNode::GetPath() const {
    std::vector<const ZMTNode*> chain;
    for (const ZMTNode* node = this; node != nullptr; node = node->GetParent()) {
        chain.push_back(node);
    }
    std::string path;
    std::ranges::reverse(chain);
    for (const ZMTNode* node : chain) {
        path += '/';
        path += node->GetName();
    }
    return path;
}

unsigned ZMTNode::GetLevel() const {
    return parent_ == nullptr ? 0 : parent_->GetLevel() + 1;
}

unsigned ZMTNode::GetIndentLevel() const {
    return parent_ == nullptr ? 0 : parent_->GetIndentLevel() + 1;
}

bool ZMTNode::Dump(ZMostTreeLog& treeLog) const {
    DumpBaseLines(treeLog);
    return true;
}

bool ZMTNode::Resolve(ImportContext& /*context*/) {
    indent_ = GetIndentLevel();
    return true;
}

ZMTNode* ZMTNode::FindChild(const SoughtName& /*name*/) const {
    return nullptr;
}

ZMTNode* ZMTNode::GetChild(unsigned /*pos*/) const {
    return nullptr;
}

ZMTNode* ZMTNode::FindVisible(const SoughtName& name, unsigned beforePos) const {
    const ZMTNode* scope = this;
    while (scope != nullptr) {
        // Nothing stands before position 0, so there is no need to look.
        ZMTNode* child = beforePos > 0 ? scope->FindChild(name) : nullptr;
        if (child != nullptr && child->GetPosition() < beforePos) {
            return child;
        }
        beforePos = scope->GetPosition();
        scope = scope->GetParent();
    }
    return nullptr;
}

bool ZMTNode::CopyFrom(const ZMTNode* other) {
    if (other == nullptr || !other->IsType(GetType())) {
        return false;
    }
    *this = *other;
    return true;
}

std::size_t ZMTNode::CopySize() const {
    constexpr std::size_t kTypicalNode = 200;
    return kTypicalNode + name_.size();
}

bool ZMTNode::Disassemble(ParamDecoder& /*decoder*/, std::span<const std::uint8_t> /*bytes*/) const {
    return false;
}

void ZMTNode::DumpLine(ZMostTreeLog& treeLog, std::string_view line) const {
    treeLog.WriteTreeLine(line, GetDumpLevel());
}

void ZMTNode::DumpBaseLines(ZMostTreeLog& treeLog) const {
    if (treeLog.IsFull()) {
        return;  // the path may be long
    }
    DumpLine(treeLog, ".Parent: " + (parent_ == nullptr ? "-" : parent_->GetPath()));
    DumpLine(treeLog, FormatText(".BytesInMsg: %d", bytesInMsg_));
}

}  // namespace tarvex
