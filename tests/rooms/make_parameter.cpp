// Makes a parameter with nothing but the room of the parameters and those below it.

#include <cstdio>

#include "import/xml/element.h"
#include "params/factory.h"

int main() {
    tarvex::Element type;
    type.name = "TNumber";
    tarvex::Element param;
    param.firstChild = &type;
    tarvex::NewerForms newer;
    std::printf("kind %d\n", static_cast<int>(tarvex::CatalogParamFactory().Create(param, newer)->GetType()));
}
