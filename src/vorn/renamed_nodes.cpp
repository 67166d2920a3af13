#include "vorn/renamed_nodes.h"

#include "kestrel/model_text.h"

namespace vorn {
namespace {

using kestrel::NameText;
using NamesByName = kestrel::KeyedMap<std::string, std::string>;

kestrel::KeyedSet<std::string> NodeNames(const kestrel::Database& database) {
    kestrel::KeyedSet<std::string> names;
    for (const kestrel::Node& node : database.Nodes()) {
        names.insert(NameText(node.name));
    }
    return names;
}

/// Notes one name beside another; the empty one as soon as there were two.
void Note(NamesByName& names, const std::string& name, const std::string& other) {
    const auto [entry, isNew] = names.try_emplace(name, other);
    if (!isNew && entry->second != other) {
        entry->second.clear();
    }
}

}  // namespace

RenamedNodes::RenamedNodes(const kestrel::Database& before, const kestrel::Database& after,
                           const Pairing<kestrel::Message>& messages) {
    const auto namesBefore = NodeNames(before);
    const auto namesAfter = NodeNames(after);
    NamesByName newNames;
    NamesByName oldNames;
    for (std::size_t place = 0; place < messages.After().size(); ++place) {
        const kestrel::Message* old = messages.PartnerOf(place);
        const symblk* node = messages.After()[place]->node;
        if (old == nullptr || old->node == nullptr || node == nullptr) {
            continue;
        }
        const std::string oldName = NameText(old->node->name);
        const std::string name = NameText(node->name);
        if (namesAfter.contains(oldName) || namesBefore.contains(name)) {
            continue;
        }
        Note(newNames, oldName, name);
        Note(oldNames, name, oldName);
    }
    for (const auto& [name, oldName] : oldNames) {
        if (!oldName.empty() && newNames[oldName] == name) {
            oldNames_.emplace(name, oldName);
        }
    }
}

std::optional<std::string> RenamedNodes::OldNameOf(const kestrel::Node& node) const {
    const auto found = oldNames_.find(NameText(node.name));
    return found == oldNames_.end() ? std::nullopt : std::optional(found->second);
}

bool RenamedNodes::AreSame(const symblk* before, const symblk* after) const {
    if (before == nullptr || after == nullptr) {
        return before == after;
    }
    const auto found = oldNames_.find(NameText(after->name));
    return found != oldNames_.end() && found->second == NameText(before->name);
}

}  // namespace vorn
