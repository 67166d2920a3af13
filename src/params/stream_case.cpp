#include "params/stream_case.h"

#include <algorithm>
#include <map>
#include <utility>

#include "import/log/messages.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"
#include "params/members.h"
#include "params/pos_and_data.h"
#include "params/stream.h"

namespace tarvex {
namespace {

/// The name of a case whose stream has no selector.
constexpr const char* kCaseWithoutSelector = "{StreamCase}";

/// A coordinate of a case: the attribute of an element of its own where there is one, else an attribute of
/// the element that holds both.
std::string Coordinate(const Element& streamCase, const char* name) {
    std::string text;
    const bool found = FindChildElement(&streamCase, name) != nullptr
                           ? GetChildAttribute(streamCase, name, "PosDescription", text)
                           : GetChildAttribute(streamCase, "PosDescription", name, text);
    return found ? text : kNoCoordinate;
}

/// The sibling of a stream that can select its content; null if there is none of that name. One that is about
/// to fail its own check will not be there to select.
const ZMTParam* FindSelecting(const ZMTNode& scope, const std::string& name) {
    const ZMTParam* selector = AsSelector(scope.FindChild(name));
    return selector != nullptr && IsContainer(*selector) && !FindSelector(*selector) ? nullptr : selector;
}

}  // namespace

ZMTParamStreamCase::ZMTParamStreamCase() : ZMTParamKind(kCaseWithoutSelector) {}

bool ZMTParamStreamCase::Import(const Element& element, ImportContext& context) {
    return ImportParamName(element, context) && ImportParamPos(element, context) &&
           ImportRange(element, context) && ImportParams(element, context) && CheckSequences(context);
}

bool ZMTParamStreamCase::ImportRange(const Element& element, ImportContext& context) {
    const std::string posY = Coordinate(element, "PosY");
    std::int32_t min = 0;
    std::int32_t max = 0;
    if (!ParseRange(posY, min, max)) {
        return Raise<kStreamRangeUnreadable>(context.log, posY);
    }
    posYMin_ = static_cast<std::uint32_t>(min);
    posYMax_ = static_cast<std::uint32_t>(max);
    posXString_ = Coordinate(element, "PosX");
    hasRangeX_ =
        !posXString_.empty() && !NamesEqual(posXString_, kNoCoordinate) && ParseRange(posXString_, min, max);
    posXMin_ = static_cast<std::uint32_t>(min);
    posXMax_ = static_cast<std::uint32_t>(max);
    return true;
}

/// Reads the parameters and puts them in order.
bool ZMTParamStreamCase::ImportParams(const Element& element, ImportContext& context) {
    const Element* child = FindChildElement(&element, "StreamParam");
    if (child == nullptr) {
        Raise<kStreamCaseWithoutParam>(context.log, "StreamParam");
        Raise<kEmptyStreamCaseUnsupported>(context.log);
        return true;
    }
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::unique_ptr<ZMTParam>> params;
    for (; child != nullptr; child = FindNextSiblingElement(*child, "StreamParam")) {
        auto param = ImportMember<kStreamParamUnknown, kStreamParamFailed>(*this, *child, context);
        if (!param) {
            return false;
        }
        if (param->ParamPos() == 0 || param->ParamPos() > kMaxParamPos) {
            return Raise<kStreamParamPosInvalid>(context.log, param->GetName());
        }
        auto& place = params[{param->ParamPos(), param->Sequence()}];
        if (place) {
            Raise<kStreamParamTwice>(context.log, param->ParamPos());
        } else {
            place = std::move(param);
        }
    }
    for (auto& [position, param] : params) {
        Append(std::move(param));
    }
    return true;
}

/// The positions are 1, 2, 3, ...; those of one position have no sequence numbers or have 1, 2, 3, ...
bool ZMTParamStreamCase::CheckSequences(ImportContext& context) {
    std::uint32_t pos = 0;
    std::uint32_t sequence = 0;
    for (const ZMTParam& param : Items()) {
        if (param.ParamPos() == pos) {
            if (sequence == 0) {
                return Raise<kSequenceMissing>(context.log);
            }
        } else if (param.ParamPos() == pos + 1) {
            ++pos;
            sequence = 0;
        } else {
            return Raise<kGapInStreamCase>(context.log, param.GetName());
        }
        if (param.Sequence() != 0 && param.Sequence() != sequence + 1) {
            return Raise<kSequenceBroken>(context.log);
        }
        sequence = param.Sequence();
        seqCnt_ = std::max(seqCnt_, sequence);
    }
    return true;
}

bool ZMTParamStreamCase::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    if (const ZMTParam* selector = FindCaseSelector()) {
        auto& stream = *static_cast<ZMTParamStream*>(GetParent());
        if (!stream.BindSelector(*selector)) {
            return Raise<kSecondSelector>(context.log);
        }
        SetName(NameBy(*selector));
        stream.NameChanged(*this);
    }
    ResolveOrDelete(context);
    return true;
}

/// What the x coordinate names beside the stream, else the "Pos" there.
const ZMTParam* ZMTParamStreamCase::FindCaseSelector() const {
    const ZMTNode* stream = GetParent();
    if (stream == nullptr || !stream->IsType(kParamStream) || stream->GetParent() == nullptr) {
        return nullptr;
    }
    const ZMTNode& scope = *stream->GetParent();
    const std::string name =
        NamesEqual(posXString_, kNoCoordinate) ? std::string() : SanitizeName(posXString_);
    const ZMTParam* named = name.empty() ? nullptr : FindSelecting(scope, name);
    return named != nullptr ? named : FindSelecting(scope, kPosName);
}

std::string ZMTParamStreamCase::NameBy(const ZMTParam& selector) const {
    if (posYMin_ == posYMax_) {
        return FormatText("(%s=0x%02X)", selector.GetName(), posYMin_);
    }
    if (posYMax_ == static_cast<std::uint32_t>(kOpenRangeEnd)) {
        return FormatText("(%s>=0x%02X)", selector.GetName(), posYMin_);
    }
    return FormatText("(%s=0x%02X..0x%02X)", selector.GetName(), posYMin_, posYMax_);
}

unsigned ZMTParamStreamCase::GetIndentLevel() const {
    return GetParent() == nullptr ? 0 : GetParent()->GetIndentLevel();
}

bool ZMTParamStreamCase::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMSTREAMCASE: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, ".PosXString: " + posXString_);
    DumpLine(treeLog, FormatText(".PosYMin: %d", posYMin_));
    DumpLine(treeLog, FormatText(".PosYMax: %d", posYMax_));
    DumpLine(treeLog, FormatText(".SeqCnt: %d", seqCnt_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
