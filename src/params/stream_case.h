/// The cases of a stream.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalog/list_node.h"
#include "params/param_kind.h"

namespace tarvex {

/// The text of a coordinate that a catalog leaves open.
inline constexpr const char* kNoCoordinate = "#NULL#";

/// What a stream holds while its selector has a value of a certain range: parameters or, in newer catalogs,
/// signals, in the order in which they stand in the message. Without any, just bytes.
class ZMTParamStreamCase
    : public ZMTParamKind<ZMTParamStreamCase, ZMTListNode<ZMTParam, ZMTParam>, ParamKind::StreamCase> {
  public:
    ZMTParamStreamCase();

    /// Reads a "StreamCase" element; raises 17 to 26 and 206 to 215, false at the first parameter, signal or
    /// range that is of no use.
    bool Import(const Element& element, ImportContext& context) override;
    /// Finds the selector and takes a name from it. Raises 27 and fails when the stream has another selector
    /// already. A parameter that fails is deleted; the case stays.
    bool Resolve(ImportContext& context) override;
    /// Cases have names of the program's own making, which may repeat.
    bool HasDuplicateName() const override { return false; }
    /// A case does not deepen the indentation.
    unsigned GetIndentLevel() const override;
    bool Dump(ZMostTreeLog& treeLog) const override;
    std::size_t CopySize() const override { return ZMTParamKind::CopySize() + posXString_.size(); }

    /// The catalog's text for the x coordinate; may name the selector.
    const std::string& PosXString() const { return posXString_; }
    /// Values of the selector for which the case stands, both included. Negative ones are in two's
    /// complement; kOpenRangeEnd means no upper bound.
    std::uint32_t PosYMin() const { return posYMin_; }
    std::uint32_t PosYMax() const { return posYMax_; }
    /// The case may stand for that x coordinate: the text names it, a range with it, or says nothing about x.
    bool AdmitsX(unsigned x) const { return !hasRangeX_ || (posXMin_ <= x && x <= posXMax_); }
    /// The text for the x coordinate names a parameter that is not there, or is of a kind that can't select.
    /// The selector of the stream, if there is one, is another one then. Known once the case is resolved.
    bool IsNameUnknown() const { return isNameUnknown_; }
    /// The highest sequence number among the parameters; 0 when none has one.
    std::uint32_t SeqCnt() const { return seqCnt_; }
    /// The slot from which on the parameters are a group that repeats to the end of the stream; kNotRepeated
    /// when each stands once.
    unsigned RepeatedFrom() const { return repeatedFrom_; }
    static constexpr unsigned kNotRepeated = ~0U;
    /// The first slot whose place two parameters or signals claim, so that the one in it need not be what
    /// stands there; kNoSlot when there is none.
    unsigned ClaimedTwice() const { return claimedTwice_; }
    static constexpr unsigned kNoSlot = ~0U;

  private:
    bool ImportRange(const Element& element, ImportContext& context);
    bool ImportContent(const Element& element, ImportContext& context);
    bool ImportParams(const Element* child, ImportContext& context);
    bool ImportSignals(const Element* child, ImportContext& context);
    using Params = std::vector<std::unique_ptr<ZMTParam>>;

    bool CheckSequences(const Params& params, bool isAcross, ImportContext& context);
    bool OrderGroup(Params& params, ImportContext& context);
    const ZMTParam* FindCaseSelector(bool looksOutward);
    std::string NameBy(const ZMTParam& selector) const;

    std::string posXString_;
    std::uint32_t posYMin_ = 0;
    std::uint32_t posYMax_ = 0;
    std::uint32_t seqCnt_ = 0;
    unsigned repeatedFrom_ = kNotRepeated;
    unsigned claimedTwice_ = kNoSlot;
    bool isNameUnknown_ = false;
    bool hasRangeX_ = false;
    std::uint32_t posXMin_ = 0;
    std::uint32_t posXMax_ = 0;
};

}  // namespace tarvex
