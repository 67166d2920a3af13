/// Which messages a run tells of.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "capture/address_names.h"

namespace tarvex {

/// The messages that somebody asks for: those that are faulty, and those of some addresses or names.
class MessageFilter {
  public:
    /// Adds what is asked for: "FAULTY"; the beginning of an address, with "*" for any field, "22.*.400"; or
    /// names of the catalog, "AudioAmp.Volume", a function alone as well. Empty on success, else what is
    /// wrong.
    std::string Add(std::string_view wanted, const ZMTCatalog& catalog);

    /// Of several addresses and names one has to fit.
    bool Shows(const CapturedMessage& message, bool isFaulty) const;
    bool ShowsUnreadable() const { return patterns_.empty(); }

  private:
    /// A field without a value fits all.
    struct Pattern {
        std::optional<std::uint32_t> fBlock;
        std::optional<std::uint32_t> inst;
        std::optional<std::uint32_t> function;
        std::optional<std::uint32_t> opType;
    };
    std::string AddPattern(const std::vector<std::string_view>& fields, const AddressNames& names);
    bool AddFunctions(std::string_view name, const ZMTCatalog& catalog);
    static bool Fits(const Pattern& pattern, const CapturedMessage& message);

    bool onlyFaulty_ = false;
    std::vector<Pattern> patterns_;
};

}  // namespace tarvex
