#include "page/page.h"

#include <stdexcept>

#include "import/text/shown_text.h"
#include "kestrel/atomic_file.h"
#include "page/catalog_data.h"
#include "page/skeleton.h"

namespace tarvex::page {

void WritePage(const review::CatalogReading& reading, const std::string& path) {
    if (reading.HasRead(path)) {
        throw std::runtime_error("can't write '" + Shown(path) + "': the catalog is read from it");
    }
    kestrel::AtomicFile file;
    if (!file.Open(path)) {
        throw std::runtime_error("can't write '" + Shown(path) + "'");
    }
    file.Append(PageHead(CatalogName(reading)));
    WriteCatalog(reading, file);
    file.Append(PageEnd());
    if (!file.Commit()) {
        throw std::runtime_error("can't write '" + Shown(path) + "'; what was there before is unchanged");
    }
}

}  // namespace tarvex::page
