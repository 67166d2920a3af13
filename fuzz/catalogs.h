#pragma once

#include <memory>
#include <string>
#include <vector>

#include "disasm/report.h"
#include "import/import_manager.h"
#include "support.h"

namespace tarvex::fuzz {

/// A reader that keeps the XML platform when a parse has thrown: a run has more catalogs to come.
std::unique_ptr<DocumentReader> MakeLastingReader(Vocabulary vocabulary);

/// A manager that keeps the XML platform likewise.
std::unique_ptr<ZMostFCatManager> MakeManager();

/// A small catalog of all kinds of parameters; imported once.
const ZMTCatalog& FixedCatalog();

/// A message without data for each operation of a catalog, and one that the catalog does not know.
std::vector<CapturedMessage> MessagesOf(const ZMTCatalog& catalog);

/// Converts a catalog with flags that are drawn, and requires that the database can be read and says the same
/// in every format. The paths of the alias and the network file may be empty.
void RequireConversion(const ZMTCatalog& catalog, const std::string& aliasPath,
                       const std::string& networkPath, Draw& draw);

/// Decodes a message and requires that the items are its bytes, one behind the other, and that both reports
/// tell them.
void RequireDecoding(const ZMTCatalog& catalog, const CapturedMessage& message);

/// Requires that a message says the same when it is written down as a line and read.
void RequireSameLine(const CapturedMessage& message);

}  // namespace tarvex::fuzz
