/// The stream parameter.

#pragma once

#include "catalog/list_node.h"
#include "params/param_kind.h"
#include "params/stream_case.h"

namespace tarvex {

/// Content whose layout is chosen, case by case, by the value of a selector parameter beside the stream.
class ZMTParamStream
    : public ZMTParamKind<ZMTParamStream, ZMTListNode<ZMTParam, ZMTParamStreamCase>, ParamKind::Stream>,
      public ZMTCollector {
  public:
    /// Raises 28 to 33 and 35; false without "TStream", "Length" or "TypeRef", and, without a message of its
    /// own, when arrays, records and streams are nested too deep. A case that fails is left out.
    bool Import(const Element& element, ImportContext& context) override;
    /// The cases find their selector. One that fails is deleted; the stream stays.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// The parameter whose value tells which case stands in the message; not owned, null if there is none.
    const ZMTParam* Selector() const { return selector_.Get(); }
    /// Takes the selector that a case has found. False when another case has found a different one.
    bool BindSelector(const ZMTParam& selector);
    /// Declared length in bytes.
    std::uint32_t Length() const { return length_; }

  private:
    void ImportCases(const Element& stream, ImportContext& context);
    bool HasOverlappingCases() const;

    FoundSelector selector_;
    std::uint32_t length_ = 0;
};

}  // namespace tarvex
