import assert from "node:assert/strict";
import { test } from "node:test";
import { signalOf } from "../../src/page/web/catalog.js";
import { drawingsOf, groupsOf } from "../../src/page/web/drawing.js";
import { kSignalFlags } from "./catalogs.js";

const kBigEndian = 1;
const kSigned = 2;
const kMultiplexor = 4;
const kMultiplexed = 8;

/** A signal as the data has it; bits from the highest of byte 0 on. */
function signal(letters, ranges, flags = kBigEndian, value = 0) {
    return signalOf([letters, letters, 0, 0, flags, value, null, null, null, null, ranges], kSignalFlags);
}

/** Rows as a text has them: a letter for each bit, "." for none and "#" for several. */
function drawn(operation) {
    const { signals, values, draw } = groupsOf(operation);
    return values.map(draw).map(({ value, rows, end }) => {
        const lines = rows.map((row) => {
            const letters = row.runs.map(({ cell, length }) =>
                (cell < 0 ? { "-1": ".", "-2": "#" }[cell] : signals[cell].letters).repeat(length),
            );
            const bytes = row.last > row.first ? `${row.first}-${row.last}` : `${row.first}`;
            return `${bytes} ${letters.join("")}${row.isBeyond ? " beyond" : ""}`;
        });
        return [
            ...(value === null ? [] : [`value ${value}`]),
            ...lines,
            ...(end ? [`end ${end[0]}`] : []),
        ].join("\n");
    });
}

const A = signal("A", [0, 8]);

test("bits are drawn from the highest of a byte to the lowest", () => {
    const rows = [
        [{ bytes: 1, signals: [A] }, "0 AAAAAAAA"],
        [{ bytes: 1, signals: [signal("A", [0, 4]), signal("B", [6, 8])] }, "0 AAAA..BB"],
        [{ bytes: 2, signals: [signal("A", [4, 12])] }, "0 ....AAAA\n1 AAAA...."],
        // A little-endian one has several runs.
        [{ bytes: 2, signals: [signal("A", [0, 8, 12, 16], 0)] }, "0 AAAAAAAA\n1 ....AAAA"],
        [{ bytes: 1, signals: [A, signal("B", [2, 4])] }, "0 AA##AAAA"],
        [{ bytes: 1, signals: [signal("A", [0, 16])] }, "0 AAAAAAAA\n1 AAAAAAAA beyond"],
        [{ bytes: 2, signals: [A], end: [0, "open"] }, "0 AAAAAAAA\n1 ........\nend 0"],
        [{ bytes: 0, signals: [], end: [1, "lost"] }, "end 1"],
        [{ bytes: 4, signals: [] }, "0 ........\n1 ........\n2 ........\n3 ........"],
        [{ bytes: 5, signals: [] }, "0-4 ........"],
        [{ bytes: 6, signals: [A] }, "0 AAAAAAAA\n1-5 ........"],
    ];
    for (const [operation, expected] of rows) {
        assert.deepEqual(drawn(operation), [expected]);
    }
});

test("each value of the multiplexor has a drawing, one behind the other", () => {
    const signals = [
        signal("A", [0, 8], kBigEndian | kMultiplexor),
        signal("B", [8, 16], kBigEndian | kMultiplexed, 2),
        signal("C", [8, 12], kBigEndian | kMultiplexed, 0),
        signal("D", [12, 16], kBigEndian | kMultiplexed | kSigned, 0),
    ];
    assert.deepEqual(drawn({ bytes: 2, signals, end: [0, "open"] }), [
        "value 0\n0 AAAAAAAA\n1 CCCCDDDD\nend 0",
        "value 2\n0 AAAAAAAA\n1 BBBBBBBB",
    ]);
});

test("a multiplexor with very many values has a drawing for each", () => {
    const signals = Array.from({ length: 400 }, (_, value) => signal("A", [0, 8], kMultiplexed, value));
    const { values, draw } = groupsOf({ bytes: 1, signals });
    assert.equal(values.length, 400);
    assert.equal(draw(399).rows.length, 1);
});

test("operations that look alike have one drawing, those without bytes none", () => {
    const look = (number, bytes, end) => ({ message: "M", look: number, bytes, signals: [], end });
    const operations = [
        { opType: 0, ...look(0, 1) },
        { opType: 1, ...look(1, 0) },
        { opType: 2, ...look(2, 0, [0, "open"]) },
        { opType: 3, bytes: 0 },
        { opType: 12, ...look(0, 1) },
    ];
    const drawings = drawingsOf(operations);
    assert.deepEqual(
        drawings.map((drawing) => drawing.operations.map((operation) => operation.opType)),
        [[0, 12], [2]],
    );
});
