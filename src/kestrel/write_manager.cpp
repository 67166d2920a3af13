#include "kestrel/write_manager.h"

#include <cmath>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "kestrel/database.h"
#include "kestrel/writer.h"

using kestrel::Database;
using kestrel::Message;
using kestrel::Node;

struct KestrelManager::Impl {
    /// Every key given out, in the order of creation. They outlive their databases, so that a caller may ask
    /// for a database that is already closed.
    std::deque<std::string> keys;
    /// The open databases by key; the texts are those in `keys`.
    std::unordered_map<std::string_view, std::unique_ptr<Database>> databases;
    /// Records that were created for no database.
    Database holdingArea{""};
    /// How many messages were ever created, in whichever database.
    std::uint32_t messagesCreated = 0;

    /// The open database with this key, or null. The key may be null.
    Database* Find(const char* key) const {
        if (key == nullptr) {
            return nullptr;
        }
        const auto found = databases.find(key);
        return found == databases.end() ? nullptr : found->second.get();
    }

    /// The open database with this key, or else the holding area.
    Database& FindOrHold(const char* key) {
        Database* database = Find(key);
        return database != nullptr ? *database : holdingArea;
    }
};

KestrelManager::KestrelManager() : impl_(std::make_unique<Impl>()) {}

KestrelManager::~KestrelManager() = default;

KestrelError KestrelManager::CloseDatabase(const char* database, bool) {
    if (impl_->Find(database) == nullptr) {
        return kKestrelUnknownDatabase;
    }
    impl_->databases.erase(database);
    return kKestrelOk;
}

KestrelWriteManager::KestrelWriteManager(void*) {}

KestrelError KestrelWriteManager::CreateDatabase(const char* name, const char** database, const char*) {
    if (name == nullptr || database == nullptr) {
        return kKestrelBadArgument;
    }
    // The number makes keys of databases with the same name differ.
    const std::string& key = impl_->keys.emplace_back(std::to_string(impl_->keys.size() + 1) + ":" + name);
    impl_->databases.emplace(key, std::make_unique<Database>(name));
    *database = key.c_str();
    return kKestrelOk;
}

attr_def* KestrelWriteManager::CreateAttrDefinition(const char* database, unsigned int) {
    Database* owner = impl_->Find(database);
    return owner != nullptr ? &owner->CreateAttrDef() : nullptr;
}

symblk* KestrelWriteManager::CreateNode(const char* database, unsigned int) {
    return &impl_->FindOrHold(database).CreateNode();
}

msgblk* KestrelWriteManager::CreateMessage(const char* database, unsigned int) {
    return &impl_->FindOrHold(database).CreateMessage(impl_->messagesCreated++);
}

sigblk* KestrelWriteManager::CreateSignal(msgblk& message, unsigned int) {
    auto& owner = static_cast<Message&>(message);
    return &owner.database->CreateSignal(owner);
}

KestrelError KestrelWriteManager::SetScaling(msgblk& message, sigblk& signal, const sigscale& scaling) {
    const auto isFinite = [](const std::optional<double>& number) {
        return !number || std::isfinite(*number);
    };
    if (!std::isfinite(scaling.factor) || scaling.factor <= 0 || !isFinite(scaling.minimum) ||
        !isFinite(scaling.maximum) || !isFinite(scaling.step)) {
        return kKestrelBadArgument;
    }
    static_cast<Message&>(message).database->SetScaling(static_cast<kestrel::Signal&>(signal), scaling);
    return kKestrelOk;
}

void KestrelWriteManager::SetAttrValue(const char* database, const char* attribute,
                                       kestrel_attr_value_t value) {
    Database* owner = impl_->Find(database);
    if (owner == nullptr || attribute == nullptr) {
        return;
    }
    owner->SetAttribute(owner->Attributes(), AttrObject::Database, attribute, value);
}

void KestrelWriteManager::SetAttrValue(symblk& node, const char* attribute, kestrel_attr_value_t value) {
    if (attribute == nullptr) {
        return;
    }
    auto& owner = static_cast<Node&>(node);
    owner.database->SetAttribute(owner.attributes, AttrObject::Node, attribute, value);
}

void KestrelWriteManager::SetAttrValue(msgblk& message, const char* attribute, kestrel_attr_value_t value) {
    if (attribute == nullptr) {
        return;
    }
    auto& owner = static_cast<Message&>(message);
    owner.database->SetAttribute(owner.attributes, AttrObject::Message, attribute, value);
}

symblk* KestrelWriteManager::GetNode(const char* name, const char* database) {
    if (name == nullptr) {
        return nullptr;
    }
    return impl_->FindOrHold(database).FindNode(name);
}

msgblk* KestrelWriteManager::GetMessage(unsigned long identifier, const char* database) {
    if (identifier > std::numeric_limits<std::uint32_t>::max()) {
        return nullptr;
    }
    const auto wanted = static_cast<std::uint32_t>(identifier);
    if (database != nullptr) {
        return impl_->FindOrHold(database).FindMessage(wanted);
    }

    Message* first = impl_->holdingArea.FindMessage(wanted);
    for (const auto& [key, candidate] : impl_->databases) {
        Message* message = candidate->FindMessage(wanted);
        if (message != nullptr && (first == nullptr || message->serial < first->serial)) {
            first = message;
        }
    }
    return first;
}

sigblk* KestrelWriteManager::GetSignal(const msgblk& message, const char* name) {
    if (name == nullptr) {
        return nullptr;
    }
    return static_cast<const Message&>(message).FindSignal(name);
}

KestrelError KestrelWriteManager::WriteDatabase(const char* database, const char* path) {
    if (path == nullptr) {
        return kKestrelBadArgument;
    }
    const Database* source = impl_->Find(database);
    if (source == nullptr) {
        return kKestrelUnknownDatabase;
    }
    return kestrel::WriteDatabase(*source, path);
}
