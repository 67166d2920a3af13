// Finds words in everything that a catalog says, and addresses.

import { findAddresses } from "./places.js";
import { isFiltering, passes } from "./filter.js";
import { Lines, Match } from "./lines.js";
import { addressText } from "./address.js";
import { folded } from "./text.js";

/** The address of a block, function or operation. */
export function addressOf({ block, row, opType = null }) {
    return addressText(block.id, row ? row.id : null, opType);
}

export class Search {
    constructor(catalog) {
        this.catalog = catalog;
        this.pieces = catalog.overview.search.map((topic, number) => ({ topic, name: `search-${number}` }));
        this.placesOfFunction = catalog.overview.placesOfFunction;
        this.loading = null;
        this.round = 0;
    }

    /** Unpacks what is searched. Called again it does nothing. */
    load() {
        this.loading ??= Promise.all(this.pieces.map((piece) => this.loadPiece(piece)));
        return this.loading;
    }

    async loadPiece(piece) {
        piece.lines = new Lines(piece.topic, await this.catalog.store.getOnce(piece.name));
    }

    /**
     * What is found, up to a limit: a list of {topic, text, context, block, row, opType}, and whether there is more.
     * Null when another search has begun in the meantime.
     */
    async find(query, filter, limit) {
        const round = ++this.round;
        const word = folded(query.trim());
        const results = [];
        const hits = this.hits(word, query, filter);
        const kPause = 12; // milliseconds until keys get their turn
        let pause = performance.now() + kPause;
        for (const hit of hits) {
            if (hit && results.length === limit) {
                return { results, hasMore: true };
            }
            if (hit) {
                results.push(hit);
            }
            if (performance.now() > pause) {
                await new Promise((resolve) => setTimeout(resolve));
                if (round !== this.round) {
                    return null;
                }
                pause = performance.now() + kPause;
            }
        }
        return { results, hasMore: false };
    }

    /** All hits in order, and nothing now and then where a search may pause. */
    *hits(word, query, filter) {
        if (word === "") {
            if (isFiltering(filter)) {
                yield* this.filtered(filter);
            }
            return;
        }
        for (const found of findAddresses(this.catalog, query, filter)) {
            yield { topic: "address", text: addressOf(found), context: "", ...found };
        }
        const passing = this.passing(filter);
        if (passing && !passing.includes(1)) {
            return;
        }
        for (let begin = 0, end = 0; begin < this.pieces.length; begin = end) {
            while (end < this.pieces.length && this.pieces[end].topic === this.pieces[begin].topic) {
                ++end;
            }
            yield* this.hitsOfTopic(this.pieces.slice(begin, end), word, passing);
        }
    }

    /** Whether functions pass a filter, by their places in the catalog; null where all do. */
    passing(filter) {
        if (!isFiltering(filter)) {
            return null;
        }
        const key = JSON.stringify(filter);
        if (this.passingKey !== key) {
            this.passingKey = key;
            this.passingList = new Uint8Array(this.catalog.functionCount);
            for (let number = 0; number < this.catalog.functionCount; ++number) {
                this.passingList[number] = passes(this.catalog.functionAt(number), filter) ? 1 : 0;
            }
        }
        return this.passingList;
    }

    *filtered(filter) {
        for (let number = 0; number < this.catalog.functionCount; ++number) {
            const row = this.catalog.functionAt(number);
            const found = { topic: "function", text: row.name, context: "", block: row.block, row };
            yield passes(row, filter) ? found : null;
        }
    }

    /** All of a topic that begins with the word, then what has it inside. */
    *hitsOfTopic(pieces, word, passing) {
        const known = new Set(); // a block or function may have two names
        const isName = ["block", "function"].includes(pieces[0].topic);
        for (const match of [Match.kBeginning, Match.kBehindCode, Match.kInside]) {
            for (const hit of this.hitsIn(pieces, word, match, passing)) {
                const place = isName && hit ? addressOf(hit) : null;
                yield known.has(place) ? null : hit;
                if (place !== null) {
                    known.add(place);
                }
            }
        }
    }

    *hitsIn(pieces, word, match, passing) {
        for (const { lines } of pieces) {
            const next = passing && lines.nextPassing(passing, this.placesOfFunction);
            for (const found of lines.find(word, match, next)) {
                if (found === null) {
                    yield null;
                    continue;
                }
                const text = lines.partAt(found.line, found.begin);
                const context = lines.context(found.line);
                for (const place of this.placesIn(lines, found.line, passing)) {
                    const target = this.targetOf(lines, found.line, place);
                    yield { topic: lines.topic, text, context, ...target };
                }
            }
            yield null;
        }
    }

    /** The places of a line that pass. */
    *placesIn(lines, line, passing) {
        if (passing === null) {
            yield* lines.placesOf(line);
            return;
        }
        for (const place of lines.placesOf(line)) {
            if (passing[Math.floor(place / this.placesOfFunction)] === 1) {
                yield place;
            }
        }
    }

    targetOf(lines, line, place) {
        if (lines.isOfBlocks(line)) {
            return { block: this.catalog.blocks[place] };
        }
        const row = this.catalog.functionAt(Math.floor(place / this.placesOfFunction));
        const operation = place % this.placesOfFunction;
        return operation === 0 ? { block: row.block, row } : { block: row.block, row, opType: operation - 1 };
    }
}
