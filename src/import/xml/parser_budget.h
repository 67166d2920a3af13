/// Bounds for what a document may ask of the XML parser.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory_resource>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/sax/Locator.hpp>

#include "import/text/allowance.h"
#include "import/xml/parser_memory.h"

namespace tarvex {

/// Why a parse was given up, and where.
struct ParserStop {
    std::string reason;
    std::basic_string<XMLCh> systemId;
    XMLFileLoc line = 0;
    XMLFileLoc column = 0;
};

/// What one parse may use up. A document of a few hundred bytes can ask the parser for any amount of memory
/// and time, by entities that hold each other, by one that is used again and again, or by default values of
/// attributes. All that the parser allocates comes from here, and every entity that it opens is an
/// allocation of known size; what it delivers is reported. The first excess throws ParserStop, and after
/// that nothing is refused any more, so that the parser can tidy up.
class ParserBudget : public xercesc::MemoryManager {
  public:
    ParserBudget() = default;
    ParserBudget(const ParserBudget&) = delete;
    ParserBudget& operator=(const ParserBudget&) = delete;
    ~ParserBudget() override;

    /// The parser's memory in bytes.
    static constexpr Bound kMemory{std::size_t{64} << 20, 16};
    /// Content in characters.
    static constexpr Bound kContent{std::size_t{16} << 20, 8};
    /// Entities that are opened: a catalog may write each of its umlauts as one. Parameter entities and files
    /// count as well.
    static constexpr Bound kEntities{50'000, 1, 16};
    /// What an event counts for in content: nodes and calls for nothing at all have their cost too.
    static constexpr std::size_t kEventContent = 16;
    /// Levels of elements: more would take long, since the import looks for some elements at any depth below
    /// others. Arrays and records 64 deep in each other, the most that is imported, take 256 levels.
    static constexpr std::size_t kMaxDepth = 1024;
    /// Attributes of an element and the words in them that refer to others. The parser compares them with
    /// each other before it tells of the element.
    static constexpr std::size_t kMaxTagParts = 4096;
    /// Parts of one content model. The parser's functions call themselves for each, and take time that grows
    /// with their square ...
    static constexpr std::size_t kMaxModelParts = 10'000;
    /// ... so that the sum of the squares is bounded too.
    static constexpr std::size_t kMaxSquares = 100'000'000;

    /// Tells where the parser is. The locator outlives this object or is never asked again.
    void SetLocator(const xercesc::Locator* locator) { locator_ = locator; }

    /// To be called for every file that is opened, with its device and inode. True the first time that the
    /// file is opened. An entity that is used often opens its file again and again, which is no new input.
    bool IsNewFile(std::uint64_t device, std::uint64_t number) {
        return files_.emplace(device, number).second;
    }
    void AddInput(std::size_t bytes) {
        input_ += bytes;
        if (onInput_) {
            onInput_(input_);
        }
    }
    /// Is told whenever more was read: all bytes so far.
    void SetOnInput(std::function<void(std::size_t bytes)> onInput) { onInput_ = std::move(onInput); }
    /// What is read again counts as content. Throws ParserStop.
    void AddRepeatedInput(std::size_t bytes) { AddContent(bytes); }
    /// An element, a piece of text, a comment or the like, and its characters. Throws ParserStop.
    void AddEvent(std::size_t characters) {
        tagParts_ = 0;
        AddContent(kEventContent + characters);
    }
    /// An element, at a depth from 1. Throws ParserStop.
    void AddElement(std::size_t depth, std::size_t characters);
    /// An entity is declared, with a value of so many characters.
    void AddEntity(bool isParameterEntity, std::size_t length);
    /// A reference in the content of an element, to an entity with a value of so many characters. The parser
    /// tells of no other references. Entities in attributes and declarations are only seen to be opened, so
    /// each that is opened counts as the longest that was declared, and here that is put right.
    void AddReference(std::size_t length);

    /// A name came into a table of the parser; `hasRoom` as NameBuckets::Add says. Throws ParserStop.
    void AddName(bool hasRoom);

    /// Content models are counted from the start of the DTD to its end. EndDeclaration throws ParserStop.
    void StartDtd();
    void EndDeclaration();
    /// A list of words that an attribute may consist of. They are compared with each other, so their squares
    /// count with those of the content models. Throws ParserStop.
    void AddWords(std::size_t count) { AddSquare(count); }
    void EndDtd() { isInDtd_ = false; }

    /// What was thrown; null when nothing was.
    const ParserStop* Excess() const { return excess_ ? &*excess_ : nullptr; }

    /// Memory from elsewhere that the document takes. Throws ParserStop.
    void AddMemory(std::size_t bytes);
    /// Bytes of memory in use.
    std::size_t Memory() const { return allocated_; }

    /// Throws ParserStop.
    void* allocate(XMLSize_t size) override;
    /// What is freed while an exception passes through the parser stays as it is until the parse is over: the
    /// text of the exception is made afterwards, from entities that the parser takes for open still.
    void deallocate(void* memory) override;
    xercesc::MemoryManager* getExceptionMemoryManager() override;

  private:
    /// In front of each block, for its return.
    struct alignas(std::max_align_t) Header {
        std::size_t size;
        Header* nextKept;
    };

    static std::size_t BlockSize(std::size_t size);
    void Free(Header* header);
    void AddContent(std::size_t characters);
    void AddSquare(std::size_t parts);
    void CountEntity();
    void CountParts(std::size_t size);
    void CheckMemory(std::size_t more);
    void Stop(std::string reason);

    ParserMemory memory_;
    Header* kept_ = nullptr;  // blocks that stay until the parse is over
    const xercesc::Locator* locator_ = nullptr;
    std::set<std::pair<std::uint64_t, std::uint64_t>> files_;
    std::size_t input_ = 0;
    std::function<void(std::size_t bytes)> onInput_;
    std::size_t allocated_ = 0;
    std::size_t content_ = 0;
    std::size_t contentPaidBack_ = 0;  // of references that counted as the longest entity and are shorter
    std::size_t entities_ = 0;
    std::size_t longestEntity_ = 0;
    std::size_t longestParameterEntity_ = 0;
    std::size_t modelParts_ = 0;  // of the declaration that is being read
    std::size_t squares_ = 0;
    std::size_t tagParts_ = 0;  // at most so many since the last event
    bool isInDtd_ = false;
    std::optional<ParserStop> excess_;
};

/// Memory for the document that a parser builds; it counts as the parser's. Throws ParserStop.
class DocumentMemory : public std::pmr::memory_resource {
  public:
    /// The budget outlives this object.
    explicit DocumentMemory(ParserBudget& budget) : budget_(budget) {}

  private:
    void* do_allocate(std::size_t size, std::size_t alignment) override {
        budget_.AddMemory(size);
        return std::pmr::new_delete_resource()->allocate(size, alignment);
    }
    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override {
        std::pmr::new_delete_resource()->deallocate(block, size, alignment);
    }
    bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }

    ParserBudget& budget_;
};

}  // namespace tarvex
