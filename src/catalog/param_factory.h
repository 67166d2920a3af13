/// How the tree gets parameters whose kinds it does not know.

#pragma once

#include <memory>

#include "catalog/newer_forms.h"
#include "catalog/param.h"

namespace tarvex {

/// Makes the parameter object for an element that has a type element ("TNumber", "TEnum", ...). The tree
/// holds parameters without knowing their kinds, so the kinds are reached through this interface.
class ParamFactory {
  public:
    ParamFactory() = default;
    ParamFactory(const ParamFactory&) = delete;
    ParamFactory& operator=(const ParamFactory&) = delete;
    virtual ~ParamFactory() = default;

    /// A new, empty parameter of the kind that the element's type element names; null for an unknown type.
    virtual std::unique_ptr<ZMTParam> Create(const Element& element, NewerForms& newer) const = 0;
};

}  // namespace tarvex
