#include "params/param_list.h"

namespace tarvex {
namespace {

/// Up to so many parameters are looked through faster than an index is built.
constexpr unsigned kFewParams = 16;

}  // namespace

void ParamList::ResolveParams(ImportContext& context) {
    index_ = Size() > kFewParams ? MakeIndex() : nullptr;
    ResolveOrDelete(context);
    index_.reset();
}

std::unique_ptr<ParamList::Index> ParamList::MakeIndex() const {
    auto index = std::make_unique<Index>();
    for (unsigned pos = 0; pos < Size(); ++pos) {
        if (const ZMTParam* param = GetAt(pos)) {
            index->try_emplace(param->GetName(), pos);
        }
    }
    return index;
}

ZMTParam* ParamList::FindByName(const std::string& name) const {
    if (!index_) {
        return ZMTChildList<ZMTParam>::FindByName(name);
    }
    const auto found = index_->find(name);
    if (found == index_->end()) {
        return nullptr;
    }
    // A parameter that failed its check is gone; the next one of its name takes its place.
    for (unsigned& pos = found->second; pos < Size(); ++pos) {
        if (ZMTParam* param = GetAt(pos); param != nullptr && NamesEqual(param->GetName(), name)) {
            return param;
        }
    }
    return nullptr;
}

}  // namespace tarvex
