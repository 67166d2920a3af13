/// Parameters inside arrays, records and stream cases.

#pragma once

#include <memory>

#include "catalog/import_context.h"
#include "catalog/param.h"
#include "catalog/unknown_type.h"
#include "import/xml/element.h"

namespace tarvex {

/// Arrays, records and streams stand inside each other at most this deep. Deeper ones are of no use to
/// anybody, and every pass over the tree is recursive.
inline constexpr unsigned kMaxNesting = 64;

/// The parameter, with its parent set, is an array, record or stream inside kMaxNesting others.
bool IsNestedTooDeep(const ZMTParam& param);

/// Makes and imports the parameter of an element inside an array, record or stream case, with `container` as
/// parent. Raises kUnknown or kFailed with the element's tag in the name of the container; null then.
template <const Message& kUnknown, const Message& kFailed>
std::unique_ptr<ZMTParam> ImportMember(ZMTParam& container, const Element& element, ImportContext& context) {
    std::unique_ptr<ZMTParam> member = context.paramFactory.Create(element, context.newer);
    if (!member) {
        container.Raise<kUnknown>(context.At(FindUnknownType(element)), std::string(element.name));
        return nullptr;
    }
    member->SetParent(&container);
    if (!member->Import(element, context)) {
        container.Raise<kFailed>(context.At(element), std::string(element.name));
        return nullptr;
    }
    return member;
}

}  // namespace tarvex
