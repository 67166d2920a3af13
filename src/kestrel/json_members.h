/// JSON objects that have to have certain members.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include <nlohmann/json.hpp>

#include "kestrel/database_builder.h"

namespace kestrel {

using Json = nlohmann::ordered_json;

/// The members of one JSON object. Each has to be asked for, or it is unknown. Every function throws
/// `BadRecord` for a member that is missing or of another type.
class JsonMembers {
  public:
    /// `what` names the object in errors; both outlive this.
    JsonMembers(const Json& object, const char* what);

    /// The member, or null.
    const Json* Find(const char* key);
    const Json& Get(const char* key);
    std::string Text(const char* key);
    bool Flag(const char* key);
    double Number(const char* key);
    template <class T>
    T Unsigned(const char* key) {
        return UnsignedIn<T>(Get(key), key);
    }
    /// The same of a value inside the member.
    template <class T>
    T UnsignedIn(const Json& value, const char* key) const {
        if (!value.is_number_unsigned() || value.get<std::uint64_t>() > std::numeric_limits<T>::max()) {
            throw Wrong(key, "whole number from 0 to " + std::to_string(std::numeric_limits<T>::max()));
        }
        return value.get<T>();
    }
    /// What to throw for a member of another type.
    BadRecord Wrong(const char* key, const std::string& wanted) const;
    /// To be called last.
    void NoMore() const;

  private:
    const Json& object_;
    const char* what_;
    std::size_t asked_ = 0;
};

}  // namespace kestrel
