/// Everything that a user of the library includes: create a `KestrelWriteManager`, create a database with it,
/// fill in the records that it hands out and write the database to a file.

#pragma once

#include "kestrel/errors.h"
#include "kestrel/records.h"
#include "kestrel/write_manager.h"
