#include "catalog/parameter_assignment.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

/// Positions of parameters in an operation lie below this.
constexpr std::int32_t kParamPosEnd = 256;

/// The elements of one name below an OPType element. They count only if there is exactly one.
struct Match {
    const Element* first = nullptr;
    unsigned count = 0;

    void Add(const Element& element) {
        if (count++ == 0) {
            first = &element;
        }
    }
    const Element* OnlyOne() const { return count == 1 ? first : nullptr; }
};

/// The operation elements found below an OPType element, by OPType.
struct OperationElements {
    std::array<Match, std::size(kOpTypes)> property;
    std::array<Match, std::size(kOpTypes)> method;
};

/// An operation element, and where it counts.
struct Selection {
    std::string_view name;
    unsigned opType = 0;
    ClassKind kind = ClassKind::Unknown;
};

/// Every element that selects an operation, by name.
constexpr auto kSelections = [] {
    std::array<Selection, 2 * std::size(kOpTypes)> rows{};
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const OpTypeRow& row = kOpTypes[opType];
        rows[opType] = {row.propertyElement, opType, ClassKind::Property};
        rows[std::size(kOpTypes) + opType] = {row.methodElement, opType, ClassKind::Method};
    }
    std::ranges::sort(rows, {}, &Selection::name);
    return rows;
}();

/// The operation that the element of this name selects; null for any other.
const Selection* FindSelection(std::string_view name) {
    const auto* found = std::ranges::lower_bound(kSelections, name, {}, &Selection::name);
    return found != kSelections.end() && found->name == name && name != kNotYet ? found : nullptr;
}

/// Operation elements stand below the OPType element at any depth: most catalogs wrap them into a command and
/// a report element.
/// The way goes over all of them, and functions may stand in the operations of each other: it takes steps.
OperationElements FindOperationElements(const Element& opTypeElement, RunAllowance& run) {
    OperationElements found;
    std::size_t count = 0;
    for (const Element* element = NextDescendant(opTypeElement, opTypeElement); element != nullptr;
         element = NextDescendant(opTypeElement, *element)) {
        ++count;
        if (const Selection* selection = FindSelection(element->name)) {
            (selection->kind == ClassKind::Property ? found.property : found.method)[selection->opType].Add(
                *element);
        }
    }
    constexpr std::size_t kStepsPerElement = 2;  // they lie all over the memory
    run.TakeSteps(count * kStepsPerElement);
    return found;
}

const Element* FindOpTypeElement(const Element& paramElement) {
    for (const char* name : kOpTypeElements) {
        if (const Element* found = FindChildElement(&paramElement, name)) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace

bool ParameterAssignment::ImportFunctionClass(const Element& functionClass) {
    const Element* kind = FindChildElement(&functionClass, "Property");
    if (kind != nullptr) {
        function_.SetClass(ClassKind::Property);
    } else if ((kind = FindChildElement(&functionClass, "Method")) != nullptr) {
        function_.SetClass(ClassKind::Method);
    } else {
        return function_.Raise<kNeitherPropertyNorMethod>(context_.log, "Property", "Method");
    }
    for (const FunctionClassRow& row : kFunctionClasses) {
        const Element* classElement = FindChildElement(kind, row.element);
        if (classElement == nullptr) {
            continue;
        }
        for (const Element* param = FindChildElement(classElement, row.parameterElement); param != nullptr;
             param = FindNextSiblingElement(*param, row.parameterElement)) {
            Assign(*param);
        }
        for (const Element* param = FindChildElement(classElement, "ERParam"); param != nullptr;
             param = FindNextSiblingElement(*param, "ERParam")) {
            AssignErrorFunction(*param);
        }
        return true;
    }
    return function_.Raise<kFunctionClassUnknown>(context_.log);
}

bool ParameterAssignment::Assign(const Element& paramElement) {
    const std::string tag(paramElement.name);
    const std::unique_ptr<ZMTParam> param = context_.paramFactory.Create(paramElement);
    if (!param) {
        return function_.Raise<kParamTypeUnknown>(context_.log, tag);
    }
    param->SetParent(&function_);
    if (!param->Import(paramElement, context_)) {
        return function_.Raise<kParamFailed>(context_.log, tag);
    }
    const Element* opTypeElement = FindOpTypeElement(paramElement);
    if (opTypeElement == nullptr) {
        return function_.Raise<kParamWithoutOpType>(context_.log);
    }
    const OperationElements elements = FindOperationElements(*opTypeElement, context_.run);
    bool anyMatch = false;
    bool anyPlaced = false;
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const Element* element = elements.property[opType].OnlyOne();
        const bool isProperty = element != nullptr;
        if (!isProperty) {
            element = elements.method[opType].OnlyOne();
        }
        if (element == nullptr) {
            continue;
        }
        if (function_.Class() == ClassKind::ErrorFunction) {
            function_.SetClass(isProperty ? ClassKind::Property : ClassKind::Method);
        }
        anyMatch = true;
        anyPlaced |= PlaceAsTold(opType, *element, *param);
    }
    if (anyMatch && !anyPlaced) {
        return function_.Raise<kParamNotAssigned>(context_.log, param->GetName());
    }
    return true;
}

/// Places the parameter at the position that the operation element gives; one that gives none means 0.
bool ParameterAssignment::PlaceAsTold(unsigned opType, const Element& operationElement,
                                      const ZMTParam& param) {
    std::string text;
    std::int32_t pos = 0;
    if (GetChildElementText(operationElement, "ParamPos", text) && !ParseInteger(text, pos)) {
        return function_.Raise<kParamPosUnreadable>(context_.log, text);
    }
    if (pos < 0 || pos >= kParamPosEnd) {
        return function_.Raise<kParamPosOutOfRange>(context_.log, pos);
    }
    return Place(opType, static_cast<unsigned>(pos), param);
}

/// Stores a clone of the parameter in an operation, unless the position is taken.
bool ParameterAssignment::Place(unsigned opType, unsigned pos, const ZMTParam& param) {
    constexpr std::size_t kSteps = 4;
    context_.run.TakeSteps(kSteps);
    const ZMTOperation* existing = function_.GetAt(opType);
    if (existing != nullptr && existing->GetAt(pos) != nullptr) {
        return function_.Raise<kParamPosOccupied>(context_.log, pos, param.GetName());
    }
    const std::size_t slots = existing == nullptr ? 0 : existing->Size();
    const std::size_t slotBytes = pos < slots ? 0 : (pos - slots + 1) * sizeof(void*);
    std::unique_ptr<ZMTNode> copy = context_.copies.TakeFor(param, slotBytes) ? param.Clone() : nullptr;
    if (!copy) {
        return function_.Raise<kParamNotCloned>(context_.log);
    }
    std::unique_ptr<ZMTParam> clone(static_cast<ZMTParam*>(copy.release()));
    ZMTOperation& operation = function_.OperationAt(opType);
    clone->SetParamPos(pos);
    clone->SetParent(&operation);
    operation.SetAt(std::move(clone), pos);
    return true;
}

void ParameterAssignment::AssignErrorFunction(const Element& errorParam) {
    std::string id;
    if (!GetAttribute(errorParam, "ParamDefId", id)) {
        GetAttribute(errorParam, "ParamDefRef", id);
    }
    const std::string name = kErrorFunctionPrefix + id;
    const ZMTNode* node = context_.functions.Find(name);
    if (node == nullptr) {
        function_.Raise<kErrorFunctionUnknown>(context_.log, name);
    } else if (!node->IsType(kFunction) || !Merge(static_cast<const ZMTFunction&>(*node))) {
        function_.Raise<kErrorFunctionNotMerged>(context_.log, name);
    }
}

/// Clones every parameter of an error function into the operation of the same OPType, at the same position.
bool ParameterAssignment::Merge(const ZMTFunction& errorFunction) {
    bool anyPlaced = false;
    for (const ZMTOperation& operation : errorFunction.Items()) {
        for (const ZMTParam& param : operation.Items()) {
            anyPlaced |= Place(operation.OpType(), param.ParamPos(), param);
        }
    }
    return anyPlaced;
}

}  // namespace tarvex
