/// Decoded records.

#pragma once

#include "disasm/container_item.h"
#include "disasm/coordinates.h"
#include "params/record.h"

namespace tarvex {

/// Which field of a record the coordinates name, and which of its members. A record is no list of entries:
/// one coordinate alone names the field, whichever it is, and with both the first one does if its field is an
/// array or record.
Coordinates FieldCoordinates(const ZMTParamRecord& record, Coordinates given);

/// The fields of a record that stand in the message.
class ZMostParameterRecord : public ContainerItem {
  public:
    ZMostParameterRecord(const ZMTParamRecord& record, ZMostParameterListBaseInfo& info)
        : ContainerItem(record, info) {}
};

}  // namespace tarvex
