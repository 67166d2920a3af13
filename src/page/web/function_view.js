// A function as engineers know it: operations down, parameters across, then everything about each of them.

import { catalogName, catalogText, databaseName, make, makeTable } from "./dom.js";
import { drawingSections } from "./drawing_view.js";
import { addressText } from "./address.js";
import { faultList } from "./fault_view.js";
import { parameterSection } from "./parameter_view.js";
import { fillInSteps, renewRows } from "./steps.js";
import { hex } from "./text.js";

const kParametersStep = 40;
const kFewParameters = 6; // have their names across on paper, too
const kMostColumnsOnPaper = 40;

/** "property PUnclassified" */
export function classText(row) {
    return row.className === "" ? row.kind : [`${row.kind} `, make("code", {}, catalogText(row.className))];
}

function layoutBadge(operation) {
    const word = operation.isLost ? "lost" : operation.layout;
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
        { class: "number position" },
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

/** How wide the table may be on paper: names stand upright where there are many; very many are left to the parameters. */
function widthOnPaper(count) {
    return count > kMostColumnsOnPaper ? "too-wide" : count > kFewParameters ? "wide" : "";
}

function operationTable(row, details, opType) {
    const columns = [
        "OPType",
        ...details.params.map((param) =>
            make(
                "th",
                { scope: "col", class: "number position" },
                make("span", { class: "name" }, catalogName(param.name)),
            ),
        ),
        make("th", { scope: "col", class: "number" }, "Bytes"),
        "Layout",
        "Identifier",
        "Message",
    ];
    const rows = details.operations.map((operation) => operationRow(row, operation, opType));
    const label = `Operations of ${row.name}, with the positions of parameters`;
    const region = makeTable(label, columns, rows, {
        class: `operations ${widthOnPaper(details.params.length)}`,
    });
    region.querySelector("table").style.setProperty("--parameters", details.params.length);
    return region;
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

/** The operations that a parameter stands in; with its positions where the table is too wide for paper. */
function namesOf(details, number) {
    const hasPositions = details.params.length > kMostColumnsOnPaper;
    const words = details.operations.map(({ name, positions }) => {
        const position = positions[number] ?? null;
        return position === null ? null : `${name}${hasPositions ? ` ${position}` : ""}`;
    });
    return words.filter((word) => word !== null).join(", ");
}

function parameterList(details, faults) {
    const faultsOf = new Map();
    for (const fault of faults) {
        if (!faultsOf.has(fault.param)) {
            faultsOf.set(fault.param, []);
        }
        faultsOf.get(fault.param).push(fault);
    }
    const list = make("div");
    const more = fillInSteps(list, details.params.length, kParametersStep, "parameter", (number) =>
        parameterSection(
            details.params[number],
            number,
            namesOf(details, number),
            faultsOf.get(number) ?? [],
        ),
    );
    return details.params.length === 0 ? null : [list, more];
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
    const parts = [
        section("own-faults", "Faults", faultList(own) ?? []),
        section(
            "operations",
            "Operations",
            operationTable(row, details, opType),
            holeNotes(details.operations),
            operationFaults(faults, details.operations),
        ),
        section("parameters", "Parameters", parameterList(details, faults)),
    ];
    renewRows(); // parameters of many values leave the drawings none
    return [...parts, section("messages", "Bytes and signals", drawingSections(details.operations))];
}

/** What stands under the heading: class, section, and the name as the catalog writes it. */
export function functionLine(row, details) {
    return make(
        "p",
        { class: "line" },
        make("span", {}, classText(row)),
        details.section ? make("span", {}, "section ", catalogText(details.section)) : null,
        databaseName(row),
    );
}
