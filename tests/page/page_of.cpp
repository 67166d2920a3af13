#include "page/page_of.h"

#include "page/page.h"
#include "review/catalog_reading.h"
#include "review/fault_text.h"
#include "support/temp_dir.h"

namespace tarvex::test {

std::string PageOf(const std::string& catalog) {
    const TempDir dir;
    review::ReadingOptions options;
    options.areDescriptionsRead = true;
    const review::CatalogReading reading(dir.Write("Cat.xml", catalog), options);
    review::TreeOf(reading);  // tells why there is none
    page::WritePage(reading, dir.File("page.html"));
    return ReadFile(dir.File("page.html"));
}

}  // namespace tarvex::test
