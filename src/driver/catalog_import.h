/// Catalogs for the programs that work on messages.

#pragma once

#include <string>

#include "import/import_manager.h"

namespace tarvex {

/// How catalogs are read: unless told otherwise whatever their version, and without regard to their DTD.
struct CatalogForms {
    bool areNewerRead = true;
    bool areValidated = false;
};

/// The forms that the "[Import]" section of a settings file asks for. False when it can't be read.
bool ReadForms(const std::string& settingsPath, CatalogForms& forms);

/// Imports a catalog, which then belongs to the manager. What there is to say of it goes to standard error in
/// one line, with the name of the program in front. Null when it can't be imported.
const ZMTCatalog* ImportForMessages(ZMostFCatManager& manager, const std::string& program,
                                    const std::string& path, const CatalogForms& forms);

/// A line on standard error, with the name of the program in front.
void Complain(const std::string& program, std::string text);

}  // namespace tarvex
