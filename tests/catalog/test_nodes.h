#pragma once

#include <memory>
#include <new>
#include <string>

#include "catalog/param.h"
#include "catalog/param_factory.h"
#include "import/xml/element.h"

namespace tarvex::test {

/// A node of no particular kind. It counts its living objects, so that tests see what is deleted.
class PlainNode : public ZMTNode {
  public:
    explicit PlainNode(const std::string& name = "", ZMTNode* parent = nullptr) : ZMTNode(name) {
        ZMTNode::SetParent(parent);
        ++alive;
    }
    ~PlainNode() override { --alive; }

    NodeType GetType() const override { return kNodeBase; }
    bool Import(const Element& /*element*/, ImportContext& /*context*/) override { return true; }

    static inline int alive = 0;
};

/// What becomes of a PlannedParam.
struct ParamPlan {
    int generations = 100;  ///< Clones of clones that succeed; 0 fails at once.
    bool canResolve = true;
};

/// A parameter whose steps fail or succeed as the test wants; it imports nothing but its name.
class PlannedParam : public ZMTParam {
  public:
    explicit PlannedParam(ParamPlan plan) : plan_(plan) {}

    bool Import(const Element& element, ImportContext& context) override {
        return ImportParamName(element, context);
    }
    bool Resolve(ImportContext& context) override { return ZMTParam::Resolve(context) && plan_.canResolve; }
    std::unique_ptr<ZMTNode> Clone() const override {
        if (plan_.generations == 0) {
            return nullptr;
        }
        auto copy = std::make_unique<PlannedParam>(ParamPlan{plan_.generations - 1, plan_.canResolve});
        return copy->CopyFrom(this) ? std::move(copy) : nullptr;
    }

  private:
    ParamPlan plan_;
};

/// Makes parameters whose element says what becomes of them, in an attribute "Fails": "clone" for one that
/// cannot be cloned, "copy" for one whose clones cannot, "resolve" and "memory" for one that fails there.
class PlannedFactory : public ParamFactory {
  public:
    std::unique_ptr<ZMTParam> Create(const Element& element, NewerForms& /*newer*/) const override {
        std::string fails;
        GetAttribute(element, "Fails", fails);
        if (fails == "memory") {
            throw std::bad_alloc();
        }
        ParamPlan plan;
        plan.generations = fails == "clone" ? 0 : fails == "copy" ? 1 : plan.generations;
        plan.canResolve = fails != "resolve";
        return std::make_unique<PlannedParam>(plan);
    }
};

}  // namespace tarvex::test
