/// Catalogs as they are read: elements with their attributes and texts. Nothing of the XML parser is seen
/// here.

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarvex {

struct Attribute {
    std::string_view name;
    std::string_view value;
};

/// An element of a document that was read. All texts are UTF-8 and untrimmed; they and the elements around
/// live as long as the document. The document itself is an element without a name, whose child is the root.
struct Element {
    std::string_view name;
    std::span<const Attribute> attributes;
    /// The element's first text; empty when it has none. A comment, a processing instruction or a CDATA
    /// section ends a text; white space beside child elements is indentation and no text.
    std::string_view text;
    const Element* parent = nullptr;
    const Element* firstChild = nullptr;
    const Element* nextSibling = nullptr;
    /// Where the start tag begins in its file, counted from 1; of an element that an entity holds, where the
    /// entity is used. 0 for the document.
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

// The functions return elements as pointers into the document, null when there is none. Names are compared
// exactly. Nothing here raises a message.

bool HasTagName(const Element& element, std::string_view name);

/// Null also for a null parent, as in all functions that take a pointer.
const Element* FirstChildElement(const Element* parent);
const Element* NextSiblingElement(const Element& element);

/// The first direct child of that tag.
const Element* FindChildElement(const Element* parent, std::string_view name);
/// The first element of that tag after `start` among its siblings.
const Element* FindNextSiblingElement(const Element& start, std::string_view name);
/// The first element of that tag among the children of the children, exactly two levels deep.
const Element* FindGrandchildElement(const Element* parent, std::string_view name);

/// The element after `current` in document order below `root`, `root` itself excluded; null at the end. Start
/// with `root` as `current`. Walks without recursion, so depth costs nothing.
const Element* NextDescendant(const Element& root, const Element& current);

/// The element's first text; false, with an empty `out`, when it has none.
bool GetElementText(const Element& element, std::string& out);
/// The text of the first direct child of that tag; false, with an empty `out`, when child or text is missing.
bool GetChildElementText(const Element& parent, std::string_view name, std::string& out);
/// The attribute's value; false, with an empty `out`, when it is missing. A present one may be empty.
bool GetAttribute(const Element& element, std::string_view name, std::string& out);
/// An attribute of the first direct child of that tag; false, with an empty `out`, when either is missing.
bool GetChildAttribute(const Element& parent, std::string_view childName, std::string_view attributeName,
                       std::string& out);

}  // namespace tarvex
