#include "import/dtd_watch.h"

namespace tarvex {

void DtdWatch::doctypeDecl(const xercesc::DTDElementDecl& /*root*/, const XMLCh* /*publicId*/,
                           const XMLCh* systemId, bool /*hasInternalSubset*/, bool hasExternalSubset) {
    externalDtd_ = hasExternalSubset && systemId != nullptr ? systemId : u"";
    budget_.StartDtd();
}

void DtdWatch::elementDecl(const xercesc::DTDElementDecl& /*declaration*/, bool /*isIgnored*/) {
    budget_.EndDeclaration();
}

}  // namespace tarvex
