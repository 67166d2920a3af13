#include "import/xml/dtd_watch.h"

#include <algorithm>
#include <vector>

#include <xercesc/framework/XMLNotationDecl.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

namespace tarvex {

void DtdWatch::doctypeDecl(const xercesc::DTDElementDecl& /*root*/, const XMLCh* /*publicId*/,
                           const XMLCh* systemId, bool /*hasInternalSubset*/, bool hasExternalSubset) {
    externalDtd_ = hasExternalSubset && systemId != nullptr ? systemId : u"";
    budget_.StartDtd();
}

void DtdWatch::elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) {
    budget_.EndDeclaration();
    Known& known = KnownOf(declaration);
    if (!isIgnored) {
        known.modelParts = AddModel(declaration.getContentSpec());
    }
}

/// The names in a content model come into the table of elements too. Returns its parts.
std::size_t DtdWatch::AddModel(const xercesc::ContentSpecNode* model) {
    std::size_t parts = 0;
    std::vector<const xercesc::ContentSpecNode*> open{model};
    while (!open.empty()) {
        const xercesc::ContentSpecNode* part = open.back();
        open.pop_back();
        if (part == nullptr) {
            continue;
        }
        ++parts;
        if (const xercesc::QName* name = part->getElement()) {
            AddElementName(name->getRawName());
        }
        open.push_back(part->getFirst());
        open.push_back(part->getSecond());
    }
    return parts;
}

void DtdWatch::attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& attribute,
                      bool /*isIgnored*/) {
    const XMLCh* words = attribute.getEnumeration();
    const std::size_t length = words != nullptr ? xercesc::XMLString::stringLen(words) : 0;
    if (length > 0) {
        budget_.AddWords(1 + static_cast<std::size_t>(std::count(words, words + length, u' ')));
    }
    Known& known = KnownOf(element);
    known.attributeCost += 1 + length;  // a word of some characters takes as long as some declarations
    if (!known.attributes) {
        known.attributes = std::make_unique<NameBuckets>(kAttributeBuckets);
    }
    budget_.AddName(known.attributes->Add(attribute.getFullName()));
}

void DtdWatch::entityDecl(const xercesc::DTDEntityDecl& entity, bool isParameterEntity, bool /*isIgnored*/) {
    budget_.AddEntity(isParameterEntity, entity.getValueLen());
    budget_.AddName((isParameterEntity ? parameterEntities_ : entities_).Add(entity.getName()));
}

void DtdWatch::notationDecl(const xercesc::XMLNotationDecl& notation, bool /*isIgnored*/) {
    budget_.AddName(notations_.Add(notation.getName()));
}

DtdWatch::Known& DtdWatch::KnownOf(const xercesc::XMLElementDecl& element) {
    const auto [place, isNew] = elements_.try_emplace(&element);
    if (isNew) {
        AddElementName(element.getFullName());
    }
    return place->second;
}

/// A name may be in either table, and is looked for in both.
void DtdWatch::AddElementName(const XMLCh* name) {
    budget_.AddName(declaredElements_.Add(name));
    budget_.AddName(otherElements_.Add(name));
}

DtdWatch::Cost DtdWatch::CostOf(const xercesc::XMLElementDecl& element) {
    constexpr std::size_t kPartsPerCharacter = 8;
    const Known& known = KnownOf(element);
    return {known.attributeCost / kPartsPerCharacter, known.modelParts / kPartsPerCharacter};
}

void DtdWatch::AddAttributes(const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count,
                             bool isValidating) {
    if (count > NameBuckets::kMostNames) {  // fewer cannot crowd
        NameBuckets names(kTagBuckets, NameBuckets::Load::Four);
        for (XMLSize_t i = 0; i < count; ++i) {
            budget_.AddName(names.Add(attributes.elementAt(i)->getQName()));
        }
    }
    for (XMLSize_t i = 0; isValidating && i < count; ++i) {
        const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
        using Def = xercesc::XMLAttDef;
        if (attribute.getType() == Def::ID || attribute.getType() == Def::IDRef ||
            attribute.getType() == Def::IDRefs) {
            AddIdentifiers(attribute.getValue());
        }
    }
}

/// The words of a value that names this element or refers to others.
void DtdWatch::AddIdentifiers(const XMLCh* value) {
    DomText text(value);
    std::ranges::replace(text, u' ', u'\0');
    for (const XMLCh* word = text.c_str(); word < text.c_str() + text.size();
         word += xercesc::XMLString::stringLen(word) + 1) {
        budget_.AddName(identifiers_.Add(word));
    }
}

}  // namespace tarvex
