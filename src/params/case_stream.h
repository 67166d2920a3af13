/// What streams and short streams have in common.

#pragma once

#include "catalog/list_node.h"
#include "params/param_kind.h"
#include "params/stream_case.h"

namespace tarvex {

/// Content whose layout is chosen, case by case, by the value of a selector parameter. Base of the kinds that
/// have such cases.
class ZMTParamCaseStream : public ZMTListNode<ZMTParam, ZMTParamStreamCase>, public ZMTCollector {
  public:
    /// The cases find their selector. One that fails is deleted; the stream stays.
    bool Resolve(ImportContext& context) override;

    /// The parameter whose value tells which case stands in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_.Get(); }
    /// Takes the selector that a case has found. False when another case has found a different one.
    bool BindSelector(const ZMTParam& selector);
    /// The catalog has cases of the stream that failed, so that none is the only one.
    bool HasLostCases() const { return CaseLostBy() != 0; }
    /// Number of the message that tells it; 0 when there are none.
    unsigned CaseLostBy() const;

  protected:
    ZMTParamCaseStream() = default;
    using ZMTListNode::ZMTListNode;

    /// Reads the "StreamCase" children; raises 32, 33 and 35. A case that fails is left out.
    void ImportCases(const Element& stream, ImportContext& context);
    void DumpSelector(ZMostTreeLog& treeLog) const;

  private:
    /// The later one of two cases that share a value; null if there are none.
    const ZMTParamStreamCase* FindOverlappingCase() const;

    FoundSelector selector_;
    bool hasLostCases_ = false;
};

}  // namespace tarvex
