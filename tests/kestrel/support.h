/// What the tests of the library share: a database to fill with few words and a directory to write it to.

#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "kestrel/kestrel.h"

/// A directory that is removed with everything in it.
class TemporaryDirectory {
  public:
    TemporaryDirectory() : path_(testing::TempDir() + "kestrel-test-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) {
            throw std::runtime_error("cannot create " + path_);
        }
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory(TemporaryDirectory&&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory&&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

    /// The names in the directory, sorted.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    const std::string& Path() const { return path_; }

  private:
    std::string path_;
};

inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

inline void MakeFile(const std::string& path, std::string_view text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// Copies a name into a record the way callers do: at most 32 bytes, without a terminator then.
inline void SetName(char (&field)[kNameSize], std::string_view name) {
    name.copy(static_cast<char*>(field), kNameSize);
}

/// A text that is about to belong to the library.
inline char* Give(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(kestrel_malloc(size), text, size));
}

inline kestrel_attr_value_t Number(double number) {
    return {.number = number};
}
inline kestrel_attr_value_t Text(const char* text) {
    return {.text = Give(text)};
}

/// A value description in front of `next`.
inline valdesc* Describe(std::uint32_t value, std::string_view text, valdesc* next = nullptr) {
    auto* entry = static_cast<valdesc*>(std::memset(kestrel_malloc(sizeof(valdesc)), 0, sizeof(valdesc)));
    entry->value = value;
    SetName(entry->text, text);
    entry->next = next;
    return entry;
}

/// A manager with one empty database called "cabin".
class DatabaseTest : public testing::Test {
  protected:
    DatabaseTest() { manager_.CreateDatabase("cabin", &key_, nullptr); }

    attr_def& Define(AttrObject object, std::string_view name, AttrType type) {
        attr_def& definition = *manager_.CreateAttrDefinition(key_, 0);
        definition.object_kind = object;
        SetName(definition.name, name);
        definition.value_type = type;
        return definition;
    }

    attr_def& DefineInteger(AttrObject object, std::string_view name, double minimum, double maximum,
                            double defaultNumber) {
        attr_def& definition = Define(object, name, AttrType::Integer);
        definition.minimum = minimum;
        definition.maximum = maximum;
        definition.default_number = defaultNumber;
        return definition;
    }

    attr_def& DefineString(AttrObject object, std::string_view name, const char* defaultText) {
        attr_def& definition = Define(object, name, AttrType::String);
        definition.default_text = Give(defaultText);
        return definition;
    }

    attr_def& DefineEnumeration(AttrObject object, std::string_view name, const char* values,
                                const char* defaultText) {
        attr_def& definition = Define(object, name, AttrType::Enumeration);
        definition.value_list = Give(values);
        definition.default_text = Give(defaultText);
        return definition;
    }

    symblk& AddNode(std::string_view name) {
        symblk& node = *manager_.CreateNode(key_, 0);
        SetName(node.name, name);
        return node;
    }

    msgblk& AddMessage(std::uint32_t identifier, std::string_view name) {
        msgblk& message = *manager_.CreateMessage(key_, 0);
        message.identifier = identifier;
        SetName(message.name, name);
        return message;
    }

    sigblk& AddSignal(msgblk& message, std::string_view name) {
        sigblk& signal = *manager_.CreateSignal(message, 0);
        SetName(signal.name, name);
        return signal;
    }

    /// The text of the database's file.
    std::string Written() {
        const std::string path = directory_ / "written.vorn";
        EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), 0);
        return ReadFile(path);
    }

    TemporaryDirectory directory_;
    KestrelWriteManager manager_{nullptr};
    const char* key_ = nullptr;
};
