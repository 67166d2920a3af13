/// Decoded records.

#pragma once

#include "disasm/container_item.h"
#include "params/record.h"

namespace tarvex {

/// The fields of a record that stand in the message.
class ZMostParameterRecord : public ContainerItem {
  public:
    ZMostParameterRecord(const ZMTParamRecord& record, ZMostParameterListBaseInfo& info)
        : ContainerItem(record, info) {}
};

}  // namespace tarvex
