// The catalog as the views ask for it: blocks and functions at once, what is in functions when it is shown.

import { addressText } from "./address.js";

/** The index of the last item that is not above the number; items are ascending. */
export function lastNotAbove(items, number) {
    let low = 0;
    let high = items.length;
    while (low + 1 < high) {
        const middle = (low + high) >> 1;
        if (items[middle] <= number) {
            low = middle;
        } else {
            high = middle;
        }
    }
    return low;
}

/** Keys and values that stand one behind the other. */
function pairsOf(list) {
    const pairs = new Map();
    for (let at = 0; at < list.length; at += 2) {
        pairs.set(list[at], list[at + 1]);
    }
    return pairs;
}

/** What becomes of a function in lists. */
export class FunctionRow {
    constructor(block, index, rows, classes) {
        this.block = block;
        this.index = index; // in its block
        this.number = block.first + index; // in the catalog
        this.id = rows.ids[index];
        this.name = rows.names[index]; // as the catalog writes it
        this.databaseName = block.functionNames.get(index); // where that is another one
        [this.kind, this.className] = classes[rows.classes[index]];
        this.classNumber = rows.classes[index];
        this.opTypes = rows.opTypes[index];
        this.faults = rows.faults[index];
        this.isIncomplete = rows.incomplete[index] === 1;
    }

    get address() {
        return addressText(this.block.id, this.id);
    }

    hasOpType(opType) {
        return ((this.opTypes >> opType) & 1) === 1;
    }

    /** The OPTypes of its operations, ascending. */
    get opTypeList() {
        return [...Array(16).keys()].filter((opType) => this.hasOpType(opType));
    }
}

/** A signal as the data has it, with names for its values and for the numbers of its flags. */
export function signalOf(values, signalFlags) {
    const [letters, name, startBit, length, flags, value, factor, unit, minimum, maximum, ranges] = values;
    const signal = { letters, name, startBit, length, value, factor, unit, minimum, maximum, ranges };
    for (const [flag, number] of Object.entries(signalFlags)) {
        signal[flag] = (flags & number) !== 0;
    }
    return signal; // its ranges are begin and end of each run of bits, in reading order
}

export class Catalog {
    /** `overview` and `rows`: the pieces of these names. */
    constructor(store, overview, rows) {
        this.store = store;
        this.overview = overview;
        this.rows = rows;
        let first = 0;
        this.blocks = overview.blocks.map((block, index) => {
            const count = rows[index].ids.length;
            const functionNames = pairsOf(rows[index].databaseNames ?? []);
            const own = { faults: 0, incomplete: 0, ...block, index, first, count, functionNames };
            first += own.count;
            return own;
        });
        this.firsts = this.blocks.map((block) => block.first);
        this.functionCount = first;
    }

    static async load(store) {
        const [overview, rows] = await Promise.all([store.getOnce("overview"), store.getOnce("functions")]);
        return new Catalog(store, overview, rows);
    }

    /** The block of an identifier, or undefined. */
    blockOf(id) {
        return this.blocks.find((block) => block.id === id);
    }

    /** A function by its place in a block. */
    functionIn(block, index) {
        return new FunctionRow(block, index, this.rows[block.index], this.overview.classes);
    }

    /** A function by its place in the catalog. */
    functionAt(number) {
        const block = this.blocks[this.blockIndexAt(number)];
        return this.functionIn(block, number - block.first);
    }

    blockIndexAt(number) {
        return lastNotAbove(this.firsts, number);
    }

    /** What an address names: block, function and OPType, as far as it goes. Null when it is not there. */
    find([blockId, functionId, opType]) {
        const block = this.blockOf(blockId);
        if (!block || functionId === undefined) {
            return block ? { block } : null;
        }
        const index = this.rows[block.index].ids.indexOf(functionId);
        if (index < 0) {
            return null;
        }
        const row = this.functionIn(block, index);
        if (opType === undefined) {
            return { block, row };
        }
        return row.hasOpType(opType) ? { block, row, opType } : null;
    }

    /** What the operations of an OPType are called: "Set" for 0 of a property. */
    operationName(kind, opType) {
        return this.overview.operationNames[kind]?.[opType] ?? "";
    }

    /** Name of the piece with a function, and its place in that. */
    pieceOf(row) {
        const pieces = this.rows[row.block.index].pieces; // numbers of pieces, each with how many functions it has
        let place = row.index;
        let at = 0;
        while (place >= pieces[at + 1]) {
            place -= pieces[at + 1];
            at += 2;
        }
        return { name: `functions-${pieces[at]}`, place };
    }

    /** All that is known of a function: parameters and looks are put in place of their numbers. */
    async details(row) {
        const { name, place } = this.pieceOf(row);
        const piece = await this.store.get(name);
        const found = piece.functions[place];
        const { layouts, signalFlags } = this.overview;
        const looks = found.looks.map((look) => ({
            ...look,
            signals: look.signals.map((signal) => signalOf(signal, signalFlags)),
        }));
        const operations = found.operations.map((operation) => ({
            bytes: 0,
            ...looks[operation.look],
            ...operation,
            layout: layouts[operation.layout ?? 0],
            name: this.operationName(row.kind, operation.opType),
        }));
        return { ...found, operations, params: found.params.map((number) => piece.params[number]) };
    }
}
