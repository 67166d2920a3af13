/// What differs between two databases, told to people and to programs.

#pragma once

#include <string>

#include "drawing/style.h"
#include "vorn/compare.h"

namespace vorn {

/// Whether the databases mean the same: names that differ in what makes them unique are no difference.
bool AreSame(const Comparison& comparison);

/// How many records of each kind were added, removed, moved and changed, and how many names differ in what
/// makes them unique: "messages: 1 added, 2 changed; signals: 2 changed". Empty if there is nothing to tell.
std::string Summary(const Comparison& comparison);

/// The differences as indented lines that begin with "+", "-", ">" (moved) or "~", and the summary.
std::string ChangesText(const Comparison& comparison, const Style& style);

/// The differences as a JSON object.
std::string ChangesJson(const Comparison& comparison);

/// The differences as a nested list of Markdown, and the summary.
std::string ChangesMarkdown(const Comparison& comparison);

}  // namespace vorn
