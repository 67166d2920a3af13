// Addresses: a block, a function and an OPType in hexadecimal digits, with points between them.

import { hex } from "./text.js";

const kEnds = [0x100, 0x1000, 0x10];
const kInstanceEnd = 0x100;

function numberOf(digits, end) {
    const match = /^(?:0x)?([0-9a-f]{1,8})$/i.exec(digits.trim());
    const number = match ? parseInt(match[1], 16) : end;
    return number < end ? number : null;
}

/**
 * The numbers of an address, one to three. Null for another text. An instance behind the block ("22.01.402.C")
 * says nothing about a catalog and is left out.
 */
export function parseAddress(text) {
    const parts = text.split(".");
    const digits = (part) => part.trim().replace(/^0x/i, "").length;
    // Of three parts the second is an instance when only the third has the digits of a function.
    const hasInstance =
        parts.length === 4 || (parts.length === 3 && digits(parts[1]) <= 2 && digits(parts[2]) > 1);
    if (hasInstance) {
        if (numberOf(parts[1], kInstanceEnd) === null) {
            return null;
        }
        parts.splice(1, 1);
    }
    if (parts.length > 3) {
        return null;
    }
    const numbers = parts.map((part, place) => numberOf(part, kEnds[place]));
    return numbers.includes(null) ? null : numbers;
}

/** "22", "22.402", "22.402.C" */
export function addressText(block, functionId = null, opType = null) {
    let text = hex(block, 2);
    if (functionId !== null) {
        text += `.${hex(functionId, 3)}`;
    }
    return opType === null ? text : `${text}.${hex(opType, 1)}`;
}
