// Lists that show a part of what they have, and more when they are asked to.

import { make } from "./dom.js";
import { counted } from "./text.js";

// So many rows of a view are built at once, whatever lists they are in; the rest stands behind buttons.
const kRowsOfView = 500;

let rowsLeft = kRowsOfView;
let place = ""; // the row of a list that what is being made stands in
let listsAt = new Map(); // how many lists begin in a row
let extended = new Map(); // how many rows lists show that were asked for more
const expanders = new Set();

/** Forgets the lists of the view before. `shown`: what `extendedLists` gave when this view was left, or nothing. */
export function beginSteps(shown = new Map()) {
    expanders.clear();
    rowsLeft = kRowsOfView;
    place = "";
    listsAt = new Map();
    extended = new Map(shown);
}

/** The lists of the view that were asked for more. */
export function extendedLists() {
    return extended;
}

/** Gives what comes next as many rows as a view has: long lists before it leave it none. */
export function renewRows() {
    rowsLeft = kRowsOfView;
}

/** Shows everything of the lists on the page, and of those inside them: paper has no buttons. */
export function showAllSteps() {
    rowsLeft = Infinity;
    while (expanders.size > 0) {
        for (const expand of [...expanders]) {
            expand();
        }
    }
    renewRows();
}

/** Where a list stands among the others, whatever of these is shown. */
function keyOfList() {
    const number = listsAt.get(place) ?? 0;
    listsAt.set(place, number + 1);
    return `${place}/${number}`;
}

/**
 * Fills a list run by run: `makeRun` is called with the first row and the end of what is seen, and gives its elements.
 * Returns the button for more that comes behind the list, or nothing when there is no need for one.
 */
export function fillInRuns(list, count, step, what, makeRun, key = keyOfList()) {
    let shown = 0;
    const show = (end) => {
        const first = shown;
        shown = Math.min(end, count);
        const items = shown > first ? makeRun(first, shown) : [];
        list.append(...items);
        return items[0];
    };
    const atOnce = Math.max(Math.min(step, count, rowsLeft), extended.get(key) ?? 0);
    rowsLeft = Math.max(0, rowsLeft - atOnce);
    show(atOnce);
    if (shown >= count) {
        return null;
    }
    const label = () => {
        const next = Math.min(step, count - shown);
        return `Show ${next} ${shown > 0 ? "more " : ""}of ${counted(count, what)}`;
    };
    const finish = () => {
        button.remove();
        expanders.delete(expandAll);
    };
    const expandAll = () => {
        finish();
        show(count);
    };
    const showMore = () => {
        renewRows();
        const first = show(shown + step);
        extended.set(key, shown);
        if (shown === count) {
            finish();
        } else {
            button.textContent = label();
        }
        // Where the button was, the keyboard goes on.
        first?.setAttribute("tabindex", "-1");
        first?.focus();
    };
    const button = make("button", { type: "button", class: "more", onclick: showMore }, label());
    expanders.add(expandAll);
    return button;
}

/** The same for rows that are elements of their own: `makeItem` is called for what is seen alone. */
export function fillInSteps(list, count, step, what, makeItem) {
    const key = keyOfList();
    const makeRun = (first, end) => {
        const outer = place;
        const items = [];
        for (let row = first; row < end; ++row) {
            place = `${key}/${row}`;
            items.push(makeItem(row));
        }
        place = outer;
        return items;
    };
    return fillInRuns(list, count, step, what, makeRun, key);
}
