/// The addresses of messages, in numbers and in names.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "capture/captured_message.h"
#include "catalog/catalog.h"

namespace tarvex {

/// The instance of messages whose address names none.
inline constexpr std::uint32_t kUsualInstance = 1;

/// The parts of an address as texts.
struct AddressFields {
    std::string_view fBlock;
    std::string_view inst;  ///< empty for kUsualInstance
    std::string_view function;
    std::string_view opType;
};

/// Reads addresses with the names of a catalog. Numbers are hexadecimal and go before names.
class AddressNames {
  public:
    /// Null for numbers alone. The catalog outlives this object.
    explicit AddressNames(const ZMTCatalog* catalog) : catalog_(catalog) {}

    /// Reads "22.01.200.C" or "AudioAmp.01.Volume.Status", and "AudioAmp.Volume.Status", which leaves out the
    /// instance. A fifth field of four is what is said to be the length. Empty on success, else what is
    /// wrong.
    std::string Read(std::string_view address, CapturedMessage& out,
                     std::optional<std::string_view>& length) const;
    std::string Read(const AddressFields& fields, CapturedMessage& out) const;

    /// The fields one by one, each with regard to those that were read before. Empty or what is wrong.
    std::string ReadBlock(std::string_view text, CapturedMessage& out) const;
    std::string ReadFunction(std::string_view text, CapturedMessage& out) const;
    std::string ReadOpType(std::string_view text, CapturedMessage& out) const;

  private:
    const ZMTFunction* FunctionOf(const CapturedMessage& message) const;

    const ZMTCatalog* catalog_;
};

/// The character may stand in a name as the catalog tree has it.
bool IsNameCharacter(char c);

}  // namespace tarvex
