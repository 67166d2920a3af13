// Which bits of a message its signals take, row by row.

const kBitsPerByte = 8;
export const kFree = -1;
export const kShared = -2;
/** What stands at each bit: the place of a signal among the signals, or that there is none, or several. */
export function cellsOf(bytes, signals, isThere) {
    let end = bytes * kBitsPerByte;
    for (const signal of signals) {
        for (let at = 1; at < signal.ranges.length; at += 2) {
            end = Math.max(end, signal.ranges[at]);
        }
    }
    const bits = Math.ceil(end / kBitsPerByte) * kBitsPerByte;
    // How much the number of signals, and the sum of their places, changes at a bit.
    const counts = new Int32Array(bits + 1);
    const sums = new Int32Array(bits + 1);
    signals.forEach((signal, place) => {
        if (!isThere(signal)) {
            return;
        }
        for (let at = 0; at < signal.ranges.length; at += 2) {
            const [first, last] = [signal.ranges[at], signal.ranges[at + 1]];
            ++counts[first];
            sums[first] += place;
            --counts[last];
            sums[last] -= place;
        }
    });
    const cells = new Int32Array(bits);
    for (let bit = 0, count = 0, sum = 0; bit < bits; ++bit) {
        count += counts[bit];
        sum += sums[bit];
        cells[bit] = count === 0 ? kFree : count === 1 ? sum : kShared;
    }
    return cells;
}

/** The bits of a byte as runs of the same: [{bit, length, cell}], the highest bit is 0. */
function runsOf(cells, byte) {
    const runs = [];
    for (let bit = 0; bit < kBitsPerByte; ++bit) {
        const cell = cells[byte * kBitsPerByte + bit];
        const last = runs[runs.length - 1];
        if (last && last.cell === cell) {
            ++last.length;
        } else {
            runs.push({ bit, length: 1, cell });
        }
    }
    return runs;
}

const isSameRow = (a, b) =>
    a.length === b.length && a.every((run, at) => run.bit === b[at].bit && run.cell === b[at].cell);

// So many equal rows stand for themselves; of more there is one.
const kFewRows = 4;

/** Rows of bytes: [{first, last, runs, isBeyond}]. Many that are the same are one. */
export function rowsOf(cells, bytes) {
    const same = [];
    for (let byte = 0; byte * kBitsPerByte < cells.length; ++byte) {
        const runs = runsOf(cells, byte);
        const isBeyond = byte >= bytes;
        const last = same[same.length - 1];
        if (last && last.isBeyond === isBeyond && isSameRow(last.runs, runs)) {
            last.last = byte;
        } else {
            same.push({ first: byte, last: byte, runs, isBeyond });
        }
    }
    return same.flatMap((row) => {
        const count = row.last - row.first + 1;
        if (count > kFewRows) {
            return [row];
        }
        return Array.from({ length: count }, (_, at) => ({
            ...row,
            first: row.first + at,
            last: row.first + at,
        }));
    });
}

/**
 * The drawings of a message: `values` has null for its only one, or the values of the multiplexor, each of which has
 * one. `draw` gives that of a value as {value, rows, end}. What ends the known part stands behind the signals that are
 * always there, or behind those of value 0.
 */
export function groupsOf(operation) {
    const { signals } = operation;
    const values = [
        ...new Set(signals.filter((signal) => signal.isMultiplexed).map((signal) => signal.value)),
    ];
    values.sort((a, b) => a - b);
    const draw = (value) => {
        const isThere = (signal) => value === null || !signal.isMultiplexed || signal.value === value;
        const rows = rowsOf(cellsOf(operation.bytes, signals, isThere), operation.bytes);
        return { value, rows, end: (value ?? 0) === 0 ? (operation.end ?? null) : null };
    };
    return { signals, values: values.length === 0 ? [null] : values, draw };
}

/** Operations that look alike together: [{operations, drawing}]. Those without bytes are left out. */
export function drawingsOf(operations) {
    const drawings = new Map(); // by the number of the look
    for (const operation of operations) {
        const hasBytes = operation.message !== undefined && (operation.bytes > 0 || operation.end);
        if (!hasBytes) {
            continue;
        }
        if (drawings.has(operation.look)) {
            drawings.get(operation.look).operations.push(operation);
        } else {
            drawings.set(operation.look, { operations: [operation], drawing: groupsOf(operation) });
        }
    }
    return [...drawings.values()];
}
