#include "review/diff_layout.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kestrel/keyed_hash.h"
#include "params/layout.h"
#include "review/layout_end.h"
#include "review/param_words.h"

namespace tarvex::review {
namespace {

using Holes = std::vector<LayoutHole>;

/// Those that only this side has, without what another change has told.
Holes OwnHoles(const Holes& own, const Holes& others, const FunctionChanges& changes) {
    kestrel::KeyedMap<std::string, std::size_t> counts;
    for (const LayoutHole& other : others) {
        ++counts[other.text];
    }
    Holes left;
    for (const LayoutHole& hole : own) {
        if (std::size_t& count = counts[hole.text]; count > 0) {
            --count;
        } else if (!changes.IsLossTold(hole.message)) {
            left.push_back(hole);
        }
    }
    return left;
}

/// "complete", "incomplete: there is no parameter at position 2 (message 102)"
std::string SideText(Layout layout, const Holes& holes) {
    std::string text(LayoutWord(layout));
    const char* separator = ": ";
    for (const LayoutHole& hole : holes) {
        text.append(separator).append(hole.text);
        separator = "; ";
        if (text.size() > kMaxKeptText) {
            break;
        }
    }
    return text;
}

std::string SideText(Layout layout, const std::optional<LayoutEnd>& end) {
    return std::string(LayoutWord(layout)) + (end ? ": " + end->why : std::string());
}

void Add(const std::string& before, const std::string& after, FunctionChanges& changes) {
    Change change;
    change.object = Object::Operation;
    change.aspect = Aspect::Layout;
    change.effect = Effect::Bytes;
    SetSides(change, before, after);
    changes.AddOfParameter(std::move(change), {});
}

}  // namespace

void CompareLayouts(const ZMTOperation& before, const ZMTOperation& after, FunctionChanges& changes) {
    const Layout layoutBefore = LayoutOf(before);
    const Layout layoutAfter = LayoutOf(after);
    if (layoutBefore == Layout::Incomplete || layoutAfter == Layout::Incomplete) {
        const Holes holesBefore = LayoutHolesOf(before);
        const Holes holesAfter = LayoutHolesOf(after);
        const Holes onlyBefore = OwnHoles(holesBefore, holesAfter, changes);
        const Holes onlyAfter = OwnHoles(holesAfter, holesBefore, changes);
        if (!onlyBefore.empty() || !onlyAfter.empty()) {
            Add(SideText(layoutBefore, onlyBefore), SideText(layoutAfter, onlyAfter), changes);
        }
        return;
    }
    // What has the same parameters ends at the same place, and what has others says so.
    if (!changes.HasChanged() || changes.HaveBytesChanged()) {
        return;
    }
    const std::optional<LayoutEnd> endBefore = LayoutEndOf(before);
    const std::optional<LayoutEnd> endAfter = LayoutEndOf(after);
    if (endBefore.has_value() != endAfter.has_value() || (endBefore && endBefore->place != endAfter->place)) {
        Add(SideText(layoutBefore, endBefore), SideText(layoutAfter, endAfter), changes);
    }
}

}  // namespace tarvex::review
