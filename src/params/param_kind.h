/// What the kinds of parameters have in common.

#pragma once

#include <string>
#include <type_traits>

#include "catalog/import_context.h"
#include "catalog/param.h"
#include "import/xml/element.h"
#include "params/collector.h"
#include "params/param_decoder.h"
#include "params/selector.h"
#include "params/type_element.h"

namespace tarvex {

/// Base of a kind of parameters `Self`, which extends `Base` by fields.
template <class Self, class Base, ParamKind kKind>
class ZMTParamKind : public ZMTNodeKind<Self, Base, static_cast<NodeType>(kKind)> {
  public:
    bool Disassemble(ParamDecoder& decoder, std::span<const std::uint8_t> bytes) const override {
        static_assert(std::is_base_of_v<ZMTSelector, Self> == CanSelect(kKind));
        static_assert(std::is_base_of_v<ZMTCollector, Self> == IsCollector(kKind));
        return decoder.Decode(static_cast<const Self&>(*this), bytes);
    }

  protected:
    /// Reads name and position, and finds the element of that type. Null when one is missing: raises those of
    /// ImportParamName and ImportParamPos, and kNoType.
    template <const Message& kNoType>
    const Element* ImportHead(const Element& element, const char* type, ImportContext& context) {
        this->SetElement(element);
        if (!this->ImportParamName(element, context) || !this->ImportParamPos(element, context)) {
            return nullptr;
        }
        const Element* found = FindTypeElement(element, type);
        if (found == nullptr) {
            this->template Raise<kNoType>(context.At(element), type);
        }
        return found;
    }

    /// Takes the type definition that a type element refers to. False, with kNoReference, when it refers to
    /// none.
    template <const Message& kNoReference>
    bool ImportTypeRef(const Element& type, ImportContext& context) {
        std::string typeRef;
        if (!GetAttribute(type, "TypeRef", typeRef)) {
            return this->template Raise<kNoReference>(context.At(type), "TypeRef");
        }
        this->ResolveType(typeRef, context);
        return true;
    }

    /// The type element that the parameter was made of; null for one that was made by hand.
    const Element* TypeElement(const char* type) const {
        return this->GetElement() != nullptr ? FindTypeElement(*this->GetElement(), type) : nullptr;
    }

    using ZMTNodeKind<Self, Base, static_cast<NodeType>(kKind)>::ZMTNodeKind;
};

}  // namespace tarvex
