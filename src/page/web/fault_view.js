// The importer's messages.

import { catalogText, make } from "./dom.js";
import { fillInSteps } from "./steps.js";
import { counted, visible } from "./text.js";

function placeOf(fault) {
    const file = fault.file ? `${visible(fault.file)}, ` : "";
    const column = fault.column ? `, column ${fault.column}` : "";
    return fault.line ? `${file}line ${fault.line}${column}` : file.slice(0, -2);
}

/** A message: kind and number, what is wrong, where in the file and in the tree. */
function faultItem(fault, hasPath) {
    const kind = `${fault.kind}${fault.number ? ` ${fault.number}` : ""}`;
    const place = placeOf(fault);
    return make(
        "li",
        { class: `fault ${fault.kind}` },
        make("span", { class: "kind" }, kind),
        make("span", { class: "text" }, catalogText(fault.text)),
        place ? make("span", { class: "place" }, place) : null,
        hasPath && fault.path ? make("span", { class: "path" }, catalogText(fault.path)) : null,
    );
}

const kFaultsStep = 50;

/** A list of messages, with a heading if one is given; nothing for none. */
export function faultList(faults, heading = null, hasPath = true) {
    if (faults.length === 0) {
        return null;
    }
    const list = make("ul", { class: "faults" });
    const more = fillInSteps(list, faults.length, kFaultsStep, "fault", (place) =>
        faultItem(faults[place], hasPath),
    );
    return [heading, list, more];
}

/** "2 faults", marked as such; a dash for none. */
export function faultCount(count) {
    return count === 0
        ? make("span", { class: "faint" }, "\u2013")
        : make("span", { class: "badge fault-badge" }, counted(count, "fault"));
}
