// What leaves out functions of lists and searches.

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
