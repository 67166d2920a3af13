#include "params/array.h"

#include <algorithm>
#include <iterator>

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"
#include "params/members.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

/// What catalogs write for an open length.
constexpr const char* kOpenLengths[] = {"NMax", "N (>=0)"};

}  // namespace

bool ZMTParamArray::Import(const Element& element, ImportContext& context) {
    const Element* array =
        IsNestedTooDeep(*this) ? nullptr : ImportHead<kNoTArray>(element, "TArray", context);
    if (array == nullptr) {
        return false;
    }
    std::string text;
    if (GetAttribute(*array, "NMax", text)) {
        ReadNMax(*array, text, context);
    } else if (!context.newer.Meet()) {
        return Raise<kArrayWithoutNMax>(context.At(array), "NMax");
    }
    if (!ImportTypeRef<kArrayWithoutType>(*array, context)) {
        return false;
    }
    auto member = ImportMember<kArrayElementUnknown, kArrayElementFailed>(*this, *array, context);
    if (!member) {
        return false;
    }
    Append(std::move(member));
    return true;
}

void ZMTParamArray::ReadNMax(const Element& array, const std::string& text, ImportContext& context) {
    nMax_ = kUnlimited;
    if (std::ranges::find(kOpenLengths, text) != std::end(kOpenLengths)) {
        return;
    }
    std::int32_t value = 0;
    if (ParseInteger(text, value) && value > 0) {
        nMax_ = static_cast<std::uint32_t>(value);
    } else {
        Raise<kNMaxUnreadable>(context.At(array), text);
    }
}

bool ZMTParamArray::Resolve(ImportContext& context) {
    if (!ZMTParam::Resolve(context)) {
        return false;
    }
    const auto selector = FindSelector(*this);
    if (!selector) {
        return Raise<kArrayDataWithoutPos>(context.At(TypeElement("TArray")), kPosName, kDataName);
    }
    selector_.Set(*selector);
    ResolveOrDelete(context);
    return true;
}

bool ZMTParamArray::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "PARAMARRAY: " + GetName());
    DumpParamLines(treeLog);
    DumpLine(treeLog, FormatText(".SelectorParam: %s", SelectorName(Selector())));
    DumpLine(treeLog, FormatText(".NMax: %d", nMax_));
    DumpAll(treeLog);
    return true;
}

}  // namespace tarvex
