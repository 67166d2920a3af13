// Drawings of messages, and the tables of their signals.

import { catalogText, make, makeSvg, makeTable } from "./dom.js";
import { drawingsOf, kFree, kShared } from "./drawing.js";
import { fillInRuns, fillInSteps } from "./steps.js";
import { hex, visible } from "./text.js";

const kCell = { width: 44, height: 30 };
const kLabel = 72;
const kHead = 20;
const kGap = 3;
const kBits = 8;
const kWidth = kLabel + kBits * kCell.width;
const kColours = 8;
const kLetterWidth = 8.2;

const colourOf = (place) => place % kColours;

// Each colour has a pattern of its own, so that nobody needs to tell colours apart.
const kPatterns = [
    "M0 0",
    "M0 8L8 0",
    "M0 4H8",
    "M4 0V8",
    "M0 0L8 8M0 8L8 0",
    "M3 4h2M4 3v2",
    "M0 0L8 8",
    "M0 4H8M4 0V8",
];

/** The patterns, once for the page. */
export function makePatterns() {
    const patterns = kPatterns.map((path, number) =>
        makeSvg(
            "pattern",
            { id: `pattern-${number}`, width: 8, height: 8, patternUnits: "userSpaceOnUse" },
            makeSvg("path", { d: path, class: "pattern" }),
        ),
    );
    const open = makeSvg(
        "pattern",
        { id: "pattern-open", width: 8, height: 8, patternUnits: "userSpaceOnUse" },
        makeSvg("path", { d: "M0 8L8 0", class: "pattern" }),
    );
    return makeSvg(
        "svg",
        { class: "patterns", width: 0, height: 0, "aria-hidden": "true" },
        makeSvg("defs", {}, patterns, open),
    );
}

function text(x, y, className, content) {
    return makeSvg("text", { x, y, class: className }, content);
}

/** As much of the name as there is room for, behind the letters. */
function labelOf(signal, width) {
    const room = Math.floor((width - 12) / kLetterWidth);
    const name = visible(signal.name);
    const label = `${signal.letters} ${name}`;
    if (label.length <= room) {
        return label;
    }
    const cut = room - signal.letters.length - 2;
    return cut >= 4 ? `${signal.letters} ${name.slice(0, cut)}\u2026` : signal.letters;
}

function drawRun(run, y, signals) {
    const x = kLabel + run.bit * kCell.width + kGap / 2;
    const box = {
        x,
        y: y + kGap / 2,
        width: run.length * kCell.width - kGap,
        height: kCell.height - kGap,
        rx: 4,
    };
    const middle = [x + box.width / 2, y + kCell.height / 2 + 5];
    if (run.cell === kFree) {
        return [makeSvg("rect", { ...box, class: "bits free" })];
    }
    if (run.cell === kShared) {
        return [makeSvg("rect", { ...box, class: "bits shared" }), text(...middle, "letters", "#")];
    }
    const colour = colourOf(run.cell);
    return [
        makeSvg("rect", { ...box, class: `bits colour-${colour}` }),
        makeSvg("rect", { ...box, fill: `url(#pattern-${colour})` }),
        text(...middle, "letters", labelOf(signals[run.cell], box.width)),
    ];
}

function drawRow(row, y, signals) {
    const label = row.last > row.first ? `${row.first}\u2013${row.last}` : String(row.first);
    return [
        text(kLabel - 10, y + kCell.height / 2 + 5, row.isBeyond ? "byte beyond" : "byte", label),
        row.runs.map((run) => drawRun(run, y, signals)),
    ];
}

function drawEnd([isHole], byte, y) {
    const box = {
        x: kLabel + kGap / 2,
        y: y + kGap / 2,
        width: kBits * kCell.width - kGap,
        height: kCell.height - kGap,
    };
    return [
        text(kLabel - 10, y + kCell.height / 2 + 5, "byte", `${byte}\u2013`),
        makeSvg("rect", { ...box, rx: 4, class: isHole ? "end hole" : "end" }),
        makeSvg("rect", { ...box, rx: 4, fill: "url(#pattern-open)" }),
        text(kLabel + (kBits * kCell.width) / 2, y + kCell.height / 2 + 5, "letters", isHole ? "?" : "open"),
    ];
}

const kGroupsStep = 32;
const kDrawnRowsStep = 128;
const kRowsOfDrawing = 32; // more would not fit on paper

function drawRows(items, signals, label) {
    const height = kHead + items.length * kCell.height;
    const bits = Array.from({ length: kBits }, (_, bit) =>
        text(kLabel + (bit + 0.5) * kCell.width, kHead - 6, "bit", String(kBits - 1 - bit)),
    );
    const drawn = items.map((item, at) => {
        const y = kHead + at * kCell.height;
        return item.end ? drawEnd(item.end, item.first, y) : drawRow(item, y, signals);
    });
    const attributes = {
        class: "drawing",
        viewBox: `0 0 ${kWidth} ${height}`,
        width: kWidth,
        height,
        role: "img",
        "aria-label": `${label}: ${inWords(items, signals)}`,
    };
    return makeSvg("svg", attributes, bits, drawn);
}

/** Rows in drawings of some height, one below the other. */
function drawGroup(group, signals, label) {
    const beyond = group.rows.length === 0 ? 0 : group.rows.at(-1).last + 1;
    const items = group.end ? [...group.rows, { first: beyond, end: group.end }] : group.rows;
    const list = make("div");
    const more = fillInRuns(list, items.length, kDrawnRowsStep, "row", (first, end) => {
        const drawings = [];
        for (let at = first; at < end; at += kRowsOfDrawing) {
            drawings.push(drawRows(items.slice(at, Math.min(end, at + kRowsOfDrawing)), signals, label));
        }
        return drawings;
    });
    const note = group.end
        ? make("p", { class: "note" }, `From byte ${beyond} on: `, catalogText(group.end[1]))
        : null;
    return [list, more, note];
}

/** The rows for those who do not see them: "byte 0 A; byte 1 A, free bits 3 to 0" */
function inWords(items, signals) {
    const words = items.map((item) => {
        if (item.end) {
            return item.end[0] ? "then unknown" : "then open";
        }
        const bytes = item.last > item.first ? `bytes ${item.first} to ${item.last}` : `byte ${item.first}`;
        const runs = item.runs.map(({ cell, bit, length }) => {
            const bits = length === kBits ? "" : ` bits ${kBits - 1 - bit} to ${kBits - bit - length}`;
            return cell === kFree
                ? `free${bits}`
                : cell === kShared
                  ? `several${bits}`
                  : `${signals[cell].letters}${bits}`;
        });
        return `${bytes} ${runs.join(", ")}`;
    });
    return words.join("; ");
}

function valueOf(number) {
    return number === null ? "" : String(number);
}

function rangeOf({ minimum, maximum }) {
    return minimum === null || maximum === null ? "" : `${minimum} .. ${maximum}`;
}

function multiplexing(signal) {
    if (signal.isMultiplexor) {
        return "multiplexor";
    }
    return signal.isMultiplexed ? `for ${signal.value}` : "";
}

function signalTable(signals, label) {
    const isMultiplexed = signals.some((signal) => signal.isMultiplexor || signal.isMultiplexed);
    const columns = ["", "Signal", "Start bit", "Bits", "Order", "Sign", "Factor", "Range", "Unit"];
    if (isMultiplexed) {
        columns.push("Multiplexed");
    }
    columns[0] = make("th", { scope: "col" }, make("span", { class: "unseen" }, "Letter"));
    const rows = make("tbody");
    const cell = (value, className) => make("td", className ? { class: className } : {}, value);
    const more = fillInSteps(rows, signals.length, 64, "signal", (place) => {
        const signal = signals[place];
        return make(
            "tr",
            {},
            cell(make("span", { class: `key colour-${colourOf(place)}` }, signal.letters)),
            make("th", { scope: "row" }, catalogText(signal.name)),
            cell(String(signal.startBit), "number"),
            cell(String(signal.length), "number"),
            cell(signal.isBigEndian ? "big-endian" : "little-endian"),
            cell(signal.isSigned ? "signed" : "unsigned"),
            cell(valueOf(signal.factor), "number"),
            cell(rangeOf(signal), "number"),
            cell(signal.unit ? catalogText(signal.unit) : ""),
            isMultiplexed ? cell(multiplexing(signal)) : null,
        );
    });
    const region = makeTable(label, columns, [], { class: "signals" });
    region.querySelector("tbody").replaceWith(rows);
    return [region, more];
}

function messageLine(operation) {
    const identifier = `0x${hex(operation.identifier, 1)}`;
    const kind = operation.isStandard ? "standard" : "extended";
    return make(
        "li",
        {},
        make("span", { class: "operation" }, `${hex(operation.opType, 1)} ${operation.name}`),
        make("code", {}, catalogText(operation.message)),
        make(
            "span",
            { class: "faint" },
            `${identifier} ${kind}, ${operation.bytes} byte${operation.bytes === 1 ? "" : "s"}`,
        ),
    );
}

function drawingSection({ operations, drawing }, number) {
    const names = operations.map((operation) => `${hex(operation.opType, 1)} ${operation.name}`).join(", ");
    const heading = make("h3", { id: `bytes-${number}` }, names);
    const groups = make("div");
    const more = fillInSteps(groups, drawing.values.length, kGroupsStep, "drawing", (place) => {
        const value = drawing.values[place];
        const label = value === null ? names : `${names}, multiplexor ${value}`;
        const caption = value === null ? null : make("h4", {}, `Multiplexor ${value}`);
        return make(
            "div",
            { class: "group" },
            caption,
            drawGroup(drawing.draw(value), drawing.signals, label),
        );
    });
    const table = drawing.signals.length > 0 ? signalTable(drawing.signals, `Signals of ${names}`) : null;
    return make(
        "section",
        { class: "bytes", "aria-labelledby": `bytes-${number}` },
        heading,
        make("ul", { class: "messages" }, operations.map(messageLine)),
        make(
            "div",
            { class: "drawn" },
            make("div", { class: "groups" }, groups, more),
            make("div", { class: "table" }, table),
        ),
    );
}

/** The drawings of a function's operations. */
export function drawingSections(operations) {
    return drawingsOf(operations).map(drawingSection);
}
