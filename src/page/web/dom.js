// Elements. Texts of the catalog become texts of the page in no other way than by these functions, so that
// nothing of them is ever read as HTML.

import { visible } from "./text.js";

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

/** A note on the name that databases have for a block or function; nothing where it is the same. */
export function databaseName({ databaseName: name }) {
    if (name === undefined) {
        return null;
    }
    return make(
        "span",
        {},
        "in databases ",
        name === "" ? "without a name" : make("q", {}, catalogText(name)),
    );
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
