// Draws the messages of the examples with the scripts of the page, as texts, and compares them with those that
// "tarvex-catalog show" draws. TARVEX_CATALOG is the program, TARVEX_SOURCE the folder of the project.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { env } from "node:process";
import { test } from "node:test";
import { Catalog } from "../../src/page/web/catalog.js";
import { drawingsOf, kFree, kShared } from "../../src/page/web/drawing.js";
import { Store } from "../../src/page/web/store.js";
import { hex } from "../../src/page/web/text.js";

const kBits = 8;

const run = (...options) =>
    execFileSync(env.TARVEX_CATALOG, options, { encoding: "utf8", maxBuffer: 1 << 28, stdio: "pipe" });

/** The catalog of the page of an example. */
function catalogOf(path) {
    const folder = mkdtempSync(join(tmpdir(), "tarvex-"));
    try {
        const page = join(folder, "page.html");
        run("page", path, page);
        const data = readFileSync(page, "utf8").matchAll(/octet-stream" id="data-([^"]*)">([^<]*)</g);
        const pieces = new Map([...data].map(([, name, text]) => [name, text]));
        return Catalog.load(new Store((name) => pieces.get(name)));
    } finally {
        rmSync(folder, { recursive: true });
    }
}

/** The letters at the bits of each byte. */
function bytesOf(rows, signals) {
    const names = { [kFree]: ".", [kShared]: "#" };
    return rows.flatMap(({ first, last, runs, isBeyond }) => {
        const bits = runs.flatMap(({ cell, length }) =>
            Array(length).fill(names[cell] ?? signals[cell].letters),
        );
        return Array.from({ length: last - first + 1 }, () => ({ bits, isBeyond }));
    });
}

/** Bytes that look alike are one line. */
function lineOf(bytes, first, last, width, labelWidth) {
    const label = (last > first ? `${first}-${last}` : `${first}`).padEnd(labelWidth);
    const bits = bytes[first].bits.map((letters) => ` ${letters.padStart(width)}`).join("");
    return `${label}${bits}${bytes[first].isBeyond ? "   beyond the message" : ""}\n`;
}

function drawn({ rows, end }, signals) {
    const bytes = bytesOf(rows, signals);
    const width = Math.max(1, ...bytes.flatMap(({ bits }) => bits.map((letters) => letters.length)));
    const labelWidth = Math.max(8, 2 * String(bytes.length).length + 2);
    const numbers = Array.from({ length: kBits }, (_, bit) => ` ${String(kBits - 1 - bit).padStart(width)}`);
    let text = `${" ".repeat(labelWidth)}${numbers.join("")}\n`;
    for (let first = 0, last = 0; first < bytes.length; first = ++last) {
        while (JSON.stringify(bytes[last + 1]) === JSON.stringify(bytes[first])) {
            ++last;
        }
        text += lineOf(bytes, first, last, width, labelWidth);
    }
    if (end) {
        const letters = ` ${(end[0] ? "?" : "~").padStart(width)}`.repeat(kBits);
        text += `${`${bytes.length}-`.padEnd(labelWidth)}${letters}   ${end[1]}\n`;
    }
    return text;
}

/** The drawings of operations that look alike, with their names in front and their signals behind. */
function textOf({ operations, drawing }) {
    const { signals, values, draw } = drawing;
    const heading = operations.map(({ opType, name }) => `${hex(opType, 1)} ${name}`).join(", ");
    const drawings = values.map((value) => {
        const front = value === null ? "\n" : `\nmultiplexor ${value}\n`;
        return front + drawn(draw(value), signals);
    });
    return heading + drawings.join("") + signals.map(({ letters, name }) => `${letters} ${name}\n`).join("");
}

for (const example of ["roadster", "convertible"]) {
    test(`the page draws the messages of ${example} as the program does`, async () => {
        const path = join(env.TARVEX_SOURCE, "examples", `${example}.xml`);
        const catalog = await catalogOf(path);
        const functions = Array.from({ length: catalog.functionCount }, (_, at) => catalog.functionAt(at));
        const shown = run("show", path, ...functions.map((row) => row.address));
        let from = 0;
        let count = 0;
        for (const row of functions) {
            const details = await catalog.details(row);
            for (const found of drawingsOf(details.operations)) {
                const text = textOf(found);
                const at = shown.indexOf(`\n${text}`, from);
                assert.ok(at >= 0, `${row.address} is drawn otherwise:\n${text}`);
                from = at + text.length;
                count += found.drawing.values.length;
            }
        }
        assert.equal(shown.match(/^ +7 +6 +5 +4 +3 +2 +1 +0$/gm).length, count);
    });
}
