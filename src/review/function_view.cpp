#include "review/function_view.h"

#include <algorithm>
#include <iterator>
#include <map>

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
    std::size_t PlaceOf(const ZMTParam& param, const std::vector<unsigned>& taken) {
        std::vector<std::size_t>& places = places_[ParamText(param)];
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
    std::map<std::string, std::vector<std::size_t>> places_;  // by what a parameter looks like
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
    return flags;
}

bool IsAbout(const Fault& fault, const std::string& path) {
    return fault.path.starts_with(path) &&
           (fault.path.size() == path.size() || fault.path[path.size()] == '/');
}

FunctionView ViewOf(const CatalogReading& reading, const Target& target, ZVornExporter& messages) {
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
    const std::string path = target.function->GetPath();
    for (const Fault& fault : reading.Faults()) {
        if (IsAbout(fault, path)) {
            view.faults.push_back(&fault);
        }
    }
    return view;
}

}  // namespace tarvex::review
