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

    unsigned FirstNumber() const { return firstNumber_; }

  private:
    unsigned firstNumber_;
};

/// The number of the first member of an item if its members are numbered entries; else 0.
unsigned FirstEntryNumber(const ZMostParameter& item);

}  // namespace tarvex
