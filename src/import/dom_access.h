#pragma once

#include <string>
#include <string_view>

#include <xercesc/dom/DOM.hpp>

namespace tarvex {

using xercesc::DOMElement;
using xercesc::DOMNode;

/// Reading of the DOM. Elements are returned as pointers into the document, null when there is none; names
/// are ASCII and compared exactly, without transcoding; texts are UTF-8, untrimmed. Nothing here raises a
/// message.

/// A DOM text in UTF-8, whatever the locale.
std::string Transcode(const XMLCh* text);

/// A UTF-8 text for the DOM; bytes that are no UTF-8 become U+FFFD.
std::basic_string<XMLCh> ToDomText(std::string_view text);

/// The DOM text equals an ASCII one.
bool DomTextEquals(const XMLCh* text, std::string_view ascii);

/// The DOM text consists of white space, or of nothing.
bool IsWhiteSpace(std::basic_string_view<XMLCh> text);

bool HasTagName(const DOMNode& node, std::string_view name);

/// The first direct child of a node type.
const DOMNode* FirstChildOfType(const DOMNode& node, DOMNode::NodeType type);

const DOMElement* FirstChildElement(const DOMNode* parent);
/// The next element among the siblings; texts, comments and the like are skipped.
const DOMElement* NextSiblingElement(const DOMElement& element);

/// The first direct child element of that tag; null also for a null parent.
const DOMElement* FindChildElement(const DOMNode* parent, std::string_view name);
/// The first element of that tag after `start` among its siblings.
const DOMElement* FindNextSiblingElement(const DOMElement& start, std::string_view name);
/// The first element of that tag among the children of the children, exactly two levels deep.
const DOMElement* FindGrandchildElement(const DOMNode* parent, std::string_view name);

/// The element after `current` in document order below `root`, `root` itself excluded; null at the end. Start
/// with `root` as `current`. Walks without recursion, so depth costs nothing.
const DOMElement* NextDescendant(const DOMElement& root, const DOMElement& current);

/// The element's first text; false, with an empty `out`, when it has none. White space beside child elements
/// is no text.
bool GetElementText(const DOMElement& element, std::string& out);
/// The text of the first direct child of that tag; false, with an empty `out`, when child or text is missing.
bool GetChildElementText(const DOMElement& parent, std::string& out, std::string_view name);
/// The attribute's value; false, with an empty `out`, when it is missing. A present one may be empty.
bool GetAttribute(const DOMElement& element, std::string_view name, std::string& out);
/// An attribute of the first direct child of that tag; false, with an empty `out`, when either is missing.
bool GetChildAttribute(const DOMElement& parent, std::string& out, std::string_view childName,
                       std::string_view attributeName);

}  // namespace tarvex
