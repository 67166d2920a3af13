#include "review/examples.h"

#include "support/temp_dir.h"

namespace tarvex::test {
namespace {

review::ReadingOptions WithDescriptions() {
    review::ReadingOptions options;
    options.areDescriptionsRead = true;
    return options;
}

}  // namespace

const review::CatalogReading& Roadster() {
    const WorkingDir dir(TARVEX_EXAMPLES);
    static const review::CatalogReading reading("roadster.xml", WithDescriptions());
    return reading;
}

const review::CatalogReading& Convertible() {
    const WorkingDir dir(TARVEX_EXAMPLES);
    static const review::CatalogReading reading("convertible.xml", WithDescriptions());
    return reading;
}

}  // namespace tarvex::test
