#include "catalog/parameter_assignment.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "catalog/op_type_selection.h"
#include "catalog/unknown_type.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {

namespace {

/// Positions of parameters in an operation lie below this.
constexpr std::int32_t kParamPosEnd = 256;

/// The position that an operation element gives; one that gives none means 0.
struct GivenPos {
    std::string text;
    std::int32_t value = 0;
    bool isNumber = true;

    explicit GivenPos(const Element& operationElement)
        : isNumber(!GetChildElementText(operationElement, "ParamPos", text) || ParseInteger(text, value)) {}
    bool IsGood() const { return isNumber && value >= 0 && value < kParamPosEnd; }
    std::optional<unsigned> Known() const {
        return IsGood() ? std::optional(static_cast<unsigned>(value)) : std::nullopt;
    }
};

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
    bool isAnyTwice = false;

    Match& Of(const OpTypeSelection& selection) {
        return (selection.kind == ClassKind::Property ? property : method)[selection.opType];
    }
    /// The element that gives the place in an operation, and whether it is that of a property.
    std::pair<const Element*, bool> For(unsigned opType) const {
        const Element* element = property[opType].OnlyOne();
        return element != nullptr ? std::pair(element, true) : std::pair(method[opType].OnlyOne(), false);
    }
};

/// Calls `visit(selection, element)` for the operation elements, which stand below the OPType element at any
/// depth: most catalogs wrap them into a command and a report element. The way goes over all of them, and
/// functions may stand in the operations of each other: it takes steps.
template <class Visit>
void VisitOperationElements(const Element& opTypeElement, RunAllowance& run, Visit visit) {
    std::size_t count = 0;
    for (const Element* element = NextDescendant(opTypeElement, opTypeElement); element != nullptr;
         element = NextDescendant(opTypeElement, *element)) {
        ++count;
        if (const OpTypeSelection* selection = FindOpTypeSelection(element->name)) {
            visit(*selection, *element);
        }
    }
    constexpr std::size_t kStepsPerElement = 2;  // they lie all over the memory
    run.TakeSteps(count * kStepsPerElement);
}

OperationElements FindOperationElements(const Element& opTypeElement, RunAllowance& run) {
    OperationElements found;
    VisitOperationElements(opTypeElement, run, [&](const OpTypeSelection& selection, const Element& element) {
        Match& match = found.Of(selection);
        match.Add(element);
        found.isAnyTwice |= match.count > 1;
    });
    return found;
}

const Element* FindFirst(const Element& parent, std::span<const char* const> names) {
    for (const char* name : names) {
        if (const Element* found = FindChildElement(&parent, name)) {
            return found;
        }
    }
    return nullptr;
}

/// `withNewer`: in catalogs of any version.
const Element* FindOpTypeElement(const Element& paramElement, bool withNewer) {
    const Element* found = FindFirst(paramElement, kOpTypeElements);
    return found == nullptr && withNewer ? FindFirst(paramElement, kNewerOpTypeElements) : found;
}

/// The class that comes first in the table among those that stand below "Property" or "Method".
const FunctionClassRow* FindClass(const Element& kind, std::span<const FunctionClassRow> rows) {
    const auto found = std::ranges::find_if(
        rows, [&](const FunctionClassRow& row) { return FindChildElement(&kind, row.element) != nullptr; });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace

std::optional<unsigned> PositionInCatalog(const Element& paramElement, unsigned opType) {
    RunAllowance run;
    const Element* opTypeElement = FindOpTypeElement(paramElement, true);
    const Element* element =
        opTypeElement == nullptr ? nullptr : FindOperationElements(*opTypeElement, run).For(opType).first;
    return element == nullptr ? std::nullopt : GivenPos(*element).Known();
}

bool ParameterAssignment::ImportFunctionClass(const Element& functionClass) {
    const Element* kind = FindChildElement(&functionClass, "Property");
    if (kind != nullptr) {
        function_.SetClass(ClassKind::Property);
    } else if ((kind = FindChildElement(&functionClass, "Method")) != nullptr) {
        function_.SetClass(ClassKind::Method);
    } else {
        return function_.Raise<kNeitherPropertyNorMethod>(context_.At(functionClass), "Property", "Method");
    }
    if (const FunctionClassRow* row = FindClass(*kind, kFunctionClasses)) {
        ImportClassElement(*FindChildElement(kind, row->element), row->parameterElement);
    } else if (const FunctionClassRow* newer = FindClass(*kind, kNewerFunctionClasses)) {
        const Element& classElement = *FindChildElement(kind, newer->element);
        if (!context_.newer.Meet()) {
            LoseClassElement(classElement, newer->parameterElement);
            return function_.Raise<kFunctionClassUnknown>(context_.At(classElement));
        }
        ImportClassElement(classElement, newer->parameterElement);
    } else {
        function_.NoteLoss(kEveryOperation, {HoleCause::Lost, std::nullopt, kFunctionClassUnknown.number},
                           context_);
        return function_.Raise<kFunctionClassUnknown>(context_.AtFirstChild(*kind));
    }
    LoseEverywhere();
    return true;
}

void ParameterAssignment::ImportClassElement(const Element& classElement, const char* parameterElement) {
    for (const Element* param = FindChildElement(&classElement, parameterElement); param != nullptr;
         param = FindNextSiblingElement(*param, parameterElement)) {
        Assign(*param);
    }
    for (const Element* param = FindChildElement(&classElement, "ERParam"); param != nullptr;
         param = FindNextSiblingElement(*param, "ERParam")) {
        AssignErrorFunction(*param);
    }
}

/// Notes what a function loses whose class is not to be read.
void ParameterAssignment::LoseClassElement(const Element& classElement, const char* parameterElement) {
    for (const Element* param = FindChildElement(&classElement, parameterElement); param != nullptr;
         param = FindNextSiblingElement(*param, parameterElement)) {
        Lose(*param, {HoleCause::Lost, std::nullopt, kFunctionClassUnknown.number, true});
    }
    function_.NoteLoss(kEveryOperation, {HoleCause::Lost, std::nullopt, kFunctionClassUnknown.number, true},
                       context_);
}

bool ParameterAssignment::ImportErrorFunction(const Element& errorParam) {
    const bool isGood = Assign(errorParam);
    if (lostEverywhere_) {
        function_.NoteLoss(kEveryOperation, *lostEverywhere_, context_);
    }
    return isGood;
}

bool ParameterAssignment::Assign(const Element& paramElement) {
    const std::string tag(paramElement.name);
    const std::size_t refused = context_.newer.Refused();
    const std::unique_ptr<ZMTParam> param = context_.paramFactory.Create(paramElement, context_.newer);
    if (!param) {
        Lose(paramElement,
             {HoleCause::Lost, std::nullopt, kParamTypeUnknown.number, context_.newer.Refused() > refused});
        return function_.Raise<kParamTypeUnknown>(context_.At(FindUnknownType(paramElement)), tag);
    }
    param->SetParent(&function_);
    if (!param->Import(paramElement, context_)) {
        Lose(paramElement,
             {HoleCause::Lost, std::nullopt, kParamFailed.number, context_.newer.Refused() > refused});
        return function_.Raise<kParamFailed>(context_.At(paramElement), tag);
    }
    const Element* opTypeElement = FindOpTypeElement(paramElement, context_.newer.AreRead());
    if (opTypeElement == nullptr) {
        Lose(paramElement, {HoleCause::Lost, std::nullopt, kParamWithoutOpType.number,
                            FindOpTypeElement(paramElement, true) != nullptr});
        return function_.Raise<kParamWithoutOpType>(context_.At(paramElement));
    }
    OperationElements elements = FindOperationElements(*opTypeElement, context_.run);
    if (elements.isAnyTwice) {
        VisitOperationElements(*opTypeElement, context_.run,
                               [&](const OpTypeSelection& selection, const Element& element) {
                                   if (elements.Of(selection).count > 1) {
                                       LoseAt(selection.opType, element, {HoleCause::NamedTwice});
                                   }
                               });
    }
    bool anyMatch = false;
    bool anyPlaced = false;
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const auto [element, isProperty] = elements.For(opType);
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
        return function_.Raise<kParamNotAssigned>(context_.At(paramElement), param->GetName());
    }
    return true;
}

/// Notes that the operations which the element names have lost its parameter, at the positions that it gives.
/// Where it has no element that could name any, all operations may have lost it.
void ParameterAssignment::Lose(const Element& paramElement, Hole hole) {
    const Element* opTypeElement = FindOpTypeElement(paramElement, true);
    if (opTypeElement == nullptr || hole.message == kParamWithoutOpType.number) {
        lostEverywhere_ = hole;
        return;
    }
    VisitOperationElements(*opTypeElement, context_.run,
                           [&](const OpTypeSelection& selection, const Element& element) {
                               LoseAt(selection.opType, element, hole);
                           });
}

void ParameterAssignment::LoseAt(unsigned opType, const Element& operationElement, Hole hole) {
    hole.position = GivenPos(operationElement).Known();
    function_.NoteLoss(opType, hole, context_);
}

/// Of what all operations may have lost nobody knows the place, nor whether it had more operations.
void ParameterAssignment::LoseEverywhere() {
    if (!lostEverywhere_) {
        return;
    }
    function_.NoteLoss(kEveryOperation, *lostEverywhere_, context_);
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        if (function_.GetAt(opType) != nullptr || function_.LostParams().FirstOf(opType) != nullptr) {
            function_.NoteLoss(opType, *lostEverywhere_, context_);
        }
    }
}

bool ParameterAssignment::PlaceAsTold(unsigned opType, const Element& operationElement,
                                      const ZMTParam& param) {
    const GivenPos pos(operationElement);
    if (const std::optional<unsigned> known = pos.Known()) {
        return Place(opType, *known, param, context_.AtChild(operationElement, "ParamPos"));
    }
    const FaultSite site = context_.AtChild(operationElement, "ParamPos");
    const Message& message = pos.isNumber ? kParamPosOutOfRange : kParamPosUnreadable;
    function_.NoteLoss(opType, {HoleCause::Lost, std::nullopt, message.number}, context_);
    return pos.isNumber ? function_.Raise<kParamPosOutOfRange>(site, pos.value)
                        : function_.Raise<kParamPosUnreadable>(site, pos.text);
}

/// Stores a clone of the parameter in an operation, unless the position is taken.
bool ParameterAssignment::Place(unsigned opType, unsigned pos, const ZMTParam& param, const FaultSite& site) {
    constexpr std::size_t kSteps = 4;
    context_.run.TakeSteps(kSteps);
    const ZMTOperation* existing = function_.GetAt(opType);
    if (existing != nullptr && existing->GetAt(pos) != nullptr) {
        function_.NoteLoss(opType, {HoleCause::Lost, pos, kParamPosOccupied.number}, context_);
        return function_.Raise<kParamPosOccupied>(site, pos, param.GetName());
    }
    const std::size_t slots = existing == nullptr ? 0 : existing->Size();
    const std::size_t slotBytes = pos < slots ? 0 : (pos - slots + 1) * sizeof(void*);
    std::unique_ptr<ZMTNode> copy = context_.copies.TakeFor(param, slotBytes) ? param.Clone() : nullptr;
    if (!copy) {
        function_.NoteLoss(opType, {HoleCause::Lost, pos, kParamNotCloned.number}, context_);
        return function_.Raise<kParamNotCloned>(context_.At(param.GetElement()));
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
        if (const ZMTNode* lost = context_.functions.FindLost(name)) {
            MergeLosses(static_cast<const ZMTFunction&>(*lost));
        }
        function_.Raise<kErrorFunctionUnknown>(context_.At(errorParam), name);
    } else if (!node->IsType(kFunction) || !Merge(static_cast<const ZMTFunction&>(*node), errorParam)) {
        function_.Raise<kErrorFunctionNotMerged>(context_.At(errorParam), name);
    }
}

/// Clones every parameter of an error function into the operation of the same OPType, at the same position.
bool ParameterAssignment::Merge(const ZMTFunction& errorFunction, const Element& errorParam) {
    bool anyPlaced = false;
    MergeLosses(errorFunction);
    for (const ZMTOperation& operation : errorFunction.Items()) {
        for (const ZMTParam& param : operation.Items()) {
            anyPlaced |= Place(operation.OpType(), param.ParamPos(), param, context_.At(errorParam));
        }
    }
    return anyPlaced;
}

void ParameterAssignment::MergeLosses(const ZMTFunction& errorFunction) {
    constexpr std::size_t kStepsPerLoss = 8;
    context_.run.TakeSteps(errorFunction.LostParams().All().size() * kStepsPerLoss);
    for (const auto& [place, hole] : errorFunction.LostParams().All()) {
        if (place.first == kEveryOperation) {
            lostEverywhere_ = hole;
        } else {
            function_.NoteLoss(place.first, hole, context_);
        }
    }
}

}  // namespace tarvex
