/// Differences between the parameters of messages.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "catalog/param.h"
#include "review/diff_function.h"
#include "review/own_texts.h"

namespace tarvex::review {

/// A parameter in the containers that it stands in, from the inside out.
struct Way {
    const Way* container = nullptr;  ///< Null for a parameter of the operation.
    const ZMTParam* param = nullptr;

    /// "Data.Title", "Data(PosY=0x01).Title"
    std::string Text() const;
};

/// A change of a parameter.
Change ParamChange(const Way& way, ChangeKind kind, Aspect aspect, Effect effect, std::string before = {},
                   std::string after = {});

/// Parameters that stand one behind the other in an operation, a record or a case.
using ParamList = std::vector<const ZMTParam*>;

/// What was lost of such a list, by the messages of the importer; 0 for nothing.
struct LostMembers {
    unsigned before = 0;
    unsigned after = 0;
};

/// The names in the catalogs, or those of the trees where they alone differ: by white space.
template <class Node>
Sides NamesThatDiffer(const Node& before, const Node& after) {
    std::string own = OwnName(before);
    std::string others = OwnName(after);
    return own == others ? Sides{before.GetName(), after.GetName()}
                         : Sides{std::move(own), std::move(others)};
}

/// Compares two versions of a list, and what stands in the parameters. `container`: null for operations.
void CompareLists(const ParamList& before, const ParamList& after, const Way* container,
                  const LostMembers& lost, FunctionChanges& changes);

/// Compares two parameters that belong together, whatever their names and places.
void CompareParams(const ZMTParam& before, const Way& after, FunctionChanges& changes);

}  // namespace tarvex::review
