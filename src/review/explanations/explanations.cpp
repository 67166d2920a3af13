#include "review/explanations/explanations.h"

#include "review/explanations/definitions.h"
#include "review/explanations/parameter_names.h"

namespace tarvex::review {
namespace {

constexpr Group kGroups[] = {
    {"Type and unit definitions", "", kOfDefinitions},
    {"Names and positions of parameters",
     "A parameter that fails here is left out: one of a function with 129, a field with 53 and its record, a "
     "stream "
     "parameter with 21 and its case.",
     kOfParameterNames},
};

}  // namespace

std::span<const Group> Groups() {
    return kGroups;
}

}  // namespace tarvex::review
