import assert from "node:assert/strict";
import { test } from "node:test";
import { addressText, parseAddress } from "../../src/page/web/address.js";
import { counted, folded, grouped, hex, visible } from "../../src/page/web/text.js";

test("nothing in a text is hidden, and nothing turns it around", () => {
    const rows = [
        ["Volume", "Volume"],
        ["", ""],
        ["Lautstärke 音量 صوت 🔊", "Lautstärke 音量 صوت 🔊"],
        ["a\u0000b", "a\u2400b"],
        ["tab\tend\n", "tab\u2409end\u240A"],
        ["del\u007F", "del\u2421"],
        ["\u0085", "\u2039U+0085\u203A"],
        ["line\u2028end", "line\u2039U+2028\u203Aend"],
        ["\u202Eexe.gpj", "\u2039U+202E\u203Aexe.gpj"],
        ["zero\u200Bwidth", "zero\u2039U+200B\u203Awidth"],
        // Joiners belong to how words are spelled.
        [
            "\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645",
            "\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645",
        ],
        ["👩\u200D🔧", "👩\u200D🔧"],
    ];
    for (const [text, shown] of rows) {
        assert.equal(visible(text), shown);
    }
});

test("numbers in words", () => {
    const rows = [
        [hex(0, 2), "00"],
        [hex(0x40c, 3), "40C"],
        [hex(0x1234, 2), "1234"],
        [counted(0, "block"), "0 blocks"],
        [counted(1, "block"), "1 block"],
        [counted(60966, "message"), "60,966 messages"],
        [grouped(999), "999"],
        [grouped(1000), "1,000"],
        [grouped(1234567), "1,234,567"],
    ];
    for (const [text, expected] of rows) {
        assert.equal(text, expected);
    }
});

test("a search sees no difference of case, nor between a blank and what names have for it", () => {
    assert.equal(folded("Chassis type"), "chassis_type");
    assert.equal(folded("ÄÖÜ Straße"), "äöü_straße");
    assert.equal(folded("Cafe\u0301"), "caf\u00e9");
});

test("addresses are read as engineers write them", () => {
    const rows = [
        ["22", [0x22]],
        ["0x22", [0x22]],
        ["22.402", [0x22, 0x402]],
        ["22.402.C", [0x22, 0x402, 0xc]],
        ["22.402.c", [0x22, 0x402, 0xc]],
        ["22.01.402.C", [0x22, 0x402, 0xc]],
        ["22.01.402", [0x22, 0x402]],
        ["22.40.1", [0x22, 0x40, 0x1]],
        [" 0X22 . 402 ", [0x22, 0x402]],
        ["100", null],
        ["22.1000", null],
        ["22.402.10", null],
        ["22.402.C.1", null],
        ["22.100.402.C", null],
        ["", null],
        ["22.", null],
        ["Volume", null],
        ["22.402.C.1.2", null],
        ["-1", null],
    ];
    for (const [text, numbers] of rows) {
        assert.deepEqual(parseAddress(text), numbers, text);
    }
});

test("addresses are written as they are shown", () => {
    assert.equal(addressText(0x22), "22");
    assert.equal(addressText(6, 0), "06.000");
    assert.equal(addressText(6, 0x1a, 12), "06.01A.C");
});
