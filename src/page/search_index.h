/// What can be searched for in a page, and where it stands.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kestrel/keyed_hash.h"
#include "page/chunk_writer.h"

namespace tarvex::page {

/// What a text is, in the order in which a search finds them.
enum class Topic { Block, Function, Message, Parameter, Signal, Value, Bit, Unit, Description };
inline constexpr std::array<std::string_view, 9> kTopicNames = {
    "block", "function", "message", "parameter", "signal", "value", "bit", "unit", "description",
};

/// A place of a page as one number.
class Place {
  public:
    /// The block that has so many in front of it.
    static Place OfBlock(std::size_t block) { return Place(block); }
    /// The function that has so many in front of it, over all blocks.
    static Place OfFunction(std::size_t function) { return Place(function * kPlacesOfFunction); }
    static Place OfOperation(std::size_t function, unsigned opType) {
        return Place(function * kPlacesOfFunction + 1 + opType);
    }
    std::uint32_t Number() const { return number_; }

    /// A function itself and its operations.
    static constexpr std::size_t kPlacesOfFunction = 17;

  private:
    explicit Place(std::size_t number) : number_(static_cast<std::uint32_t>(number)) {}
    std::uint32_t number_;
};

/// Parts a text into several that are found each for itself.
inline constexpr char kPartEnd = '\t';

/// Collects texts and their places. A text that stands in many places is kept once.
class SearchIndex {
  public:
    /// Places of a topic come in ascending order. `context`: what the text belongs to, a few words or
    /// nothing; it is shown and not searched. Empty texts are left out; of long ones without
    /// parts the beginning counts.
    void Add(Topic topic, std::string_view text, std::string_view context, Place place);

    /// The same for a text that stands nowhere else, so that nobody looks for it among the others.
    void AddOnce(Topic topic, std::string_view text, Place place);

    /// Writes the topics as pieces "search-0", "search-1", ...; returns the topic of each. The index outlives
    /// the writer's work.
    std::vector<Topic> Write(ChunkWriter& chunks) const;

    /// The size of all texts that were added, how often each of them may be there.
    std::size_t BytesGiven() const { return bytesGiven_; }

  private:
    struct Entry {
        std::string_view text;  // the end of its key, or one of those that are there once
        std::uint32_t context;
        std::vector<std::uint32_t> places;
    };
    /// The entries of one topic. Keys are the context's number and the text.
    struct Entries {
        std::vector<Entry> all;
        kestrel::KeyedMap<std::string, std::uint32_t> byKey;
    };

    std::uint32_t NumberOfContext(std::string_view context);
    void MakeKey(std::uint32_t context, std::string_view text);
    static std::size_t EndOfPiece(const std::vector<Entry>& entries, std::size_t begin);
    std::string PieceOf(std::span<const Entry> entries) const;

    std::array<Entries, kTopicNames.size()> topics_;
    std::string key_;  // room for one, since most are there already
    std::deque<std::string> once_;
    std::vector<std::string> contexts_{""};
    kestrel::KeyedMap<std::string, std::uint32_t> contextNumbers_{{"", 0}};
    std::uint32_t lastContext_ = 0;  // the next is often the same
    std::size_t bytesGiven_ = 0;
};

}  // namespace tarvex::page
