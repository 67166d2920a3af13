// A function as engineers know it: operations down, parameters across, then everything about each of them.

import { catalogName, catalogText, make, makeTable } from "./dom.js";
import { drawingSections } from "./drawing_view.js";
import { addressText } from "./address.js";
import { faultList } from "./fault_view.js";
import { parameterSection } from "./parameter_view.js";
import { hex } from "./text.js";

const kLayouts = ["complete", "open", "incomplete"];

/** "property PUnclassified" */
export function classText(row) {
    return row.className === "" ? row.kind : [`${row.kind} `, make("code", {}, catalogText(row.className))];
}

function layoutBadge(operation) {
    const word = operation.isLost ? "lost" : kLayouts[operation.layout];
    return make("span", { class: `badge layout-${word}` }, word);
}

/** "3", "3+" where more follows, "3?" where nobody knows */
function bytesText(operation) {
    const known = operation.bytes ?? 0;
    return operation.end ? `${known}${operation.end[0] ? "?" : "+"}` : String(known);
}

function positionCell(position) {
    return make(
        "td",
        { class: "number" },
        position === null ? make("span", { class: "faint" }, "\u2013") : String(position),
    );
}

function operationRow(row, operation, opType) {
    const address = addressText(row.block.id, row.id, operation.opType);
    const isCurrent = operation.opType === opType;
    const name = make("a", { href: `#${address}` }, `${hex(operation.opType, 1)} ${operation.name}`);
    return make(
        "tr",
        { class: isCurrent ? "current" : null, "aria-current": isCurrent ? "true" : null },
        make("th", { scope: "row" }, name),
        operation.positions.map(positionCell),
        make("td", { class: "number" }, bytesText(operation)),
        make("td", {}, layoutBadge(operation)),
        make(
            "td",
            { class: "code" },
            operation.message === undefined ? "" : `0x${hex(operation.identifier, 1)}`,
        ),
        make(
            "td",
            {},
            operation.message === undefined ? "" : make("code", {}, catalogText(operation.message)),
        ),
    );
}

function operationTable(row, details, opType) {
    const columns = [
        "OPType",
        ...details.params.map((param) =>
            make("th", { scope: "col", class: "number" }, catalogName(param.name)),
        ),
        make("th", { scope: "col", class: "number" }, "Bytes"),
        "Layout",
        "Identifier",
        "Message",
    ];
    const rows = details.operations.map((operation) => operationRow(row, operation, opType));
    return makeTable(`Operations of ${row.name}, with the positions of parameters`, columns, rows, {
        class: "operations",
    });
}

/** Why the layout of operations ends where it does, where no drawing says it. */
function holeNotes(operations) {
    const holes = operations.filter((operation) => operation.end && operation.end[0] === 1);
    return holes.map((operation) =>
        make(
            "p",
            { class: "note" },
            `${hex(operation.opType, 1)} ${operation.name}: `,
            catalogText(operation.end[1]),
        ),
    );
}

function operationFaults(faults, operations) {
    return operations.map((operation) => {
        const own = faults.filter((fault) => fault.param === undefined && fault.opType === operation.opType);
        return faultList(own, make("h3", {}, `Faults of ${operation.name}`));
    });
}

function namesOf(details, number) {
    const holding = details.operations.filter((operation) => (operation.positions[number] ?? null) !== null);
    return holding.map((operation) => operation.name).join(", ");
}

function section(id, heading, ...content) {
    const body = content.flat(Infinity).filter((child) => child !== null && child !== undefined);
    return body.length === 0
        ? null
        : make("section", { "aria-labelledby": id }, make("h2", { id }, heading), body);
}

/** The parts below the heading of a function. `opType`: the operation that is meant, or null. */
export function functionParts(row, details, opType) {
    const faults = details.faults ?? [];
    const own = faults.filter((fault) => fault.param === undefined && fault.opType === undefined);
    const parameters = details.params.map((param, number) =>
        parameterSection(
            param,
            number,
            namesOf(details, number),
            faults.filter((fault) => fault.param === number),
        ),
    );
    return [
        section("own-faults", "Faults", faultList(own) ?? []),
        section(
            "operations",
            "Operations",
            operationTable(row, details, opType),
            holeNotes(details.operations),
            operationFaults(faults, details.operations),
        ),
        section("parameters", "Parameters", parameters),
        section("messages", "Bytes and signals", drawingSections(details.operations)),
    ];
}

/** What stands under the heading: class, section, and the name as the catalog writes it. */
export function functionLine(row, details) {
    return make(
        "p",
        { class: "line" },
        make("span", {}, classText(row)),
        details.section ? make("span", {}, "section ", catalogText(details.section)) : null,
        details.catalogName
            ? make("span", {}, "in the catalog ", make("q", {}, catalogText(details.catalogName)))
            : null,
    );
}
