#include "kestrel/json_members.h"

namespace kestrel {

JsonMembers::JsonMembers(const Json& object, const char* what) : object_(object), what_(what) {
    if (!object.is_object()) {
        throw BadRecord(std::string("a ") + what + " is no object");
    }
}

const Json* JsonMembers::Find(const char* key) {
    const auto found = object_.find(key);
    if (found == object_.end()) {
        return nullptr;
    }
    ++asked_;
    return &*found;
}

const Json& JsonMembers::Get(const char* key) {
    const Json* member = Find(key);
    if (member == nullptr) {
        throw BadRecord(std::string("a ") + what_ + " has no \"" + key + "\"");
    }
    return *member;
}

std::string JsonMembers::Text(const char* key) {
    const Json& member = Get(key);
    if (!member.is_string()) {
        throw Wrong(key, "text");
    }
    return member.get<std::string>();
}

bool JsonMembers::Flag(const char* key) {
    const Json& member = Get(key);
    if (!member.is_boolean()) {
        throw Wrong(key, "true or false");
    }
    return member.get<bool>();
}

double JsonMembers::Number(const char* key) {
    const Json& member = Get(key);
    if (!member.is_number()) {
        throw Wrong(key, "number");
    }
    return member.get<double>();
}

BadRecord JsonMembers::Wrong(const char* key, const std::string& wanted) const {
    BadRecord error(std::string("\"") + key + "\" of a " + what_ + " is no " + wanted);
    return error;
}

void JsonMembers::NoMore() const {
    if (asked_ != object_.size()) {
        throw BadRecord(std::string("a ") + what_ + " has an unknown key");
    }
}

}  // namespace kestrel
