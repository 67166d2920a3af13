/// Function blocks and functions that a catalog has and the tree has not.

#pragma once

#include <cstdint>
#include <map>
#include <string_view>

namespace tarvex {

struct Element;

/// The numbers of elements that could not be imported, each with that of the message that tells why. Of
/// several elements of one number the first counts.
class LostIDs {
  public:
    /// Takes the number from a child of the element that failed, if it can be read and lies below `end`.
    void Note(const Element& element, std::string_view idElement, std::int32_t end, unsigned message);
    /// The same for a number that is known.
    void Note(unsigned id, unsigned message) { messages_.try_emplace(id, message); }

    /// 0 for an element that is not lost.
    unsigned MessageOf(unsigned id) const {
        const auto found = messages_.find(id);
        return found == messages_.end() ? 0 : found->second;
    }
    const std::map<unsigned, unsigned>& All() const { return messages_; }

  private:
    std::map<unsigned, unsigned> messages_;
};

}  // namespace tarvex
