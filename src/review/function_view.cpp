#include "review/function_view.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
#include <utility>

#include "catalog/parameter_assignment.h"
#include "review/catalog_texts.h"
#include "review/layout_end.h"
#include "review/param_text.h"

namespace tarvex::review {
namespace {

/// Finds the parameters that operations share. Two that look the same are the same, unless they stand in one
/// operation.
class Parameters {
  public:
    explicit Parameters(std::vector<const ZMTParam*>& all) : all_(all) {}

    void Add(OperationView& view) {
        std::vector<unsigned>& positions = view.positions;
        unsigned position = 0;
        for (const ZMTParam& param : view.operation->Items()) {
            ++position;
            if (param.IsType(kParamVoid)) {
                continue;
            }
            const std::size_t place = PlaceOf(param, positions);
            positions.resize(std::max(positions.size(), place + 1));
            positions[place] = position;
            view.positionsInCatalog.resize(positions.size());
            if (param.GetElement() != nullptr) {
                view.positionsInCatalog[place] =
                    PositionInCatalog(*param.GetElement(), view.operation->OpType());
            }
        }
    }

  private:
    /// The places of parameters that look the same.
    using Places = std::vector<std::size_t>;

    /// Those of one name. While there is one alone, nobody needs to know what it looks like.
    struct Namesake {
        const ZMTParam* first;
        Places* places;
        bool isAlone = true;
    };

    /// Copies of a parameter that stands for itself look the same. What others have in them may be chosen by
    /// another parameter in each operation.
    static bool StandsForItself(const ZMTParam& param) {
        return param.GetElement() != nullptr &&
               (param.IsType(kParamNumber) || param.IsType(kParamEnum) || param.IsType(kParamBitField) ||
                param.IsType(kParamBool) || param.IsType(kParamString));
    }

    Places& PlacesOf(const ZMTParam& param) {
        if (!StandsForItself(param)) {
            return PlacesByLook(param);
        }
        Places*& places = byElement_[param.GetElement()];
        if (places == nullptr) {
            places = &PlacesByLook(param);
        }
        return *places;
    }

    Places& PlacesByLook(const ZMTParam& param) {
        const auto found = byName_.find(param.GetName());
        if (found == byName_.end()) {
            Places& places = lists_.emplace_back();
            byName_.emplace(param.GetName(), Namesake{&param, &places});
            return places;
        }
        Namesake& namesake = found->second;
        if (std::exchange(namesake.isAlone, false)) {
            byText_.emplace(ParamText(*namesake.first), namesake.places);
        }
        Places*& places = byText_[ParamText(param)];
        if (places == nullptr) {
            places = &lists_.emplace_back();
        }
        return *places;
    }

    std::size_t PlaceOf(const ZMTParam& param, const std::vector<unsigned>& taken) {
        Places& places = PlacesOf(param);
        const auto found = std::ranges::find_if(
            places, [&](std::size_t place) { return place >= taken.size() || taken[place] == 0; });
        if (found != places.end()) {
            return *found;
        }
        places.push_back(all_.size());
        all_.push_back(&param);
        return places.back();
    }

    std::vector<const ZMTParam*>& all_;
    std::deque<Places> lists_;
    std::map<const Element*, Places*> byElement_;
    std::map<std::string, Namesake> byName_;
    std::map<std::string, Places*> byText_;
};

std::optional<vorn::OpenEnd> OpenEndOf(const ZMTOperation& operation) {
    const std::optional<LayoutEnd> end = LayoutEndOf(operation);
    if (!end) {
        return std::nullopt;
    }
    return vorn::OpenEnd{end->isHole ? '?' : '~', ShownName(end->why)};
}

OperationView ViewOf(const Target& target, unsigned opType, ZVornExporter& messages) {
    OperationView view;
    view.address = {target.block->FBlockID(), target.function->FunctionID(), opType};
    view.operation = target.function->GetAt(opType);
    view.message = static_cast<const kestrel::Message*>(
        messages.MessageOf(view.address.fBlockID, view.address.functionID, opType));
    if (view.operation == nullptr) {
        view.name = OperationName(target.function->Class(), opType);
        view.end = vorn::OpenEnd{'?', HoleText(*target.function->LostParams().FirstOf(opType))};
        return view;
    }
    view.name = view.operation->GetName();
    view.layout = LayoutOf(*view.operation);
    view.end = OpenEndOf(*view.operation);
    return view;
}

bool HasOperation(const ZMTFunction& function, unsigned opType) {
    return function.GetAt(opType) != nullptr || function.LostParams().FirstOf(opType) != nullptr;
}

}  // namespace

ExportFlags PreviewFlags() {
    ExportFlags flags;
    flags.uniqueSignalNames = false;
    flags.safeLayout = true;
    flags.writeScaling = true;
    return flags;
}

FunctionView ViewOf(const FaultIndex& faults, const Target& target, ZVornExporter& messages) {
    FunctionView view;
    view.target = target;
    Parameters parameters(view.parameters);
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const bool isWanted = !target.opType || *target.opType == opType;
        if (!isWanted || !HasOperation(*target.function, opType)) {
            continue;
        }
        OperationView& operation = view.operations.emplace_back(ViewOf(target, opType, messages));
        if (operation.operation != nullptr) {
            parameters.Add(operation);
        }
    }
    for (OperationView& operation : view.operations) {
        operation.positions.resize(view.parameters.size());
        operation.positionsInCatalog.resize(view.parameters.size());
    }
    view.faults = faults.About(target.function->GetPath());
    return view;
}

}  // namespace tarvex::review
