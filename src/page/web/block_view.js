// A block and its functions.

import { catalogName, catalogText, databaseName, make, makeTable } from "./dom.js";
import { faultCount, faultList } from "./fault_view.js";
import { classText } from "./function_view.js";
import { fillInSteps } from "./steps.js";
import { counted, hex } from "./text.js";

const kFunctionsStep = 100;

function operationsCell(catalog, row) {
    const items = row.opTypeList.map((opType) =>
        make("abbr", { title: `${catalog.operationName(row.kind, opType)}` }, hex(opType, 1)),
    );
    return make("td", { class: "op-types" }, items);
}

function marks(row) {
    return [
        row.faults > 0 ? faultCount(row.faults) : null,
        row.isIncomplete ? make("span", { class: "badge layout-incomplete" }, "incomplete") : null,
    ];
}

function functionRow(catalog, row, description) {
    return make(
        "tr",
        {},
        make("td", { class: "code" }, hex(row.id, 3)),
        make("th", { scope: "row" }, make("a", { href: `#${row.address}` }, catalogName(row.name))),
        make("td", {}, classText(row)),
        operationsCell(catalog, row),
        make("td", { class: "short" }, description ? catalogText(description) : null),
        make("td", { class: "marks" }, marks(row)),
    );
}

/** What the parts of a block show that is unpacked first. */
export async function blockDetails(catalog, block) {
    const piece = (name) => (name ? catalog.store.get(name) : []);
    return { descriptions: await piece(block.descriptions), faults: await piece(block.ownFaults) };
}

/** The parts below the heading of a block. */
export function blockParts(catalog, block, { descriptions, faults }) {
    const rows = make("tbody");
    const more = fillInSteps(rows, block.count, kFunctionsStep, "function", (index) =>
        functionRow(catalog, catalog.functionIn(block, index), descriptions[index]),
    );
    const table = makeTable(
        `Functions of ${block.name}`,
        ["ID", "Function", "Class", "OPTypes", "Description", "Faults"],
        [],
        { class: "functions" },
    );
    table.querySelector("tbody").replaceWith(rows);
    const heading = make("h2", { id: "own-faults" }, "Faults of the block and of what is lost of it");
    return [
        faults.length > 0
            ? make("section", { "aria-labelledby": "own-faults" }, faultList(faults, heading))
            : null,
        make(
            "section",
            { "aria-labelledby": "functions" },
            make("h2", { id: "functions" }, "Functions"),
            table,
            more,
        ),
    ];
}

/** What stands under the heading. */
export function blockLine(block) {
    return make(
        "p",
        { class: "line" },
        block.kind ? make("span", {}, catalogText(block.kind)) : null,
        block.version ? make("span", {}, "version ", catalogText(block.version)) : null,
        databaseName(block),
        make("span", {}, counted(block.count, "function")),
        block.faults > 0 ? make("span", {}, faultCount(block.faults)) : null,
    );
}
