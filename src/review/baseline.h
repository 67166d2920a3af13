/// Faults that are known already, so that only new ones count.

#pragma once

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>

#include "import/log/fault_list.h"

namespace tarvex::review {

/// A list of faults by number, path and text, not by line: what moves stays known. One that comes twice where
/// it came once is new. The path does not have the name of the catalog, which changes with every release.
///
/// The file has a line for each: how often, the number, path and text, parted by tabs, in the order of their
/// texts, so that two of them can be compared.
class Baseline {
  public:
    /// Reads a file. Throws std::runtime_error, with the line, when it is none of ours, damaged or too large.
    static Baseline Read(const std::string& path);

    void Add(const Fault& fault);
    /// Also knows what another one does: a fault as often as the one that has it more often.
    void Join(const Baseline& other);
    /// One of the faults like this one is known; it counts no more then.
    bool Take(const Fault& fault);
    /// Puts the list into a file, which stays whole when that fails, as one does that has something else than
    /// a baseline in it. Throws std::runtime_error then.
    void Write(const std::string& path) const;

    static constexpr std::size_t kMaxBytes = std::size_t{256} << 20;

  private:
    using Key = std::tuple<std::string, unsigned, std::string>;  // path, number, text
    static Key KeyOf(const Fault& fault);

    std::map<Key, std::size_t> counts_;
};

}  // namespace tarvex::review
