/// Which differences between catalogs are told.

#pragma once

namespace tarvex::review {

struct DiffOptions {
    bool areDescriptionsCompared = false;
    bool areBytesOnly = false;  ///< Only those that change the bytes on the bus.
};

}  // namespace tarvex::review
