/// Messages whose parts have names: columns of a table, keys of an object.

#pragma once

#include <array>
#include <string>
#include <string_view>

#include "capture/table_line.h"

namespace tarvex {

/// The small ASCII letters and the digits of a name, with capitals made small.
std::string PlainKey(std::string_view name);

/// The parts of one message as texts, in any order.
class LooseFields {
  public:
    /// Data is put behind what there is of it already; any other column has the last text that was given.
    void Set(Column column, std::string_view text);

    /// As TimeUnitOf has it.
    void SetTimeUnit(double seconds) { timeUnit_ = seconds; }

    /// Reads the address alone, as Read does.
    std::string ReadAddress(CapturedMessage& out, const AddressNames& names) const;
    /// Reads the message; `out` is cleared before. What is called the message goes before its fields. Empty
    /// on success, else what is wrong.
    std::string Read(CapturedMessage& out, const AddressNames& names) const;

  private:
    static constexpr std::size_t kColumns = static_cast<std::size_t>(Column::Telegram) + 1;

    const std::string& Text(Column column) const { return texts_[static_cast<std::size_t>(column)]; }
    std::string ReadOrigin(CapturedMessage& out) const;

    std::array<std::string, kColumns> texts_;
    double timeUnit_ = 0;
};

}  // namespace tarvex
