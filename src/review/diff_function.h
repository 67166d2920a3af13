/// The differences between two versions of a function, as they are found.

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "catalog/function.h"
#include "kestrel/keyed_hash.h"
#include "review/diff_change.h"
#include "review/diff_options.h"

namespace tarvex::review {

/// The elements that a change is about, of each catalog; null where there is none. Changes that several
/// functions have for the same reason are about the same elements.
struct Origin {
    const Element* before = nullptr;
    const Element* after = nullptr;
};

/// A change of a function, still without block and function.
struct FunctionChange {
    Change change;
    Origin origin;
    std::uint16_t operations = 0;  ///< A bit for each OPType.
    /// What it says, and how many changes of the same operation say the same in front of it.
    std::string content = {};
};

/// Takes the changes operation by operation. A parameter stands in several operations as a rule, and what
/// changes in all of them is one change.
class FunctionChanges {
  public:
    explicit FunctionChanges(const DiffOptions& options) : options_(options) {}

    bool AreDescriptionsCompared() const { return options_.areDescriptionsCompared; }

    /// What follows is about parameters of that operation.
    void BeginOperation(unsigned opType);
    /// Takes a change of a parameter, or one of what parameters of the operation make of it.
    void AddOfParameter(Change change, const Origin& origin);

    /// The parameters of the operation belong together, though their names may differ.
    void Pair(const ZMTParam& before, const ZMTParam& after) { partners_[&before] = &after; }
    /// So it was told, or they have the same name.
    bool BelongTogether(const ZMTParam& before, const ZMTParam& after) const;

    // What was taken since the operation has begun, wanted or not.
    bool HasChanged() const { return hasChanged_; }
    bool HaveBytesChanged() const { return haveBytesChanged_; }
    /// A change says that by this message something could not be read; false for 0.
    bool IsLossTold(unsigned message) const { return lossesTold_.contains(message); }

    /// Takes a change of the function or of an operation.
    void Add(Change change, const Origin& origin);

    /// All changes so far; none are left.
    std::vector<FunctionChange> Take();

  private:
    bool IsWanted(const Change& change) const;

    DiffOptions options_;
    std::uint16_t operation_ = 0;
    bool hasChanged_ = false;
    bool haveBytesChanged_ = false;
    std::set<unsigned> lossesTold_;
    std::map<const ZMTParam*, const ZMTParam*> partners_;  // of those whose lists differ
    std::vector<FunctionChange> all_;
    kestrel::KeyedMap<std::string, std::size_t> places_;  // of changes in the list, by what they say
    kestrel::KeyedMap<std::string, std::size_t> counts_;  // of equal changes of the operation
};

}  // namespace tarvex::review
