/// The faults of a catalog with their places, for programs that show them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "import/log/message.h"
#include "import/text/allowance.h"

namespace tarvex {

/// An element of a catalog: its name, which lives as long as the document, and where its start tag begins,
/// counted from 1. 0 where there is no element.
struct ElementPlace {
    std::string_view name;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// Something that the parser or the importer holds against a catalog. All texts are UTF-8 as the catalog has
/// them.
struct Fault {
    Kind kind = Kind::Error;
    bool isOfParser = false;
    unsigned number = 0;  ///< 0 for fatal errors and for those of the parser.
    std::string text;
    std::string path;     ///< Of the node at fault, in the tree.
    std::string element;  ///< Name of the element at fault.
    std::string file;     ///< Where the parser found it; empty for the catalog itself.
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// Takes faults in the order in which they are told, as long as there is room.
class FaultList {
  public:
    /// A catalog can make megabytes of faults out of every few kilobytes.
    static constexpr Bound kBytes{std::size_t{64} << 20, 16};

    void SetRoom(const Allowance& room) { room_ = room; }
    bool HasRoom() const { return !room_.IsSpent(); }

    /// Once one has no room, none has.
    void Add(Fault fault) {
        if (room_.Take(sizeof(Fault) + fault.text.size() + fault.path.size())) {
            faults_.push_back(std::move(fault));
        }
    }
    const std::vector<Fault>& All() const { return faults_; }

  private:
    std::vector<Fault> faults_;
    Allowance room_{kBytes, 0};
};

}  // namespace tarvex
