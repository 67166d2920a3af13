// The data of the page, unpacked piece by piece.

/** The bytes of a text in base64. */
export function bytesOf(base64) {
    const letters = atob(base64);
    const bytes = new Uint8Array(letters.length);
    for (let place = 0; place < letters.length; ++place) {
        bytes[place] = letters.charCodeAt(place);
    }
    return bytes;
}

/** The value that compressed JSON stands for. */
export async function unpacked(base64) {
    const stream = new Blob([bytesOf(base64)]).stream().pipeThrough(new DecompressionStream("deflate"));
    return JSON.parse(await new Response(stream).text());
}

const kKept = 24;

/** Unpacks pieces when they are asked for, and keeps those that were asked for last. */
export class Store {
    /** `textOf` gives the text of the piece of that name. */
    constructor(textOf) {
        this.textOf = textOf;
        this.kept = new Map(); // by name, what was asked for last comes last
    }

    /** A promise of what is in a piece. */
    get(name) {
        const found = this.kept.get(name) ?? unpacked(this.textOf(name));
        this.kept.delete(name);
        this.kept.set(name, found);
        if (this.kept.size > kKept) {
            this.kept.delete(this.kept.keys().next().value);
        }
        return found;
    }

    /** The same of a piece that nobody asks for again. */
    getOnce(name) {
        return unpacked(this.textOf(name));
    }
}
