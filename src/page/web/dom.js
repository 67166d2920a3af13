// Elements. Texts of the catalog become texts of the page in no other way than by these functions, so that
// nothing of them is ever read as HTML.

import { counted, visible } from "./text.js";

const kSvg = "http://www.w3.org/2000/svg";

function append(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (name.startsWith("on")) {
            element.addEventListener(name.slice(2), value);
        } else if (value === true) {
            element.setAttribute(name, "");
        } else if (value !== false && value !== null && value !== undefined) {
            element.setAttribute(name, value);
        }
    }
    element.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined));
    return element;
}

/** An element with attributes, "onclick" and such for listeners, and with children: elements, texts, lists of them. */
export function make(tag, attributes = {}, ...children) {
    return append(document.createElement(tag), attributes, children);
}

/** The same of a drawing. */
export function makeSvg(tag, attributes = {}, ...children) {
    return append(document.createElementNS(kSvg, tag), attributes, children);
}

/** A text of the catalog, in whatever script and direction. */
export function catalogText(text) {
    return make("bdi", {}, visible(text));
}

/** A name of the catalog; some have none. */
export function catalogName(name) {
    return name === "" ? make("span", { class: "faint" }, "(unnamed)") : catalogText(name);
}

/** A table in a region of its own that scrolls where it is too wide. `columns`: texts or elements. */
export function makeTable(label, columns, rows, attributes = {}) {
    const head = columns.map((column) =>
        column instanceof Element && column.tagName === "TH" ? column : make("th", { scope: "col" }, column),
    );
    const body = make("tbody", {}, rows);
    const table = make("table", attributes, make("thead", {}, make("tr", {}, head)), body);
    return make("div", { class: "scroll", role: "region", "aria-label": label, tabindex: "0" }, table);
}

const expanders = new Set();

/** Shows everything of the lists on the page that show a part: paper has no buttons. */
export function showAllSteps() {
    for (const expand of [...expanders]) {
        expand();
    }
}

/** Forgets the lists of the view before. */
export function forgetSteps() {
    expanders.clear();
}

/**
 * Fills a list step by step: `makeItem` is called for what is seen alone. Behind the list comes a button for more.
 * Returns the button, or nothing when there is no need for one.
 */
export function fillInSteps(list, count, step, what, makeItem) {
    let shown = 0;
    const show = (end) => {
        const items = [];
        for (; shown < end && shown < count; ++shown) {
            items.push(makeItem(shown));
        }
        list.append(...items);
        return items[0];
    };
    show(step);
    if (shown === count) {
        return null;
    }
    const label = () => `Show ${Math.min(step, count - shown)} more of ${counted(count, what)}`;
    const finish = () => {
        button.remove();
        expanders.delete(expandAll);
    };
    const expandAll = () => {
        show(count);
        finish();
    };
    const showMore = () => {
        const first = show(shown + step);
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
