/// The base of the catalog tree.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "catalog/node_types.h"
#include "import/log/message.h"
#include "import/log/message_log.h"
#include "import/text/format_text.h"
#include "import/text/names.h"

namespace tarvex {

struct Element;
struct ImportContext;
class ParamDecoder;
class ZMostTreeLog;

/// A node of the catalog tree. It is created empty, filled by Import (or by its owner), attached to its
/// parent, stored in the parent's list, and checked by Resolve once the whole catalog is there. A node owns
/// its children; deleting it deletes its subtree.
class ZMTNode {
  public:
    ZMTNode() = default;
    ZMTNode(const ZMTNode&) = delete;
    virtual ~ZMTNode() = default;

    /// Exact match with the class's own code; a derived class does not answer for its bases.
    virtual bool IsType(int code) const { return code == GetType(); }
    virtual NodeType GetType() const = 0;

    virtual void SetName(const std::string& name) { name_ = name; }
    virtual const std::string& GetName() const { return name_; }

    /// The parent is not owned and outlives the node; null for the root.
    virtual void SetParent(ZMTNode* parent) { parent_ = parent; }
    virtual ZMTNode* GetParent() const { return parent_; }

    /// "/" and the node names from the root down, separated by "/". Names the node in importer messages.
    virtual std::string GetPath() const;
    /// Number of nodes above this one.
    virtual unsigned GetLevel() const;
    /// Indentation level: as GetLevel, except that some kinds do not deepen it.
    virtual unsigned GetIndentLevel() const;

    /// Writes the node and its subtree to the tree log.
    virtual bool Dump(ZMostTreeLog& treeLog) const;

    /// Builds the node from its element. Raises the class's own messages; false when the node is of no use.
    virtual bool Import(const Element& element, ImportContext& context) = 0;
    /// Second pass over the finished tree. False makes the owner delete the node.
    virtual bool Resolve(ImportContext& context);

    /// The child of that name, without regard to case; null if there is none.
    virtual ZMTNode* FindChild(const SoughtName& name) const;
    /// The child in a slot of the node's list; null for an empty slot.
    virtual ZMTNode* GetChild(unsigned pos) const;
    /// The node's own position in its parent's list, where the position carries meaning; else 0.
    virtual unsigned GetPosition() const { return 0; }
    /// Scoped look-up: the child of that name if it stands before `beforePos`, else the parent is asked for
    /// one that stands before this node.
    virtual ZMTNode* FindVisible(const SoughtName& name, unsigned beforePos) const;

    /// Takes over the fields of a node of exactly the same class; false for any other.
    virtual bool CopyFrom(const ZMTNode* other);
    /// An equal node, owned by the caller; null when the class or a child cannot be cloned.
    virtual std::unique_ptr<ZMTNode> Clone() const { return nullptr; }

    /// Has the decoder take this node's part of a message, from where it stands on. `bytes` is the whole
    /// message. False when it does not fit.
    virtual bool Disassemble(ParamDecoder& decoder, std::span<const std::uint8_t> bytes) const;

    /// Bytes that the node takes in a message.
    virtual void SetBytesInMsg(std::int32_t bytes) { bytesInMsg_ = bytes; }
    virtual std::int32_t GetBytesInMsg() const { return bytesInMsg_; }

    virtual unsigned GetDumpLevel() const { return GetLevel(); }
    /// The indentation level as Resolve found it.
    virtual unsigned GetIndent() const { return indent_; }

    /// Bytes of memory that a copy of the node takes with all that is below it, roughly.
    virtual std::size_t CopySize() const;

    /// Raises a message in the name of this node. Errors and warnings that nobody reads are only counted, and
    /// neither text nor path is built. Always false, so that a failing check is one line.
    template <const Message& kMessage, class... Args>
    bool Raise(const FaultSite& site, const Args&... args) const {
        static_assert(FormatTakes<Args...>(kMessage.text), "the arguments do not fit the message's text");
        const auto text = [&] { return FormatText(kMessage.text.data(), args...); };
        ZMostFCatLog& log = site.log;
        const bool isRead = log.IsRead(kMessage.number);
        if constexpr (kMessage.kind == Kind::Fatal) {
            log.Fatal(text(), GetPath(), site.place);
        } else if constexpr (kMessage.kind == Kind::Error) {
            if (isRead) {
                log.Error(kMessage.number, text(), GetPath(), site.place);
            } else {
                log.CountError(kMessage.number);
            }
        } else if (isRead) {
            log.Warning(kMessage.number, text(), GetPath(), site.place);
        } else {
            log.CountWarning(kMessage.number);
        }
        return false;
    }

  protected:
    explicit ZMTNode(std::string name) : name_(std::move(name)) {}
    /// Takes over the fields, those of derived classes too; children are not among them.
    ZMTNode& operator=(const ZMTNode&) = default;

    /// Writes one line of this node at its level. The line is used as a format.
    void DumpLine(ZMostTreeLog& treeLog, std::string_view line) const;
    /// Writes the lines that most nodes share: the parent's path and the bytes in the message.
    void DumpBaseLines(ZMostTreeLog& treeLog) const;

  private:
    std::string name_;
    ZMTNode* parent_ = nullptr;
    std::int32_t bytesInMsg_ = 0;
    std::uint32_t indent_ = 0;
};

}  // namespace tarvex
