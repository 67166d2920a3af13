#include "vorn/subset.h"

#include "vorn/assembly.h"

namespace vorn {

std::unique_ptr<kestrel::Database> SubsetOf(const kestrel::Database& database,
                                            const std::vector<const kestrel::Message*>& messages) {
    Assembly subset;
    subset.SetName(database.Name());
    for (const kestrel::AttrDef& definition : database.AttrDefs()) {
        subset.Add(definition);
    }
    subset.SetAttributes(database.Attributes());
    for (const kestrel::Node& node : database.Nodes()) {
        subset.Add(node);
    }
    for (const kestrel::Message* message : messages) {
        subset.Add(*message, SenderOf(*message));
    }
    return subset.Take();
}

}  // namespace vorn
