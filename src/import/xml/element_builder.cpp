#include "import/xml/element_builder.h"

#include <algorithm>
#include <memory>

#include <xercesc/util/XMLString.hpp>

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

using xercesc::XMLAttr;
using xercesc::XMLString;

bool ElementBuilder::StartElement(const xercesc::XMLElementDecl& declaration,
                                  const xercesc::RefVectorOf<XMLAttr>& attributes, XMLSize_t attributeCount,
                                  FilePlace start) {
    PartText();
    isAttributeCut_ = false;
    const Use& use = UseOf(declaration);
    OpenElement(use, start);
    if (use.isWord) {
        for (; elements_ < open_.size(); ++elements_) {
            MakeElement(elements_);
        }
        open_.back().element->attributes = KeepAttributes(use, attributes, attributeCount);
    }
    return !isAttributeCut_;
}

/// The element's parent has a child element now, even if it becomes none.
void ElementBuilder::OpenElement(const Use& use, FilePlace start) {
    if (!open_.empty() && !open_.back().hasChildElements) {
        Open& parent = open_.back();
        parent.hasChildElements = true;
        if (parent.isBlank) {  // it was indentation
            parent.element->text = parent.words;
        }
    }
    Open& open = open_.emplace_back();
    open.use = &use;
    open.start = start;
}

void ElementBuilder::EndElement() {
    PartText();
    open_.pop_back();
    elements_ = std::min(elements_, open_.size());
}

bool ElementBuilder::Text(const XMLCh* text, XMLSize_t length) {
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

void ElementBuilder::PartText() {
    isCut_ = false;
    isFullOfBlanks_ = false;
    if (!text_.empty()) {
        AddText(open_.back());
        text_.clear();
    }
}

void ElementBuilder::AddText(Open& open) {
    const bool isBlank = IsWhiteSpace(text_);
    if (isBlank && open.hasChildElements) {
        return;
    }
    if (open.element->text.empty()) {
        open.element->text = Keep(text_);
        open.isBlank = isBlank;
    } else if (open.isBlank && !isBlank && open.words.empty()) {
        open.words = Keep(text_);
    }
}

const ElementBuilder::Use& ElementBuilder::UseOf(const xercesc::XMLElementDecl& declaration) {
    const auto [place, isNew] = uses_.try_emplace(&declaration);
    Use& use = place->second;
    if (isNew) {
        use.name = Keep(declaration.getFullName());
        const Vocabulary::Word* word = vocabulary_.Find(use.name);
        use.hasAllAttributes = !vocabulary_.HasWords();
        use.isWord = use.hasAllAttributes || word != nullptr || vocabulary_.KeepsOthers();
        use.hasText = use.hasAllAttributes || (word != nullptr && word->hasText);
        if (word != nullptr) {
            for (const std::string& attribute : word->attributes) {
                use.attributes.push_back({ToDomText(attribute), attribute});
            }
        }
    }
    return use;
}

/// Makes an element of an open one; those above it are elements already.
void ElementBuilder::MakeElement(std::size_t depth) {
    Open& open = open_[depth];
    auto* element = std::construct_at(Allocate<Element>(1));
    element->name = open.use->name;
    element->line = open.start.line;
    element->column = open.start.column;
    element->parent = depth == 0 ? &document_ : open_[depth - 1].element;
    const Element*& place = depth == 0 ? document_.firstChild : *open_[depth - 1].next;
    place = element;
    if (depth > 0) {
        open_[depth - 1].next = &element->nextSibling;
    }
    open.element = element;
    open.next = &element->firstChild;
}

std::span<const Attribute> ElementBuilder::KeepAttributes(const Use& use,
                                                          const xercesc::RefVectorOf<XMLAttr>& attributes,
                                                          XMLSize_t attributeCount) {
    const XMLSize_t room =
        use.hasAllAttributes ? attributeCount : std::min(attributeCount, use.attributes.size());
    Attribute* first = nullptr;
    std::size_t count = 0;
    for (XMLSize_t i = 0; i < attributeCount && count < room; ++i) {
        const XMLAttr& attribute = *attributes.elementAt(i);
        const auto known = std::ranges::find(use.attributes, attribute.getQName(), &Name::dom);
        if (known == use.attributes.end() && !use.hasAllAttributes) {
            continue;
        }
        first = first != nullptr ? first : Allocate<Attribute>(room);
        const std::string_view name =
            known != use.attributes.end() ? known->utf8 : Keep(attribute.getQName());
        std::construct_at(first + count++, Attribute{name, KeepAttribute(attribute.getValue())});
    }
    return {first, count};
}

std::string_view ElementBuilder::KeepAttribute(const XMLCh* value) {
    const std::size_t length = XMLString::stringLen(value);
    const std::size_t kept = CutLength(value, length, kMaxText);
    isAttributeCut_ = isAttributeCut_ || kept < length;
    return Keep({value, kept});
}

std::string_view ElementBuilder::Keep(std::basic_string_view<XMLCh> text) {
    utf8_.clear();
    AppendTranscoded(text, utf8_);
    char* copy = Allocate<char>(utf8_.size());
    std::ranges::copy(utf8_, copy);
    return {copy, utf8_.size()};
}

/// Memory for objects that are never destroyed; only the memory is released.
template <class T>
T* ElementBuilder::Allocate(std::size_t count) {
    return static_cast<T*>(memory_.allocate(count * sizeof(T), alignof(T)));
}

}  // namespace tarvex
