#pragma once

#include "catalog/param_factory.h"

namespace tarvex {

/// The element of that type among the direct children, else one level deeper; null if there is none. Most
/// catalogs wrap the type element, and records may do either.
const DOMElement* FindTypeElement(const DOMElement& element, std::string_view name);

/// Makes the parameter kinds of MOST catalogs.
class CatalogParamFactory : public ParamFactory {
  public:
    std::unique_ptr<ZMTParam> Create(const DOMElement& element) const override;
};

}  // namespace tarvex
