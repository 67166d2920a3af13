#include "import/xml/element.h"

#include <algorithm>

namespace tarvex {

bool HasTagName(const Element& element, std::string_view name) {
    return element.name == name;
}

const Element* FirstChildElement(const Element* parent) {
    return parent == nullptr ? nullptr : parent->firstChild;
}

const Element* NextSiblingElement(const Element& element) {
    return element.nextSibling;
}

const Element* FindChildElement(const Element* parent, std::string_view name) {
    const Element* child = FirstChildElement(parent);
    return child == nullptr || HasTagName(*child, name) ? child : FindNextSiblingElement(*child, name);
}

const Element* FindNextSiblingElement(const Element& start, std::string_view name) {
    const Element* next = NextSiblingElement(start);
    while (next != nullptr && !HasTagName(*next, name)) {
        next = NextSiblingElement(*next);
    }
    return next;
}

const Element* FindGrandchildElement(const Element* parent, std::string_view name) {
    for (const Element* child = FirstChildElement(parent); child != nullptr;
         child = NextSiblingElement(*child)) {
        if (const Element* found = FindChildElement(child, name)) {
            return found;
        }
    }
    return nullptr;
}

const Element* NextDescendant(const Element& root, const Element& current) {
    if (const Element* child = FirstChildElement(&current)) {
        return child;
    }
    for (const Element* element = &current; element != &root; element = element->parent) {
        if (const Element* next = NextSiblingElement(*element)) {
            return next;
        }
    }
    return nullptr;
}

bool GetElementText(const Element& element, std::string& out) {
    out = element.text;
    return !out.empty();
}

bool GetChildElementText(const Element& parent, std::string_view name, std::string& out) {
    out.clear();
    const Element* child = FindChildElement(&parent, name);
    return child != nullptr && GetElementText(*child, out);
}

bool GetAttribute(const Element& element, std::string_view name, std::string& out) {
    out.clear();
    const auto found = std::ranges::find(element.attributes, name, &Attribute::name);
    if (found == element.attributes.end()) {
        return false;
    }
    out = found->value;
    return true;
}

bool GetChildAttribute(const Element& parent, std::string_view childName, std::string_view attributeName,
                       std::string& out) {
    out.clear();
    const Element* child = FindChildElement(&parent, childName);
    return child != nullptr && GetAttribute(*child, attributeName, out);
}

}  // namespace tarvex
