#include "import/dom_access.h"

#include <algorithm>
#include <optional>

namespace tarvex {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

/// Takes one character off the front of a UTF-8 text; a byte that starts none is a replacement character.
char32_t TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    char32_t code = lead;
    char32_t least = 0;
    if (lead >= 0xF0 && lead < 0xF8) {
        length = 4;
        code = lead & 0x07U;
        least = 0x10000;
    } else if (lead >= 0xE0 && lead < 0xF0) {
        length = 3;
        code = lead & 0x0FU;
        least = 0x800;
    } else if (lead >= 0xC0 && lead < 0xE0) {
        length = 2;
        code = lead & 0x1FU;
        least = 0x80;
    } else if (lead >= 0x80) {
        code = kReplacement;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned char next = i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
        if ((next & 0xC0U) != 0x80) {
            text.remove_prefix(1);
            return kReplacement;
        }
        code = (code << 6) | (next & 0x3FU);
    }
    const bool isCharacter = code >= least && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    text.remove_prefix(isCharacter ? length : 1);
    return isCharacter ? code : kReplacement;
}

}  // namespace

std::string Transcode(const XMLCh* text) {
    std::string result;
    if (text == nullptr) {
        return result;
    }
    for (; *text != 0; ++text) {
        const char32_t unit = *text;
        if (unit < 0xD800 || unit > 0xDFFF) {
            AppendUtf8(result, unit);
        } else if (unit < 0xDC00 && text[1] >= 0xDC00 && text[1] <= 0xDFFF) {
            AppendUtf8(result, 0x10000 + ((unit - 0xD800) << 10) + (text[1] - 0xDC00U));
            ++text;
        } else {
            AppendUtf8(result, kReplacement);
        }
    }
    return result;
}

std::basic_string<XMLCh> ToDomText(std::string_view text) {
    std::basic_string<XMLCh> result;
    while (!text.empty()) {
        const char32_t code = TakeCharacter(text);
        if (code < 0x10000) {
            result += static_cast<XMLCh>(code);
        } else {
            result += static_cast<XMLCh>(0xD800 + ((code - 0x10000) >> 10));
            result += static_cast<XMLCh>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return result;
}

bool DomTextEquals(const XMLCh* text, std::string_view ascii) {
    for (const char c : ascii) {
        if (*text++ != static_cast<XMLCh>(c)) {
            return false;
        }
    }
    return *text == 0;
}

bool IsWhiteSpace(std::basic_string_view<XMLCh> text) {
    return std::ranges::all_of(text, [](XMLCh c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

bool HasTagName(const DOMNode& node, std::string_view name) {
    return DomTextEquals(node.getNodeName(), name);
}

const DOMNode* FirstChildOfType(const DOMNode& node, DOMNode::NodeType type) {
    const DOMNode* child = node.getFirstChild();
    while (child != nullptr && child->getNodeType() != type) {
        child = child->getNextSibling();
    }
    return child;
}

const DOMElement* FirstChildElement(const DOMNode* parent) {
    if (parent == nullptr) {
        return nullptr;
    }
    return static_cast<const DOMElement*>(FirstChildOfType(*parent, DOMNode::ELEMENT_NODE));
}

const DOMElement* NextSiblingElement(const DOMElement& element) {
    const DOMNode* next = element.getNextSibling();
    while (next != nullptr && next->getNodeType() != DOMNode::ELEMENT_NODE) {
        next = next->getNextSibling();
    }
    return static_cast<const DOMElement*>(next);
}

const DOMElement* FindChildElement(const DOMNode* parent, std::string_view name) {
    const DOMElement* child = FirstChildElement(parent);
    return child == nullptr || HasTagName(*child, name) ? child : FindNextSiblingElement(*child, name);
}

const DOMElement* FindNextSiblingElement(const DOMElement& start, std::string_view name) {
    const DOMElement* next = NextSiblingElement(start);
    while (next != nullptr && !HasTagName(*next, name)) {
        next = NextSiblingElement(*next);
    }
    return next;
}

const DOMElement* FindGrandchildElement(const DOMNode* parent, std::string_view name) {
    for (const DOMElement* child = FirstChildElement(parent); child != nullptr;
         child = NextSiblingElement(*child)) {
        if (const DOMElement* found = FindChildElement(child, name)) {
            return found;
        }
    }
    return nullptr;
}

const DOMElement* NextDescendant(const DOMElement& root, const DOMElement& current) {
    if (const DOMElement* child = FirstChildElement(&current)) {
        return child;
    }
    const DOMElement* node = &current;
    while (node != &root) {
        if (const DOMElement* next = NextSiblingElement(*node)) {
            return next;
        }
        node = static_cast<const DOMElement*>(node->getParentNode());
    }
    return nullptr;
}

bool GetElementText(const DOMElement& element, std::string& out) {
    out.clear();
    std::optional<bool> hasChildElements;  // found out at the first text of white space
    for (const DOMNode* child = element.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        if (child->getNodeType() != DOMNode::TEXT_NODE) {
            continue;
        }
        if (IsWhiteSpace(child->getNodeValue())) {
            if (!hasChildElements) {
                hasChildElements = FirstChildElement(&element) != nullptr;
            }
            if (*hasChildElements) {
                continue;  // indentation
            }
        }
        out = Transcode(child->getNodeValue());
        return true;
    }
    return false;
}

bool GetChildElementText(const DOMElement& parent, std::string& out, std::string_view name) {
    out.clear();
    const DOMElement* child = FindChildElement(&parent, name);
    return child != nullptr && GetElementText(*child, out);
}

bool GetAttribute(const DOMElement& element, std::string_view name, std::string& out) {
    out.clear();
    const xercesc::DOMNamedNodeMap* attributes = element.getAttributes();
    const XMLSize_t count = attributes == nullptr ? 0 : attributes->getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        const DOMNode* attribute = attributes->item(i);
        if (DomTextEquals(attribute->getNodeName(), name)) {
            out = Transcode(attribute->getNodeValue());
            return true;
        }
    }
    return false;
}

bool GetChildAttribute(const DOMElement& parent, std::string& out, std::string_view childName,
                       std::string_view attributeName) {
    out.clear();
    const DOMElement* child = FindChildElement(&parent, childName);
    return child != nullptr && GetAttribute(*child, attributeName, out);
}

}  // namespace tarvex
