// Texts as people see them.

// What turns a text around, or hides in it; joiners are part of the spelling of words.
const kHidden =
    // eslint-disable-next-line no-control-regex -- these are what it is about
    /[\u0000-\u001F\u007F-\u009F\u00AD\u061C\u180E\u200B\u200E\u200F\u2028-\u202E\u2060-\u2069\uFEFF\uFFF9-\uFFFB]/g;

const kControlPictures = 0x2400;
const kDelete = 0x7f;
const kDeletePicture = "\u2421";

function pictureOf(character) {
    const code = character.codePointAt(0);
    if (code < 0x20) {
        return String.fromCodePoint(kControlPictures + code);
    }
    return code === kDelete ? kDeletePicture : `\u2039U+${hex(code, 4)}\u203A`;
}

/** A text in which nothing is hidden and nothing turns it around: such characters become pictures or codes. */
export function visible(text) {
    return text.replace(kHidden, pictureOf);
}

/** A number in hexadecimal digits, at least so many. */
export function hex(number, digits) {
    return number.toString(16).toUpperCase().padStart(digits, "0");
}

/** "1 block", "2 blocks", "60,966 messages" */
export function counted(count, what) {
    return `${grouped(count)} ${what}${count === 1 ? "" : "s"}`;
}

/** "60,966" */
export function grouped(count) {
    return String(count).replace(/\B(?=(\d{3})+$)/g, ",");
}

/**
 * A text as search compares it: in any case, with one form of letters that have several, and with "_" for a blank, which
 * is what names have in its place.
 */
export function folded(text) {
    return text.toLowerCase().normalize("NFC").replaceAll(" ", "_");
}

/** A place in a text where no letter of two halves is parted: the one that is given, or the one before. */
export function betweenLetters(text, place) {
    const isLowHalf = (text.charCodeAt(place) & 0xfc00) === 0xdc00;
    const isHighHalf = (text.charCodeAt(place - 1) & 0xfc00) === 0xd800;
    return isLowHalf && isHighHalf ? place - 1 : place;
}
