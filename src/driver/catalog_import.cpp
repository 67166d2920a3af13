#include "driver/catalog_import.h"

#include <algorithm>
#include <cstdio>

#include "driver/settings.h"
#include "import/text/shown_text.h"

namespace tarvex {

void Complain(const std::string& program, std::string text) {
    std::ranges::replace(text, '\n', ' ');
    std::fprintf(stderr, "%s: %s\n", program.c_str(), text.c_str());
}

bool ReadForms(const std::string& settingsPath, CatalogForms& forms) {
    const IniFile ini(settingsPath);
    if (!ini.IsRead()) {
        return false;
    }
    const Settings settings = ReadSettings(ini);
    forms = {settings.importNewer, settings.importValidate};
    return true;
}

const ZMTCatalog* ImportForMessages(ZMostFCatManager& manager, const std::string& program,
                                    const std::string& path, const CatalogForms& forms) {
    std::string events;
    std::string result;
    manager.Validate = forms.areValidated;
    manager.ReadNewer = forms.areNewerRead;
    manager.MessageSink = [&](const std::string& text, ImportEvent event) {
        (event == ImportEvent::Result ? result : events).append(" ").append(text);
    };
    std::string name;
    const bool isImported = manager.Import(name, path, kCatalogGroup, "");
    for (const std::string& file : manager.OutsideFiles()) {
        Complain(program, "the catalog reads '" + Shown(file) + "', which is outside its folder");
    }
    if (!isImported) {
        Complain(program, "can't import the catalog:" + events + result);
        return nullptr;
    }
    if (!result.empty()) {
        Complain(program, path + ":" + result);
    }
    return manager.FindCatalog(name);
}

}  // namespace tarvex
