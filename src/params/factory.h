/// From the type element of a parameter to the class of its kind.

#pragma once

#include "catalog/param_factory.h"

namespace tarvex {

/// Makes the parameter kinds of MOST catalogs.
class CatalogParamFactory : public ParamFactory {
  public:
    /// Kinds of newer catalogs are unknown unless these are read.
    std::unique_ptr<ZMTParam> Create(const Element& element, NewerForms& newer) const override;
};

}  // namespace tarvex
