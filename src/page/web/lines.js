// The lines that are searched: what is in them, and the places where that stands.

import { lastNotAbove } from "./catalog.js";
import { folded } from "./text.js";

const kLineEnd = "\n";
const kPartEnd = "\t";
const kCodeEnd = "_"; // a blank, as it is searched

/** How a word stands in a part of a line: at its beginning, behind the code that it begins with, or elsewhere. */
export const Match = { kBeginning: 0, kBehindCode: 1, kInside: 2 };

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
        this.hasCodes = topic === "value" || topic === "bit";
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

    /** The part of a line that begins at a position of what is searched. */
    partAt(line, begin) {
        // Few letters have another length in small letters; without them positions are the same.
        const isSame = this.lowered.length === this.text.length + kLineEnd.length;
        const start = isSame ? begin - kLineEnd.length : this.partStart(line, begin);
        const end = line + 1 < this.starts.length ? this.starts[line + 1] - 1 : this.text.length;
        const partEnd = this.text.indexOf(kPartEnd, start);
        return this.text.slice(start, partEnd < 0 ? end : Math.min(partEnd, end));
    }

    partStart(line, begin) {
        let start = this.starts[line];
        let part = this.lowered.indexOf(kPartEnd, this.searchedStarts[line]);
        for (; part >= 0 && part < begin; part = this.lowered.indexOf(kPartEnd, part + 1)) {
            start = this.text.indexOf(kPartEnd, start) + 1;
        }
        return start;
    }

    context(line) {
        return this.contexts[this.contextOf[line]];
    }

    /** Where the part with a position begins, if the word stands in it as it has to; otherwise -1. */
    beginOf(position, word, match) {
        if (match === Match.kBeginning) {
            return position + kLineEnd.length;
        }
        const begin = this.searched.lastIndexOf(kLineEnd, position) + kLineEnd.length;
        if (match === Match.kBehindCode) {
            return this.isBehindCode(begin, word) && this.searched.indexOf(kCodeEnd, begin) === position
                ? begin
                : -1;
        }
        const isElsewhere = this.searched.startsWith(word, begin) || this.isBehindCode(begin, word);
        return isElsewhere ? -1 : begin;
    }

    isBehindCode(begin, word) {
        if (!this.hasCodes || this.searched.startsWith(word, begin)) {
            return false;
        }
        return this.searched.startsWith(word, this.searched.indexOf(kCodeEnd, begin) + kCodeEnd.length);
    }

    /**
     * For each line the first one from it on that has a place of a function that passes; -1 for none. `passing` tells
     * that of functions, each of which has so many places.
     */
    nextPassing(passing, placesOfFunction) {
        if (this.passing !== passing) {
            this.passing = passing;
            this.nextList = new Int32Array(this.contextOf.length);
            for (let line = this.nextList.length - 1, next = -1; line >= 0; --line) {
                next = this.hasPassing(line, passing, placesOfFunction) ? line : next;
                this.nextList[line] = next;
            }
        }
        return this.nextList;
    }

    hasPassing(line, passing, placesOfFunction) {
        if (this.isOfBlocks(line)) {
            return false; // functions alone pass
        }
        const first = this.placeStarts[line] + 1;
        const end = first + this.places[first - 1];
        for (let at = first, place = 0; at < end; ++at) {
            place += this.places[at];
            if (passing[Math.floor(place / placesOfFunction)] === 1) {
                return true;
            }
        }
        return false;
    }

    /** The places of a line are those of blocks. */
    isOfBlocks(line) {
        return this.topic === "block" || (this.topic === "description" && this.context(line) === "block");
    }

    /**
     * The lines and parts with the word, each once: {line, begin}. `next` has for each line the first one from it on
     * that is wanted, null for all. Nothing comes now and then, where a search may pause.
     */
    *find(word, match, next) {
        if (match === Match.kBehindCode && !this.hasCodes) {
            return;
        }
        const fronts = { [Match.kBeginning]: kLineEnd, [Match.kBehindCode]: kCodeEnd, [Match.kInside]: "" };
        const sought = fronts[match] + word;
        let position = this.searched.indexOf(sought);
        while (position >= 0) {
            let from = this.searched.indexOf(kLineEnd, position + 1);
            const begin = this.beginOf(position, word, match);
            const line = lastNotAbove(this.searchedStarts, Math.max(begin, position));
            const wanted = next === null ? line : next[line];
            if (wanted === line) {
                yield begin < 0 ? null : { line, begin };
            } else {
                from = wanted < 0 ? -1 : this.searchedStarts[wanted] - kLineEnd.length;
                yield null;
            }
            position = from < 0 ? -1 : this.searched.indexOf(sought, from);
        }
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
