/// Values from what the reports of the disassembler say.

#pragma once

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "asm/asm_value.h"
#include "disasm/item_list.h"

namespace tarvex {

/// The parameters below a message in a text report. Lines are indented by two blanks per level; those that
/// tell errors are left out.
std::vector<AsmField> ItemsOfText(const std::vector<std::string>& lines);

/// The "items" of a message in a JSON report. Numbers, codes, bits and signals have their raw value,
/// everything else its text. False for anything that no report has.
bool ItemsOfJson(const nlohmann::json& items, std::vector<AsmField>& out);

/// Notes of the values of a report which items of the message they are for, and which of them say still what
/// these say. `said`: the values of the message's own report, in the same form. The items outlive the values.
void CompareWithItems(std::vector<AsmField>& fields, const std::vector<AsmField>& said,
                      const ZMostParameterListBaseInfo& items);

}  // namespace tarvex
