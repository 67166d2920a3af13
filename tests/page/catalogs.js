// A small catalog for the tests: its pieces as the program writes them.

import { deflateSync } from "node:zlib";
import { Catalog } from "../../src/page/web/catalog.js";
import { Store } from "../../src/page/web/store.js";

const kOperationNames = {
    property: ["Set", "Get", "SetGet", ..."3456789AB", "Status", ..."DE", "Error"],
    method: ["Start", "Abort", "StartResult", ..."3456789AB", "Result", ..."DE", "Error"],
};

export const kSignalFlags = { isBigEndian: 1, isSigned: 2, isMultiplexor: 4, isMultiplexed: 8 };

export const kOverview = {
    file: "small.xml",
    version: "1.0",
    blocks: [
        { id: 0x06, name: "Diagnosis" },
        { id: 0x10, name: "Empty" },
        { id: 0x22, name: "Audio Amp", databaseName: "AudioAmp", faults: 2, incomplete: 1 },
    ],
    classes: [
        ["property", "PNumber"],
        ["method", "MTrigger"],
    ],
    operationNames: kOperationNames,
    layouts: ["complete", "open", "incomplete"],
    signalFlags: kSignalFlags,
    placesOfFunction: 17,
    functions: 4,
    messages: 5,
    incomplete: ["22.402.C"],
    faults: 2,
    search: ["block", "function", "value", "value", "description"],
};

// Each block has lists with a member for each of its functions, and which pieces they are in.
export const kFunctions = [
    {
        ids: [0x000],
        names: ["FktIDs"],
        classes: [0],
        opTypes: [0x1002],
        faults: [0],
        incomplete: [0],
        pieces: [0, 1],
    },
    { ids: [], names: [], classes: [], opTypes: [], faults: [], incomplete: [], pieces: [] },
    {
        ids: [0x400, 0x402, 0x40a],
        names: ["Volume", "Bass & Treble", "Start"],
        databaseNames: [1, "Bass__Treble"],
        classes: [0, 0, 1],
        opTypes: [0x1003, 0x1000, 0x0001],
        faults: [0, 2, 0],
        incomplete: [0, 1, 0],
        pieces: [1, 2, 2, 1],
    },
];

const details = (name) => ({ description: name, params: [], operations: [], looks: [] });

const kPieces = {
    overview: kOverview,
    functions: kFunctions,
    "functions-0": { params: [], functions: [details("in the first")] },
    "functions-1": {
        params: [{ name: "Bass" }, { name: "Treble" }],
        functions: [
            details("volume"),
            {
                params: [1, 0],
                operations: [{ opType: 12, positions: [1, 2], message: "AudioAmp_Bass", look: 0, layout: 2 }],
                looks: [
                    {
                        bytes: 2,
                        signals: [["A", "Bass", 7, 8, 3, 0, 1, "dB", 0, 9, [0, 8]]],
                        end: [1, "why"],
                    },
                ],
            },
        ],
    },
    "functions-2": { params: [], functions: [details("start")] },
    // Places are differences; a function has 17: itself and one for each OPType.
    "search-0": {
        lines: "Diagnosis\nEmpty\nAudio Amp\nAudioAmp",
        contexts: [""],
        contextOf: [0, 0, 0, 0],
        places: [1, 0, 1, 1, 1, 2, 1, 2],
    },
    "search-1": {
        lines: "FktIDs\nVolume\nBass & Treble\nBass__Treble\nStart",
        contexts: [""],
        contextOf: [0, 0, 0, 0, 0],
        places: [1, 0, 1, 17, 1, 34, 1, 34, 1, 51],
    },
    "search-2": {
        lines: "0x00 off\t0x01 Low range\t0x02 range low\n0x00 Volume",
        contexts: ["Mode", "Data.Kind"],
        contextOf: [0, 1],
        places: [2, 17, 17, 1, 51],
    },
    "search-3": { lines: "0x07 Volume", contexts: ["Last"], contextOf: [0], places: [1, 17] },
    "search-4": {
        lines: "All about volume\nHow loud it is",
        contexts: ["block", "function"],
        contextOf: [0, 1],
        places: [1, 2, 1, 17 + 1 + 12],
    },
};

/** What the page has in its elements: compressed, in base64. */
export function packed(value) {
    return deflateSync(Buffer.from(JSON.stringify(value))).toString("base64");
}

export function smallStore() {
    return new Store((name) => packed(kPieces[name]));
}

export function smallCatalog() {
    return Catalog.load(smallStore());
}
