/// Decoded arrays.

#pragma once

#include "disasm/container_item.h"
#include "params/array.h"

namespace tarvex {

/// The entries of an array that stand in the message.
class ZMostParameterArray : public ContainerItem {
  public:
    /// `firstNumber`: the number, counted from 1, of the first entry that stands in the message.
    ZMostParameterArray(const ZMTParamArray& array, ZMostParameterListBaseInfo& info, unsigned firstNumber)
        : ContainerItem(array, info), firstNumber_(firstNumber) {}

    unsigned EntryNumber(std::size_t member) const override {
        return firstNumber_ + static_cast<unsigned>(member);
    }

  private:
    unsigned firstNumber_;
};

}  // namespace tarvex
