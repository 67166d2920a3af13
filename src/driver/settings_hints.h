/// Hints about TARVEX.ini: what stands there and does not count, or not as it looks.

#pragma once

#include <string>

#include "catalog/catalog.h"
#include "driver/hints.h"
#include "driver/ini_file.h"
#include "driver/settings.h"

namespace tarvex {

/// Where there is no file: which one to begin with. None for one that is there and can't be read.
void HintAtMissingSettings(const std::string& iniPath, Hints& hints);

/// Sections and keys that are not known or stand at the wrong place, keys that stand twice, flags that are
/// neither 0 nor 1, and numbers that are not read. None for a file in which no setting is found at all.
void HintAtSettings(const IniFile& ini, Hints& hints);

/// Names of the lists of function blocks that no block of the catalog has, nor has as its alias.
void HintAtBlockNames(const IniFile& ini, const Settings& settings, const ZMTCatalog& catalog, Hints& hints);

}  // namespace tarvex
