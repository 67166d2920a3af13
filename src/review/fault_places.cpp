#include "review/fault_places.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "import/text/names.h"

namespace tarvex::review {
namespace {

/// A part of a path that is between slashes, and what is behind it, if it goes on.
struct Step {
    std::string_view name;
    std::optional<std::string_view> rest;
};

Step FirstStep(std::string_view path) {
    const std::size_t slash = path.find('/');
    const bool isLast = slash == std::string_view::npos;
    return {path.substr(0, slash), isLast ? std::nullopt : std::optional(path.substr(slash + 1))};
}

bool IsNamed(const Element& parameter, std::string_view name) {
    const Element* written = FindChildElement(&parameter, "ParamName");
    return written != nullptr && SanitizeName(written->text) == name;
}

}  // namespace

FaultPlaces::FaultPlaces(const FunctionView& view)
    : view_(view), path_(view.target.function->GetPath().size()) {
    for (std::size_t place = 0; place < view.parameters.size(); ++place) {
        if (const Element* element = view.parameters[place]->GetElement()) {
            Add(*element, place);
        }
    }
    AddLost();
    std::ranges::stable_sort(written_, {}, &Written::begin);
}

void FaultPlaces::Add(const Element& element, std::optional<std::size_t> parameter) {
    written_.push_back({{element.line, element.column}, &element, parameter});
}

/// Those that the function's class has and no operation.
void FaultPlaces::AddLost() {
    const Element* functionClass = FindChildElement(view_.target.function->GetElement(), "FunctionClass");
    std::vector<const Element*> known;
    for (const Written& written : written_) {
        known.push_back(written.element);
    }
    std::ranges::sort(known, std::less<>());
    for (const Element* kind = FirstChildElement(functionClass); kind != nullptr;
         kind = NextSiblingElement(*kind)) {
        for (const Element* list = FirstChildElement(kind); list != nullptr;
             list = NextSiblingElement(*list)) {
            for (const Element* element = FirstChildElement(list); element != nullptr;
                 element = NextSiblingElement(*element)) {
                if (!std::ranges::binary_search(known, element, std::less<>())) {
                    Add(*element, std::nullopt);
                }
            }
        }
    }
}

/// The parameters that the fault may stand in: one, unless they come from one entity, or look different in
/// several operations.
std::vector<const FaultPlaces::Written*> FaultPlaces::WrittenAt(const Fault& fault) const {
    const Position position{fault.line, fault.column};
    const auto end = std::ranges::upper_bound(written_, position, {}, &Written::begin);
    std::vector<const Written*> around;
    for (auto at = end; at != written_.begin() && std::prev(at)->begin == std::prev(end)->begin; --at) {
        around.push_back(&*std::prev(at));
    }
    std::ranges::reverse(around);
    return around;
}

/// The first of that name; `operation`: that is there in it, null for any.
std::optional<std::size_t> FaultPlaces::Named(const std::vector<const Written*>& around,
                                              std::string_view name, const OperationView* operation) const {
    for (const Written* written : around) {
        const std::optional<std::size_t> place = written->parameter;
        if (place && view_.parameters[*place]->GetName() == name &&
            (operation == nullptr || operation->positions[*place] != 0)) {
            return place;
        }
    }
    return std::nullopt;
}

const OperationView* FaultPlaces::OperationNamed(std::string_view name) const {
    const auto found = std::ranges::find(view_.operations, name, &OperationView::name);
    return found == view_.operations.end() ? nullptr : &*found;
}

FaultPlace FaultPlaces::PlaceOf(const Fault& fault) const {
    if (fault.path.size() <= path_) {
        return {};
    }
    const Step step = FirstStep(std::string_view(fault.path).substr(path_ + 1));
    const std::vector<const Written*> around = WrittenAt(fault);
    const OperationView* operation = OperationNamed(step.name);
    if (operation != nullptr && step.rest) {
        if (const auto parameter = Named(around, FirstStep(*step.rest).name, operation)) {
            return {parameter, std::nullopt};
        }
    }
    if (const auto parameter = Named(around, step.name, nullptr)) {
        return {parameter, std::nullopt};
    }
    const auto isLost = [&](const Written* written) {
        return !written->parameter && IsNamed(*written->element, step.name);
    };
    if (operation == nullptr || std::ranges::any_of(around, isLost)) {
        return {};
    }
    return {std::nullopt, operation->address.opType};
}

}  // namespace tarvex::review
