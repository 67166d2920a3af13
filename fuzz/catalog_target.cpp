/// What targets whose inputs are catalogs have in common.

#include "catalog_mutator.h"

using namespace tarvex::fuzz;

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    RequireKnownWords();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    return MutateCatalog(data, size, maxSize, seed);
}
