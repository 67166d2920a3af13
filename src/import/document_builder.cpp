#include "import/document_builder.h"

#include <algorithm>
#include <memory>

#include <xercesc/util/XMLString.hpp>

#include "import/dom_access.h"

namespace tarvex {
namespace {

/// How much of a text there is room for, without half of a surrogate pair.
std::size_t CutLength(const XMLCh* text, std::size_t length, std::size_t room) {
    if (length <= room) {
        return length;
    }
    constexpr unsigned kHighSurrogates = 0xD800;
    return room > 0 && (text[room - 1] & 0xFC00U) == kHighSurrogates ? room - 1 : room;
}

}  // namespace

using xercesc::DOMNode;
using xercesc::XMLAttr;
using xercesc::XMLString;

DocumentBuilder::DocumentBuilder(Vocabulary vocabulary) : vocabulary_(std::move(vocabulary)) {}

bool DocumentBuilder::StartElement(const xercesc::XMLElementDecl& declaration,
                                   const xercesc::RefVectorOf<XMLAttr>& attributes,
                                   XMLSize_t attributeCount) {
    PartText();
    isAttributeCut_ = false;
    const Use& use = UseOf(declaration);
    OpenElement(use);
    if (use.isWord) {
        for (; nodes_ + 1 < open_.size(); ++nodes_) {
            MakeNode(nodes_, nullptr);
        }
        MakeNode(nodes_++, MakeAttributes(use, attributes, attributeCount));
    }
    return !isAttributeCut_;
}

/// The element's parent has a child element now, even if it becomes no node.
void DocumentBuilder::OpenElement(const Use& use) {
    if (!open_.empty() && !open_.back().hasChildElements) {
        Open& parent = open_.back();
        parent.hasChildElements = true;
        if (parent.element != nullptr) {
            DropIndentation(parent);
        }
    }
    open_.push_back({&use});
}

void DocumentBuilder::EndElement() {
    PartText();
    open_.pop_back();
    nodes_ = std::min(nodes_, open_.size());
}

bool DocumentBuilder::Text(const XMLCh* text, XMLSize_t length) {
    if (isCut_ || open_.empty() || !open_.back().use->hasText) {
        return true;
    }
    const std::size_t count = CutLength(text, length, kMaxText - text_.size());
    text_.append(text, count);
    if (count < length) {
        isFullOfBlanks_ = isFullOfBlanks_ || IsWhiteSpace(text_);
        isCut_ = !isFullOfBlanks_ || !IsWhiteSpace({text + count, length - count});
    }
    return !isCut_;
}

void DocumentBuilder::PartText() {
    isCut_ = false;
    isFullOfBlanks_ = false;
    if (text_.empty()) {
        return;
    }
    Open& open = open_.back();
    if (!open.hasChildElements || !IsWhiteSpace(text_)) {
        auto* text = Make<CompactText>(open.element, Copy(text_.data(), text_.size()));
        *open.next = text;
        open.next = text->NextPlace();
    }
    text_.clear();
}

const DocumentBuilder::Use& DocumentBuilder::UseOf(const xercesc::XMLElementDecl& declaration) {
    const auto [place, isNew] = uses_.try_emplace(&declaration);
    if (isNew) {
        const XMLCh* name = declaration.getFullName();
        const Vocabulary::Word* word = vocabulary_.Find(name);
        const bool keepsAll = !vocabulary_.HasWords();
        place->second = {name, keepsAll || word != nullptr, keepsAll || (word != nullptr && word->hasText),
                         word != nullptr ? &word->attributes : nullptr};
    }
    return place->second;
}

/// Makes an open element a node; those above it are nodes already.
void DocumentBuilder::MakeNode(std::size_t depth, CompactAttributes* attributes) {
    DOMNode* parent = &document_;
    DOMNode** place = document_.FirstPlace();
    if (depth > 0) {
        parent = open_[depth - 1].element;
        place = open_[depth - 1].next;
    }
    auto* element = Make<CompactElement>(parent, open_[depth].use->name, attributes);
    *place = element;
    if (depth > 0) {
        open_[depth - 1].next = element->NextPlace();
    }
    open_[depth].element = element;
    open_[depth].next = element->FirstPlace();
}

/// Takes the white space out of an element that has texts only.
void DocumentBuilder::DropIndentation(Open& open) {
    DOMNode** place = open.element->FirstPlace();
    while (*place != nullptr) {
        auto* text = static_cast<CompactText*>(*place);
        if (IsWhiteSpace(text->getNodeValue())) {
            *place = text->getNextSibling();
        } else {
            place = text->NextPlace();
        }
    }
    open.next = place;
}

CompactAttributes* DocumentBuilder::MakeAttributes(const Use& use,
                                                   const xercesc::RefVectorOf<XMLAttr>& attributes,
                                                   XMLSize_t attributeCount) {
    const auto nameOf = [&](const XMLAttr& attribute) -> const XMLCh* {
        const XMLCh* name = attribute.getQName();
        if (use.attributes == nullptr) {
            return Copy(name, XMLString::stringLen(name));
        }
        const auto found = std::ranges::find(*use.attributes, name);
        return found == use.attributes->end() ? nullptr : found->c_str();
    };
    const XMLSize_t room =
        use.attributes == nullptr ? attributeCount : std::min(attributeCount, use.attributes->size());
    CompactAttribute* first = nullptr;
    std::size_t count = 0;
    for (XMLSize_t i = 0; i < attributeCount && count < room; ++i) {
        const XMLAttr& attribute = *attributes.elementAt(i);
        if (const XMLCh* name = nameOf(attribute)) {
            if (first == nullptr) {
                first = static_cast<CompactAttribute*>(
                    memory_.allocate(room * sizeof(CompactAttribute), alignof(CompactAttribute)));
            }
            std::construct_at(first + count++, name, CopyAttribute(attribute.getValue()));
        }
    }
    return count == 0 ? nullptr : Make<CompactAttributes>(std::span<CompactAttribute>(first, count));
}

const XMLCh* DocumentBuilder::CopyAttribute(const XMLCh* value) {
    const std::size_t length = XMLString::stringLen(value);
    const std::size_t kept = CutLength(value, length, kMaxText);
    isAttributeCut_ = isAttributeCut_ || kept < length;
    return Copy(value, kept);
}

const XMLCh* DocumentBuilder::Copy(const XMLCh* text, std::size_t length) {
    auto* copy = static_cast<XMLCh*>(memory_.allocate((length + 1) * sizeof(XMLCh), alignof(XMLCh)));
    *std::copy_n(text, length, copy) = 0;
    return copy;
}

template <class T, class... Args>
T* DocumentBuilder::Make(const Args&... args) {
    return std::construct_at(static_cast<T*>(memory_.allocate(sizeof(T), alignof(T))), args...);
}

}  // namespace tarvex
