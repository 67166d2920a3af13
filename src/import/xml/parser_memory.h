/// Where the memory of the XML parser comes from.

#pragma once

#include <memory_resource>

#ifdef TARVEX_PLAIN_MEMORY
#include <cstddef>
#include <unordered_map>
#endif

namespace tarvex {

// Gives all of it back in the end, whatever happened to the parser.
#ifdef TARVEX_PLAIN_MEMORY

/// Allocates every block by itself, so that the address sanitizer sees the use of one that was freed.
class ParserMemory : public std::pmr::memory_resource {
  public:
    ParserMemory() = default;
    ParserMemory(const ParserMemory&) = delete;
    ParserMemory& operator=(const ParserMemory&) = delete;
    ~ParserMemory() override {
        for (const auto& [block, shape] : blocks_) {
            plain_->deallocate(block, shape.size, shape.alignment);
        }
    }

  private:
    struct Shape {
        std::size_t size;
        std::size_t alignment;
    };

    void* do_allocate(std::size_t size, std::size_t alignment) override {
        void* block = plain_->allocate(size, alignment);
        blocks_[block] = {size, alignment};
        return block;
    }
    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override {
        blocks_.erase(block);
        plain_->deallocate(block, size, alignment);
    }
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }

    std::pmr::memory_resource* plain_ = std::pmr::new_delete_resource();
    std::unordered_map<void*, Shape> blocks_;
};

#else

using ParserMemory = std::pmr::unsynchronized_pool_resource;

#endif

}  // namespace tarvex
