/// What the nodes share while a catalog is imported: the log, the definitions, the functions that
/// others refer to, and how much may be copied.

#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "catalog/newer_forms.h"
#include "catalog/node.h"
#include "catalog/param_factory.h"
#include "import/text/allowance.h"
#include "import/text/names.h"
#include "import/text/run_allowance.h"
#include "import/xml/element.h"

namespace tarvex {

class ZMTCatalog;
class ZMTDefinition;

/// The functions that others refer to, by the text of "FktDefId" or by the name of an error function. Keys
/// are compared exactly; one that is defined twice means the later function.
class FunctionRegistry {
  public:
    /// The node stays where it is and has to outlive the import.
    void Register(const std::string& key, ZMTNode& node) { nodes_[key] = &node; }
    /// Takes the node over: error functions belong to no function block.
    void RegisterOwned(const std::string& key, std::unique_ptr<ZMTNode> node) {
        nodes_[key] = node.get();
        owned_.push_back(std::move(node));
    }
    /// Takes over what is left of an error function that could not be imported: what it has lost.
    void RegisterLost(const std::string& key, std::unique_ptr<ZMTNode> node) {
        lost_[key] = node.get();
        owned_.push_back(std::move(node));
    }
    const ZMTNode* FindLost(const std::string& key) const {
        const auto found = lost_.find(key);
        return found == lost_.end() ? nullptr : found->second;
    }
    /// Null for an unknown key.
    ZMTNode* Find(const std::string& key) const {
        const auto found = nodes_.find(key);
        return found == nodes_.end() ? nullptr : found->second;
    }

  private:
    std::unordered_map<std::string, ZMTNode*, NameHash> nodes_;
    std::unordered_map<std::string, const ZMTNode*, NameHash> lost_;
    std::vector<std::unique_ptr<ZMTNode>> owned_;
};

/// What copies of nodes may take. Parameters are copied into up to 16 operations and functions into 256
/// blocks, so that a small catalog could ask for any amount of memory.
class CopyBudget {
  public:
    /// How large copies may be, in bytes, for a catalog file of so many.
    static constexpr Bound kBytes{std::size_t{256} << 20, 16};

    /// Some of the memory of a run stays for its database.
    CopyBudget(std::size_t catalogBytes, RunAllowance& run)
        : CopyBudget(Allowance(std::min(kBytes.For(catalogBytes), run.Left().memory / 4 * 3)), run) {}
    /// The run outlives the budget.
    CopyBudget(const Allowance& left, RunAllowance& run) : left_(left), run_(&run) {}

    /// False when there is no room for a copy of the node and so many bytes more, and from then on: a size
    /// takes as long to find out as a copy does.
    bool TakeFor(const ZMTNode& original, std::size_t more = 0) {
        if (left_.IsSpent()) {
            return false;
        }
        constexpr std::size_t kCopiedPerStep = 8;
        const std::size_t size = original.CopySize() + more;
        if (!left_.Take(size) || !run_->Take({size / kCopiedPerStep, size, 0})) {
            left_.End();
        }
        return !left_.IsSpent();
    }

  private:
    Allowance left_;
    RunAllowance* run_;
};

inline ElementPlace PlaceOf(const Element* element) {
    return element == nullptr ? ElementPlace() : ElementPlace{element->name, element->line, element->column};
}

/// What the import of one catalog hands from node to node. Lives as long as that import.
struct ImportContext {
    ZMostFCatLog& log;
    const ParamFactory& paramFactory;
    RunAllowance& run;              ///< What is left of the run; throws AllowanceSpent out of the import.
    ZMTCatalog* catalog = nullptr;  ///< The catalog being imported; not owned.
    const ZMTDefinition* definitions = nullptr;  ///< Its definitions once they are imported; owned by it.
    FunctionRegistry functions = {};
    CopyBudget copies = CopyBudget(0, run);  ///< Copies that it does not allow count as failed.
    NewerForms newer = NewerForms();

    /// What a message of the import is about: an element; null for none.
    FaultSite At(const Element* element) const { return {log, PlaceOf(element)}; }
    FaultSite At(const Element& element) const { return At(&element); }
    FaultSite AtFirstChild(const Element& element) const {
        const Element* child = FirstChildElement(&element);
        return At(child != nullptr ? child : &element);
    }
    /// The first child of that name, or the element itself, which lacks it.
    FaultSite AtChild(const Element& element, std::string_view name) const {
        const Element* child = FindChildElement(&element, name);
        return At(child != nullptr ? child : &element);
    }
};

}  // namespace tarvex
