#include "driver/catalog_hints.h"

#include <algorithm>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvex {
namespace {

/// As many errors of a document are more than its author's slips.
constexpr std::size_t kManyErrors = 100;

void HintAtFile(const std::string& path, Hints& hints) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return;
    }
    if (S_ISDIR(status.st_mode)) {
        hints.Add(Quoted(path) + " is a directory; the catalog has to be a file");
    } else if (!S_ISREG(status.st_mode)) {
        hints.Add(Quoted(path) + " is a device, a pipe or a socket; the catalog has to be a file");
    } else if (::access(path.c_str(), R_OK) != 0) {
        hints.Add(Quoted(path) + " is there, but you have no permission to read it");
    }
}

bool HasOperations(const ZMTCatalog& catalog) {
    return std::ranges::any_of(catalog.Items(), [](const ZMTFBlock& block) {
        return std::ranges::any_of(block.Items(),
                                   [](const ZMTFunction& function) { return function.Count() > 0; });
    });
}

/// `catalog`: null when nothing was imported.
void HintAtForm(const ImportFindings& findings, const ZMTCatalog* catalog, Hints& hints) {
    if (findings.isRootUnknown) {
        hints.Add(
            "the root element is not FunctionCatalog; if this is a catalog in the XML-schema form, that is "
            "another language and can't be read: export the catalog in the DTD form");
    } else if (findings.namesSchema && (catalog == nullptr || !HasOperations(*catalog))) {
        hints.Add(
            "the root element names a namespace or a schema: the XML-schema form of catalogs is another "
            "language and can't be read; export the catalog in the DTD form");
    }
}

/// `isReadable`: an import without validation would come somewhere.
void HintAtValidity(const ParserComplaints& complaints, bool isReadable, Hints& hints) {
    if (complaints.errors >= kManyErrors && !complaints.isFatal) {
        hints.Add("the catalog is not valid: " + Counted(complaints.errors, "error") + ", the first in " +
                  Quoted(complaints.file) + ", line " + std::to_string(complaints.line) + ", column " +
                  std::to_string(complaints.column) + ": " + ShownPart(complaints.text) +
                  (isReadable ? "; FCatImportValidate=0 in [Import] reads it all the same" : ""));
    }
}

void HintAtMissingDtd(const std::string& dtd, Hints& hints) {
    if (!dtd.empty()) {
        hints.Add(
            "the DTD " + Quoted(dtd) +
            " of the catalog can't be opened; FCatImportValidate=0 in [Import] reads the catalog without "
            "it");
    }
}

void HintAtFaults(const ImportFindings& findings, Hints& hints) {
    if (findings.errors + findings.warnings > 0) {
        hints.Add("the catalog has " + Counted(findings.errors, "error") + " and " +
                  Counted(findings.warnings, "warning") +
                  "; FCatImportLog=1 in [Import] writes each into a log beside it");
    }
}

/// `refused`: forms that were met and not read. Where no operation lost anything by them, streams lost cases.
void HintAtNewerForms(const ZMTCatalog& catalog, std::size_t refused, Hints& hints) {
    std::size_t functions = 0;
    std::size_t operations = 0;
    for (const ZMTFBlock& block : catalog.Items()) {
        for (const ZMTFunction& function : block.Items()) {
            std::set<unsigned> opTypes;
            for (const auto& [place, hole] : function.LostParams().All()) {
                if (hole.isNewerForm && place.first != kEveryOperation) {
                    opTypes.insert(place.first);
                }
            }
            functions += opTypes.empty() ? 0 : 1;
            operations += opTypes.size();
        }
    }
    if (functions > 0) {
        hints.Add(
            Counted(operations, "operation") + " of " + Counted(functions, "function") +
            " lost parameters that have the form of newer catalogs; FCatImportNewer=1 in [Import] reads "
            "them");
    } else if (refused > 0) {
        hints.Add("the catalog has forms of newer catalogs at " + Counted(refused, "place") +
                  ", which are left out; FCatImportNewer=1 in [Import] reads them");
    }
}

}  // namespace

void HintAtImport(const std::string& catalogPath, const ZMTCatalog* catalog, const ImportFindings& findings,
                  const Settings& settings, Hints& hints) {
    if (catalog == nullptr) {
        HintAtFile(catalogPath, hints);
        HintAtMissingDtd(findings.missingDtd, hints);
        if (settings.importValidate) {
            HintAtValidity(findings.complaints, findings.hasDefinitions, hints);
        }
    }
    HintAtForm(findings, catalog, hints);
    if (!settings.importLog) {
        HintAtFaults(findings, hints);
    }
    if (catalog != nullptr && !settings.importNewer) {
        HintAtNewerForms(*catalog, findings.newerFormsRefused, hints);
    }
}

}  // namespace tarvex
