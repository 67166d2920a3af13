#pragma once

#include <cstddef>
#include <memory_resource>
#include <optional>
#include <string>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/sax/Locator.hpp>

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
    /// The parser's memory may be so many times as large as its input, and so much in any case.
    static constexpr std::size_t kMemoryPerByte = 16;
    static constexpr std::size_t kLeastMemory = std::size_t{64} << 20;
    /// Content, in characters, may be so many times as long as the input, and so long in any case.
    static constexpr std::size_t kContentPerByte = 8;
    static constexpr std::size_t kLeastContent = std::size_t{16} << 20;
    /// So many entities may be opened, and one more for so many bytes of input: a catalog may write each of
    /// its umlauts as one. Parameter entities and files count as well.
    static constexpr std::size_t kLeastEntities = 50'000;
    static constexpr std::size_t kBytesPerEntity = 16;
    /// Parts of one content model. The parser's functions call themselves for each, and take time that grows
    /// with their square ...
    static constexpr std::size_t kMaxModelParts = 10'000;
    /// ... so that the sum of the squares is bounded too.
    static constexpr std::size_t kMaxModelSquares = 100'000'000;

    /// Tells where the parser is. The locator outlives this object or is never asked again.
    void SetLocator(const xercesc::Locator* locator) { locator_ = locator; }

    void AddInput(std::size_t bytes) { input_ += bytes; }
    /// Throws ParserStop.
    void AddContent(std::size_t characters);

    /// Content models are counted from the start of the DTD to its end. EndDeclaration throws ParserStop.
    void StartDtd();
    void EndDeclaration();
    void EndDtd() { isInDtd_ = false; }

    /// What was thrown; null when nothing was.
    const ParserStop* Excess() const { return excess_ ? &*excess_ : nullptr; }

    /// Throws ParserStop.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;
    xercesc::MemoryManager* getExceptionMemoryManager() override;

  private:
    void CountEntity();
    void CountParts(std::size_t size);
    void Stop(std::string reason);

    std::pmr::unsynchronized_pool_resource memory_;  // gives all of it back in the end, whatever happened
    const xercesc::Locator* locator_ = nullptr;
    std::size_t input_ = 0;
    std::size_t allocated_ = 0;
    std::size_t content_ = 0;
    std::size_t entities_ = 0;
    std::size_t modelParts_ = 0;  // of the declaration that is being read
    std::size_t modelSquares_ = 0;
    bool isInDtd_ = false;
    std::optional<ParserStop> excess_;
};

}  // namespace tarvex
