/// A function as engineers look at it: operations down, parameters across.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drawing/drawing.h"
#include "export/exporter.h"
#include "params/layout.h"
#include "review/fault_index.h"
#include "review/find.h"
#include "review/verdicts.h"

namespace tarvex::review {

struct OperationView {
    Address address;
    std::string name;
    /// Null for one that has lost all of its parameters.
    const ZMTOperation* operation = nullptr;
    Layout layout = Layout::Incomplete;
    /// What it is in a database; null when there is no room for it.
    const kestrel::Message* message = nullptr;
    /// What ends the part of the message that is known.
    std::optional<vorn::OpenEnd> end;
    /// Where each parameter of the view stands among those of the operation, counted from 1; 0 for none.
    std::vector<unsigned> positions;
    /// The same as the catalog counts them, which may begin with 0 and have gaps; nothing where it does not
    /// say.
    std::vector<std::optional<unsigned>> positionsInCatalog;

    /// The bytes whose place is known.
    std::size_t KnownBytes() const { return message == nullptr ? 0 : message->length; }
};

struct FunctionView {
    Target target;
    /// Each once, though it may stand in many operations; those without data are left out.
    std::vector<const ZMTParam*> parameters;
    std::vector<OperationView> operations;
    /// Faults of the function and of what is in it.
    std::vector<const Fault*> faults;
};

/// How databases are made that messages are told of: with the settings to begin with.
ExportFlags PreviewFlags();

/// The view of a function, or of one of its operations alone. `messages` has had its preview, with signals
/// for the function.
FunctionView ViewOf(const FaultIndex& faults, const Target& target, ZVornExporter& messages);

}  // namespace tarvex::review
