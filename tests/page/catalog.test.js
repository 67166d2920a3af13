import assert from "node:assert/strict";
import { test } from "node:test";
import { lastNotAbove, signalOf } from "../../src/page/web/catalog.js";
import { Store, bytesOf, unpacked } from "../../src/page/web/store.js";
import { kSignalFlags, packed, smallCatalog } from "./catalogs.js";

test("base64 gives bytes", () => {
    assert.deepEqual([...bytesOf("")], []);
    assert.deepEqual([...bytesOf("AP+AQQ==")], [0, 255, 128, 65]);
});

test("pieces are unpacked as they were", async () => {
    for (const value of [null, [], { a: "</script>\u2028\u0000" }, "x".repeat(100000)]) {
        assert.deepEqual(await unpacked(packed(value)), value);
    }
});

test("a piece is unpacked once while it is kept", async () => {
    const asked = [];
    const store = new Store((name) => {
        asked.push(name);
        return packed(name);
    });
    assert.equal(await store.get("a"), "a");
    assert.equal(await store.get("a"), "a");
    assert.deepEqual(asked, ["a"]);
    for (let number = 0; number < 23; ++number) {
        await store.get(`b${number}`);
    }
    await store.get("a"); // the 24 that were asked for last are kept
    assert.equal(asked.length, 24);
    await store.get("b23");
    await store.get("b0");
    assert.equal(asked.at(-1), "b0");
    assert.equal(asked.length, 26);
});

test("the last item that is not above a number", () => {
    const rows = [
        [[0, 5, 8], 0, 0],
        [[0, 5, 8], 4, 0],
        [[0, 5, 8], 5, 1],
        [[0, 5, 5, 8], 7, 2],
        [[0, 5, 8], 100, 2],
        [[3], 1, 0],
    ];
    for (const [items, number, index] of rows) {
        assert.equal(lastNotAbove(items, number), index);
    }
});

test("functions are counted over all blocks", async () => {
    const catalog = await smallCatalog();
    const names = [0, 1, 2, 3].map((number) => catalog.functionAt(number));
    assert.deepEqual(
        names.map((row) => [row.address, row.name, row.className, row.opTypeList]),
        [
            ["06.000", "FktIDs", "PNumber", [1, 12]],
            ["22.400", "Volume", "PNumber", [0, 1, 12]],
            ["22.402", "Bass & Treble", "PNumber", [12]],
            ["22.40A", "Start", "MTrigger", [0]],
        ],
    );
    assert.equal(catalog.functionCount, 4);
});

test("addresses find what they name", async () => {
    const catalog = await smallCatalog();
    const rows = [
        [[0x22], "Audio Amp"],
        [[0x10], "Empty"],
        [[0x23], null],
        [[0x22, 0x402], "Bass & Treble"],
        [[0x22, 0x401], null],
        [[0x22, 0x402, 12], "Bass & Treble 12"],
        [[0x22, 0x402, 0], null],
    ];
    for (const [numbers, name] of rows) {
        const found = catalog.find(numbers);
        const text =
            found && [found.row?.name ?? found.block.name, found.opType].filter((part) => part !== undefined);
        assert.equal(text && text.join(" "), name);
    }
});

test("a function comes with its parameters, and its operations with what they look like", async () => {
    const catalog = await smallCatalog();
    const details = await catalog.details(catalog.find([0x22, 0x402]).row);
    assert.deepEqual(
        details.params.map((param) => param.name),
        ["Treble", "Bass"],
    );
    assert.deepEqual(details.operations, [
        {
            opType: 12,
            name: "Status",
            positions: [1, 2],
            message: "AudioAmp_Bass",
            look: 0,
            layout: "incomplete",
            bytes: 2,
            signals: [signalOf(["A", "Bass", 7, 8, 3, 0, 1, "dB", 0, 9, [0, 8]], kSignalFlags)],
            end: [1, "why"],
        },
    ]);
});

test("a signal has names for its values, and for what its flags say", () => {
    const signal = signalOf(["A", "Bass", 7, 8, 1 | 8, 4, 0.1, "dB", 0, 9, [0, 8]], kSignalFlags);
    assert.deepEqual(signal, {
        letters: "A",
        name: "Bass",
        startBit: 7,
        length: 8,
        value: 4,
        factor: 0.1,
        unit: "dB",
        minimum: 0,
        maximum: 9,
        ranges: [0, 8],
        isBigEndian: true,
        isSigned: false,
        isMultiplexor: false,
        isMultiplexed: true,
    });
});

test("a block and a function have the names that databases have where these are others", async () => {
    const catalog = await smallCatalog();
    assert.deepEqual(
        catalog.blocks.map((block) => [block.name, block.databaseName]),
        [
            ["Diagnosis", undefined],
            ["Empty", undefined],
            ["Audio Amp", "AudioAmp"],
        ],
    );
    assert.deepEqual(
        [1, 2].map((number) => catalog.functionAt(number).databaseName),
        [undefined, "Bass__Treble"],
    );
});

test("functions of one block stand in several pieces", async () => {
    const catalog = await smallCatalog();
    const descriptions = [];
    for (const number of [0, 1, 3]) {
        descriptions.push((await catalog.details(catalog.functionAt(number))).description);
    }
    assert.deepEqual(descriptions, ["in the first", "volume", "start"]);
});
