#include "import/xml/dtd_watch.h"

#include <algorithm>

#include <xercesc/util/XMLString.hpp>

namespace tarvex {

void DtdWatch::doctypeDecl(const xercesc::DTDElementDecl& /*root*/, const XMLCh* /*publicId*/,
                           const XMLCh* systemId, bool /*hasInternalSubset*/, bool hasExternalSubset) {
    externalDtd_ = hasExternalSubset && systemId != nullptr ? systemId : u"";
    budget_.StartDtd();
}

void DtdWatch::elementDecl(const xercesc::DTDElementDecl& /*declaration*/, bool /*isIgnored*/) {
    budget_.EndDeclaration();
}

void DtdWatch::attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& attribute,
                      bool /*isIgnored*/) {
    const XMLCh* words = attribute.getEnumeration();
    const std::size_t length = words != nullptr ? xercesc::XMLString::stringLen(words) : 0;
    if (length > 0) {
        budget_.AddWords(1 + static_cast<std::size_t>(std::count(words, words + length, u' ')));
    }
    attributeCosts_[&element] += 1 + length;  // a word of some characters takes as long as some declarations
}

void DtdWatch::entityDecl(const xercesc::DTDEntityDecl& entity, bool isParameterEntity, bool /*isIgnored*/) {
    budget_.AddEntity(isParameterEntity, entity.getValueLen());
}

std::size_t DtdWatch::CostOf(const xercesc::XMLElementDecl& element) const {
    constexpr std::size_t kDeclarationsPerCharacter = 8;
    const auto found = attributeCosts_.find(&element);
    return found == attributeCosts_.end() ? 0 : found->second / kDeclarationsPerCharacter;
}

}  // namespace tarvex
