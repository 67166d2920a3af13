/// From the parameters of a function class to the operations that use them.

#pragma once

#include <optional>

#include "catalog/function.h"
#include "catalog/import_context.h"

namespace tarvex {

/// The position that the element of a parameter gives it in that operation: 0 where it gives none; nothing
/// where the element does not name the operation once, or the position can't be read.
std::optional<unsigned> PositionInCatalog(const Element& paramElement, unsigned opType);

/// Puts the parameters of a function class into the function's operations. A parameter is written once in the
/// catalog and names, in its OPType element, the operations that use it and its position there; every
/// operation gets a copy of its own and is created with the first one. What an operation does not get is
/// noted in the function. All messages are raised by the function.
class ParameterAssignment {
  public:
    ParameterAssignment(ZMTFunction& function, ImportContext& context)
        : function_(function), context_(context) {}

    /// Finds out whether the function is a property or a method, and assigns the parameters of its class. A
    /// parameter that fails is left out. Raises 124, 126, 127, 150 and those of Assign; false only for 124
    /// and 150.
    bool ImportFunctionClass(const Element& functionClass);

    /// Assigns the parameter of an error function. Raises 128 to 135; false when nothing came of it.
    bool ImportErrorFunction(const Element& errorParam);

    /// Assigns one parameter element. Raises 128 to 135; false when nothing came of the element.
    bool Assign(const Element& paramElement);

  private:
    void ImportClassElement(const Element& classElement, const char* parameterElement);
    void LoseClassElement(const Element& classElement, const char* parameterElement);
    void Lose(const Element& paramElement, Hole hole);
    void LoseAt(unsigned opType, const Element& operationElement, Hole hole);
    void LoseEverywhere();
    void MergeLosses(const ZMTFunction& errorFunction);
    void AssignErrorFunction(const Element& errorParam);
    bool Merge(const ZMTFunction& errorFunction, const Element& errorParam);
    bool PlaceAsTold(unsigned opType, const Element& operationElement, const ZMTParam& param);
    bool Place(unsigned opType, unsigned pos, const ZMTParam& param, const FaultSite& site);

    ZMTFunction& function_;
    ImportContext& context_;
    std::optional<Hole> lostEverywhere_;
};

}  // namespace tarvex
