#include "kestrel/records.h"

#include <cstdlib>
#include <new>

void* kestrel_malloc(std::size_t size) {
    // Texts change hands as plain pointers, without an owner type that could free them.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void kestrel_free(void* memory) {
    // The counterpart of kestrel_malloc.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    std::free(memory);
}
