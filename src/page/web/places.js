// Finds places by what is typed of their addresses and names: "22.4", "22.402.", "AudioAmp.Vol", "AudioAmp.Volume.Status".

import { parseAddress } from "./address.js";
import { isFiltering, passes } from "./filter.js";
import { folded, hex } from "./text.js";

/** A part of an address, whole or its beginning: digits, or a name as the catalog or databases have it. */
class Part {
    constructor(typed, isWhole) {
        this.name = folded(typed);
        this.digits = /^[0-9a-f]*$/i.test(typed) ? typed.toUpperCase() : null;
        this.isWhole = isWhole;
    }

    isNumber(number, digits) {
        if (this.digits === null || (this.isWhole && this.digits === "")) {
            return false;
        }
        const text = hex(number, digits);
        return this.isWhole ? text === this.digits.padStart(digits, "0") : text.startsWith(this.digits);
    }

    isName(name) {
        const text = folded(name);
        return this.name !== "" && (this.isWhole ? text === this.name : text.startsWith(this.name));
    }

    /** A block or function. */
    names({ name, databaseName }) {
        return this.isName(name) || (databaseName !== undefined && this.isName(databaseName));
    }
}

/** Blocks alone are found by their numbers; their names are found with all others. */
function* blocksWith(catalog, part, filter) {
    for (const block of catalog.blocks) {
        if (part.isNumber(block.id, 2) && !isFiltering(filter)) {
            yield { block };
        }
    }
}

function* functionsWith(catalog, blocks, part, filter) {
    for (const block of blocks) {
        for (let index = 0; index < block.count; ++index) {
            const row = catalog.functionIn(block, index);
            if ((part.isNumber(row.id, 3) || part.names(row)) && passes(row, filter)) {
                yield { block, row };
            }
        }
    }
}

function* operationsWith(catalog, functions, part) {
    for (const { block, row } of functions) {
        for (const opType of row.opTypeList) {
            if (part.isNumber(opType, 1) || part.isName(catalog.operationName(row.kind, opType))) {
                yield { block, row, opType };
            }
        }
    }
}

function* beginningWith(catalog, query, filter) {
    const typed = query.trim().split(".");
    const [first, second, third] = typed.map((part, at) => new Part(part, at + 1 < typed.length));
    if (typed.length > 3 || typed[0] === "") {
        return;
    }
    if (second === undefined) {
        yield* blocksWith(catalog, first, filter);
        return;
    }
    const blocks = catalog.blocks.filter((block) => first.isNumber(block.id, 2) || first.names(block));
    const functions = functionsWith(catalog, blocks, second, filter);
    yield* third === undefined ? functions : operationsWith(catalog, functions, third);
}

function isSame(a, b) {
    return a.block === b?.block && a.row?.id === b.row?.id && a.opType === b.opType;
}

/** The places whose address begins with what is typed; the one that is meant exactly comes first. */
export function* findAddresses(catalog, query, filter) {
    const numbers = parseAddress(query);
    const exact = numbers && catalog.find(numbers);
    if (exact && (exact.row ? passes(exact.row, filter) : !isFiltering(filter))) {
        yield exact;
    }
    for (const found of beginningWith(catalog, query, filter)) {
        if (!isSame(found, exact)) {
            yield found;
        }
    }
}
