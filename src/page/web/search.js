// Finds words in everything that a catalog says, and addresses.

import { lastNotAbove } from "./catalog.js";
import { addressText, parseAddress } from "./address.js";
import { folded, hex } from "./text.js";

const kPlacesOfFunction = 17; // the function itself and its operations
const kLineEnd = "\n";
const kPartEnd = "\t";

/** Where lines begin in a text. */
function lineStarts(text) {
    const starts = [0];
    for (let end = text.indexOf(kLineEnd); end >= 0; end = text.indexOf(kLineEnd, end + 1)) {
        starts.push(end + 1);
    }
    return starts;
}

/** The lines of one topic, or some of them, in which words are looked for. A line may have several parts. */
export class Lines {
    /** `piece`: lines, what they belong to, and for each how many places follow, as differences. */
    constructor(topic, piece) {
        this.topic = topic;
        this.text = piece.lines;
        this.lowered = kLineEnd + folded(piece.lines);
        // So that each line and each part has the same end in front of it.
        this.searched = this.lowered.replaceAll(kPartEnd, kLineEnd);
        this.contexts = piece.contexts;
        this.contextOf = Uint32Array.from(piece.contextOf);
        this.places = Uint32Array.from(piece.places);
    }

    // Most pieces never have a hit, so what finds lines by positions is made when it is needed.
    get starts() {
        this.startList ??= Uint32Array.from(lineStarts(this.text));
        return this.startList;
    }

    get searchedStarts() {
        this.searchedStartList ??= Uint32Array.from(lineStarts(this.lowered).slice(1));
        return this.searchedStartList;
    }

    get placeStarts() {
        if (!this.placeStartList) {
            this.placeStartList = new Uint32Array(this.contextOf.length);
            for (let line = 0, at = 0; line < this.contextOf.length; ++line) {
                this.placeStartList[line] = at;
                at += 1 + this.places[at];
            }
        }
        return this.placeStartList;
    }

    /** A part of a line, by their numbers. */
    part(line, number) {
        const end = line + 1 < this.starts.length ? this.starts[line + 1] - 1 : this.text.length;
        const text = this.text.slice(this.starts[line], end);
        return text.includes(kPartEnd) ? text.split(kPartEnd)[number] : text;
    }

    context(line) {
        return this.contexts[this.contextOf[line]];
    }

    /** The lines and parts with the word, each once: those that begin with it, or those that do not. */
    *find(word, isBeginning) {
        const sought = isBeginning ? kLineEnd + word : word;
        let position = this.searched.indexOf(sought);
        while (position >= 0) {
            const begin = (isBeginning ? position : this.searched.lastIndexOf(kLineEnd, position)) + 1;
            if (isBeginning || !this.searched.startsWith(word, begin)) {
                const line = lastNotAbove(this.searchedStarts, begin);
                yield { line, part: this.partsBefore(begin, line) };
            }
            const end = this.searched.indexOf(kLineEnd, begin);
            position = end < 0 ? -1 : this.searched.indexOf(sought, end);
        }
    }

    partsBefore(position, line) {
        return this.lowered.slice(this.searchedStarts[line], position).split(kPartEnd).length - 1;
    }

    /** The places of a line, ascending. */
    *placesOf(number) {
        const at = this.placeStarts[number];
        let place = 0;
        for (let left = this.places[at], next = at + 1; left > 0; --left, ++next) {
            place += this.places[next];
            yield place;
        }
    }
}

/** What functions have to be to be found. Each member is null where it does not matter. */
export const kNoFilter = { isFaulty: false, isIncomplete: false, classNumber: null, opType: null };

export function isFiltering(filter) {
    return filter.isFaulty || filter.isIncomplete || filter.classNumber !== null || filter.opType !== null;
}

export function passes(row, filter) {
    return (
        (!filter.isFaulty || row.faults > 0) &&
        (!filter.isIncomplete || row.isIncomplete) &&
        (filter.classNumber === null || row.classNumber === filter.classNumber) &&
        (filter.opType === null || row.hasOpType(filter.opType))
    );
}

/** The addresses that begin with what is typed, up to a limit; the one that is meant exactly comes first. */
export function* findAddresses(catalog, query, filter) {
    const numbers = parseAddress(query);
    const exact = numbers && catalog.find(numbers);
    if (exact && (exact.row ? passes(exact.row, filter) : !isFiltering(filter))) {
        yield exact;
    }
    const parts = query.trim().split(".");
    if (parts.length > 2 || !/^[0-9a-f]{1,2}$/i.test(parts[0]) || !/^[0-9a-f]{0,3}$/i.test(parts[1] ?? "")) {
        return;
    }
    const [blockDigits, functionDigits] = parts.map((part) => part.toUpperCase());
    for (const block of catalog.blocks) {
        if (functionDigits === undefined) {
            const isOther = hex(block.id, 2).startsWith(blockDigits) && block !== exact?.block;
            if (isOther && !isFiltering(filter)) {
                yield { block };
            }
        } else if (hex(block.id, 2) === blockDigits.padStart(2, "0")) {
            yield* functionsWith(catalog, block, functionDigits, exact?.row, filter);
        }
    }
}

function* functionsWith(catalog, block, digits, known, filter) {
    for (let index = 0; index < block.count; ++index) {
        const row = catalog.functionIn(block, index);
        if (hex(row.id, 3).startsWith(digits) && row.id !== known?.id && passes(row, filter)) {
            yield { block, row };
        }
    }
}

/** The address of a block, function or operation. */
export function addressOf({ block, row, opType = null }) {
    return addressText(block.id, row ? row.id : null, opType);
}

export class Search {
    constructor(catalog) {
        this.catalog = catalog;
        this.pieces = catalog.overview.search.map((topic, number) => ({ topic, name: `search-${number}` }));
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
        for (let begin = 0, end = 0; begin < this.pieces.length; begin = end) {
            // All of a topic that begins with the word, then what has it inside.
            while (end < this.pieces.length && this.pieces[end].topic === this.pieces[begin].topic) {
                ++end;
            }
            const pieces = this.pieces.slice(begin, end);
            yield* this.hitsIn(pieces, word, true, filter);
            yield* this.hitsIn(pieces, word, false, filter);
        }
    }

    *filtered(filter) {
        for (let number = 0; number < this.catalog.functionCount; ++number) {
            const row = this.catalog.functionAt(number);
            const found = { topic: "function", text: row.name, context: "", block: row.block, row };
            yield passes(row, filter) ? found : null;
        }
    }

    *hitsIn(pieces, word, isBeginning, filter) {
        for (const { lines } of pieces) {
            for (const { line, part } of lines.find(word, isBeginning)) {
                for (const place of lines.placesOf(line)) {
                    const target = this.targetOf(lines, line, place);
                    const isWanted = target.row ? passes(target.row, filter) : !isFiltering(filter);
                    yield isWanted
                        ? {
                              topic: lines.topic,
                              text: lines.part(line, part),
                              context: lines.context(line),
                              ...target,
                          }
                        : null;
                }
            }
            yield null;
        }
    }

    targetOf(lines, line, place) {
        const isBlock =
            lines.topic === "block" || (lines.topic === "description" && lines.context(line) === "block");
        if (isBlock) {
            return { block: this.catalog.blocks[place] };
        }
        const row = this.catalog.functionAt(Math.floor(place / kPlacesOfFunction));
        const operation = place % kPlacesOfFunction;
        return operation === 0 ? { block: row.block, row } : { block: row.block, row, opType: operation - 1 };
    }
}
