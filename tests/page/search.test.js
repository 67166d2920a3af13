import assert from "node:assert/strict";
import { mock, test } from "node:test";
import { kNoFilter } from "../../src/page/web/filter.js";
import { Lines, Match } from "../../src/page/web/lines.js";
import { addressOf, Search } from "../../src/page/web/search.js";
import { excerpt } from "../../src/page/web/search_box.js";
import { smallCatalog } from "./catalogs.js";

async function found(query, filter = {}, limit = 50) {
    const search = new Search(await smallCatalog());
    await search.load();
    const { results, hasMore } = await search.find(query, { ...kNoFilter, ...filter }, limit);
    return results
        .map(({ topic, text, context, ...target }) => [topic, text, context, addressOf(target)].join("|"))
        .concat(hasMore ? ["more"] : []);
}

test("every kind of key finds its places", async () => {
    const rows = [
        ["", []],
        ["nowhere", []],
        ["diag", ["block|Diagnosis||06"]],
        ["DIAG", ["block|Diagnosis||06"]],
        ["bass", ["function|Bass & Treble||22.402"]],
        ["bass  treble", ["function|Bass__Treble||22.402"]],
        ["bass & t", ["function|Bass & Treble||22.402"]],
        ["audioamp", ["block|AudioAmp||22"]],
        ["loud", ["description|How loud it is|function|22.400.C"]],
        // A value of a parameter in two functions, and the part of the line that has the word.
        ["low range", ["value|0x01 Low range|Mode|22.400", "value|0x01 Low range|Mode|22.402"]],
        [
            "0x00",
            [
                "value|0x00 off|Mode|22.400",
                "value|0x00 off|Mode|22.402",
                "value|0x00 Volume|Data.Kind|22.40A",
            ],
        ],
        // What begins with the word, or has it behind a code, comes first, and each topic behind those before it.
        [
            "range",
            [
                "value|0x02 range low|Mode|22.400",
                "value|0x02 range low|Mode|22.402",
                "value|0x01 Low range|Mode|22.400",
                "value|0x01 Low range|Mode|22.402",
            ],
        ],
        ["0x02", ["value|0x02 range low|Mode|22.400", "value|0x02 range low|Mode|22.402"]],
        [
            "volume",
            [
                "function|Volume||22.400",
                "value|0x00 Volume|Data.Kind|22.40A",
                "value|0x07 Volume|Last|22.400",
                "description|All about volume|block|22",
            ],
        ],
        [
            "a",
            [
                "block|Audio Amp||22",
                "block|Diagnosis||06",
                "function|Bass & Treble||22.402",
                "function|Start||22.40A",
                "value|0x01 Low range|Mode|22.400",
                "value|0x01 Low range|Mode|22.402",
                "value|0x02 range low|Mode|22.400",
                "value|0x02 range low|Mode|22.402",
                "description|All about volume|block|22",
            ],
        ],
    ];
    for (const [query, expected] of rows) {
        assert.deepEqual(await found(query), expected, query);
    }
});

test("addresses are found while they are typed", async () => {
    const rows = [
        ["06", ["address|06||06"]],
        ["0", ["address|06||06"]],
        ["2", ["address|22||22"]],
        ["22.4", ["address|22.400||22.400", "address|22.402||22.402", "address|22.40A||22.40A"]],
        ["22.40a", ["address|22.40A||22.40A"]],
        ["22.402", ["address|22.402||22.402"]],
        ["22.402.c", ["address|22.402.C||22.402.C"]],
        ["22.01.402.C", ["address|22.402.C||22.402.C"]],
        ["22.402.0", []],
        ["23.4", []],
        ["22.", ["address|22.400||22.400", "address|22.402||22.402", "address|22.40A||22.40A"]],
        ["22.402.", ["address|22.402.C||22.402.C"]],
        [
            "22.400.",
            ["address|22.400.0||22.400.0", "address|22.400.1||22.400.1", "address|22.400.C||22.400.C"],
        ],
        ["22.400.s", ["address|22.400.0||22.400.0", "address|22.400.C||22.400.C"]],
        ["22..", []],
        ["AudioAmp.Volume", ["address|22.400||22.400"]],
        ["audio amp.v", ["address|22.400||22.400"]],
        ["AudioAmp.Volume.Status", ["address|22.400.C||22.400.C"]],
        ["AudioAmp.Bass & Treble.", ["address|22.402.C||22.402.C"]],
        ["AudioAmp.Bass__", ["address|22.402||22.402"]],
        ["audioamp.402.status", ["address|22.402.C||22.402.C"]],
        ["22.volume", ["address|22.400||22.400"]],
        ["audio.volume", []],
        [".volume", []],
    ];
    for (const [query, expected] of rows) {
        const all = await found(query);
        assert.deepEqual(
            all.filter((result) => result.startsWith("address")),
            expected,
            query,
        );
    }
});

test("filters leave functions that pass, and no blocks", async () => {
    const rows = [
        ["", { isFaulty: true }, ["function|Bass & Treble||22.402"]],
        ["", { isIncomplete: true }, ["function|Bass & Treble||22.402"]],
        ["", { classNumber: 1 }, ["function|Start||22.40A"]],
        ["", { opType: 1 }, ["function|FktIDs||06.000", "function|Volume||22.400"]],
        ["", { opType: 1, classNumber: 1 }, []],
        ["low range", { isFaulty: true }, ["value|0x01 Low range|Mode|22.402"]],
        ["22", { isFaulty: true }, []],
        ["22.4", { opType: 0 }, ["address|22.400||22.400", "address|22.40A||22.40A"]],
        ["volume", { classNumber: 1 }, ["value|0x00 Volume|Data.Kind|22.40A"]],
    ];
    for (const [query, filter, expected] of rows) {
        assert.deepEqual(await found(query, filter), expected, JSON.stringify([query, filter]));
    }
});

test("lines that no wanted function has are passed over at once", () => {
    const text = Array.from({ length: 20000 }, (_, code) => `${code} Value`).join("\t");
    const piece = {
        lines: `${text}\n0 Value\n${text}\n1 Value`,
        contexts: [""],
        contextOf: [0, 0, 0, 0],
        places: [1, 0, 2, 0, 17, 1, 0, 1, 0],
    };
    const lines = new Lines("value", piece);
    const rows = [
        [[0, 1], [1, 1, -1, -1], [[1, "0 Value"]], 3],
        [[0, 0], [-1, -1, -1, -1], [], 1],
    ];
    for (const [passing, expectedNext, expected, steps] of rows) {
        const next = lines.nextPassing(Uint8Array.from(passing), 17);
        assert.deepEqual([...next], expectedNext);
        for (const match of [Match.kBehindCode, Match.kInside]) {
            const hits = [...lines.find(match === Match.kInside ? "alue" : "value", match, next)];
            assert.deepEqual(
                hits
                    .filter((hit) => hit !== null)
                    .map(({ line, begin }) => [line, lines.partAt(line, begin)]),
                expected,
            );
            assert.equal(hits.length, steps);
        }
    }
});

test("a part is found as it is written, also behind letters of another length", () => {
    const piece = {
        lines: "0 \u0130x\t1 \u0130y\t2 caf\u0065\u0301 z",
        contexts: [""],
        contextOf: [0],
        places: [1, 0],
    };
    const lines = new Lines("value", piece);
    const rows = [
        ["y", "1 \u0130y"],
        ["caf\u00e9", "2 caf\u0065\u0301 z"],
    ];
    for (const [word, part] of rows) {
        const matches = [Match.kBeginning, Match.kBehindCode, Match.kInside];
        const hits = matches.flatMap((match) => [...lines.find(word, match, null)]);
        assert.deepEqual(
            hits.filter((hit) => hit !== null).map(({ line, begin }) => lines.partAt(line, begin)),
            [part],
        );
    }
});

test("a limit cuts results, and says that there are more only when there are", async () => {
    assert.deepEqual(await found("volume", {}, 1), ["function|Volume||22.400", "more"]);
    assert.equal((await found("volume", {}, 4)).includes("more"), false);
});

test("a search that another one overtakes gives nothing", async () => {
    const search = new Search(await smallCatalog());
    await search.load();
    // The first one pauses because its time is over.
    let time = 0;
    const clock = mock.method(performance, "now", () => (time += 1000));
    const first = search.find("volume", kNoFilter, 50);
    const second = search.find("loud", kNoFilter, 50);
    assert.equal(await first, null);
    clock.mock.restore();
    assert.equal((await second).results.length, 1);
});

test("an excerpt has the word in it, however long the text is", () => {
    const long = `${"x".repeat(500)} word ${"y".repeat(500)}`;
    const rows = [
        [excerpt("Volume", "vol"), ["", "Vol", "ume"]],
        [excerpt("Volume", ""), ["Volume", "", ""]],
        [excerpt("Bass Treble", "s_t"), ["Bas", "s T", "reble"]],
        [excerpt("Volume", "nothing"), ["Volume", "", ""]],
        [excerpt("caf\u0065\u0301 x", "caf\u00e9"), ["", "caf\u00e9", " x"]],
        // Letters of two halves are not parted.
        [excerpt(`x${"🔊".repeat(100)}`, ""), [`x${"🔊".repeat(69)}`, "", ""]],
        // Small letters of another number would mark the wrong ones.
        [excerpt("\u0130\u0130 Word", "word"), ["\u0130\u0130 Word", "", ""]],
    ];
    for (const [parts, expected] of rows) {
        assert.deepEqual(parts, expected);
    }
    const [before, marked, after] = excerpt(long, "word");
    assert.equal(marked, "word");
    assert.ok(before.startsWith("\u2026") && after.endsWith("\u2026"));
    assert.ok((before + marked + after).length <= 142);
});
