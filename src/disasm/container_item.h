/// What decoded arrays, records and streams have in common.

#pragma once

#include "disasm/item_list.h"
#include "params/layout.h"

namespace tarvex {

/// A parameter that is made of others. While the message is read its members take their bytes one behind the
/// other; the item has them all in the end, also when not all could be read.
class ContainerItem : public ZMostParameter {
  public:
    /// Begins at the offset of `info`, which outlives the reading.
    ContainerItem(const ZMTNode& parameter, ZMostParameterListBaseInfo& info)
        : ZMostParameter(parameter, {}, info.Offset()), members_(info) {}

    const ZMostParameterListBaseInfo* Members() const override { return &members_; }
    ZMostParameterListBaseInfo& Members() { return members_; }

    /// Appends the item to the list that it was begun with, whose offset moves behind it. `isGood`: all of it
    /// could be read. Otherwise it has the members that could; without any it is dropped. Returns `isGood`.
    static bool Finish(std::unique_ptr<ContainerItem> item, bool isGood, ZMostParameterListBaseInfo& info,
                       std::span<const std::uint8_t> message);

  private:
    ZMostParameterListBaseInfo members_;
};

/// Reads the parameters of a container one behind the other, up to the first that the catalog lacks. False,
/// and a fault, at that one and at the first that does not fit.
template <class Params>
bool ReadMembers(const ZMTParam& container, const Params& params, ZMostParameterListBaseInfo& list,
                 std::span<const std::uint8_t> message) {
    const std::optional<Hole> missing = MissingMember(container);
    unsigned left = missing ? *missing->position - 1 : ~0U;
    for (const ZMTParam& param : params) {
        if (left-- == 0) {
            break;
        }
        if (!param.Disassemble(list, message)) {
            return false;
        }
    }
    return !missing || list.FaultAtHole(container, *missing);
}

}  // namespace tarvex
