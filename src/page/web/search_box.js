// The field for searches, its filters and its results, by mouse, keyboard and screen reader.

import { catalogName, catalogText, make } from "./dom.js";
import { isFiltering, kNoFilter } from "./filter.js";
import { addressOf } from "./search.js";
import { betweenLetters, counted, folded, hex, visible } from "./text.js";

const kResultsStep = 50;
const kOpTypeCount = 16;
const kMaxText = 140;

/** The text around the first occurrence of the word, with that marked. */
export function excerpt(written, word) {
    const text = written.normalize("NFC"); // as it is searched
    const at = folded(text).indexOf(word);
    // A letter may have another length in small letters; then what is found stands elsewhere.
    if (at < 0 || word === "" || folded(text).length !== text.length) {
        return [text.slice(0, betweenLetters(text, kMaxText)), "", ""];
    }
    const first = at + word.length > kMaxText ? Math.max(0, at - kMaxText / 2) : 0;
    const begin = betweenLetters(text, first);
    const end = betweenLetters(text, Math.max(at + word.length, begin + kMaxText));
    const before = (begin > 0 ? "\u2026" : "") + text.slice(begin, at);
    const after = text.slice(at + word.length, end) + (end < text.length ? "\u2026" : "");
    return [before, text.slice(at, at + word.length), after];
}

function markedText(text, word) {
    const [before, found, after] = excerpt(text, word);
    return make("bdi", {}, visible(before), found ? make("mark", {}, visible(found)) : null, visible(after));
}

function targetName({ block, row }) {
    return row ? [catalogName(block.name), ".", catalogName(row.name)] : catalogName(block.name);
}

export class SearchBox {
    /** `elements`: input, panel, list, status and filters of the page. `go` opens the place of an address. */
    constructor(catalog, search, elements, go) {
        this.catalog = catalog;
        this.search = search;
        Object.assign(this, elements);
        this.go = go;
        this.filter = { ...kNoFilter };
        this.results = [];
        this.answered = null; // what the results are those of
        this.active = -1;
        this.limit = kResultsStep;
        this.makeFilters();
        this.listen();
    }

    listen() {
        this.input.addEventListener("input", () => this.start());
        this.input.addEventListener("focus", () => this.open());
        this.input.addEventListener("keydown", (event) => this.onKey(event));
        document.addEventListener("keydown", (event) => this.onKeyAnywhere(event));
        document.addEventListener("pointerdown", (event) => {
            if (!this.panel.contains(event.target) && event.target !== this.input) {
                this.close();
            }
        });
        this.panel.addEventListener("keydown", (event) => {
            if (event.key === "Escape") {
                this.close();
                this.input.focus();
            }
        });
        // Who goes on with the tabulator is done with the search.
        document.addEventListener("focusin", (event) => {
            if (!this.panel.contains(event.target) && event.target !== this.input) {
                this.close();
            }
        });
        this.list.addEventListener("click", (event) => {
            const option = event.target.closest("[role=option]");
            if (option) {
                this.choose(Number(option.dataset.number));
            }
        });
    }

    makeFilters() {
        const box = (name, label) => {
            const input = make("input", { type: "checkbox" });
            input.addEventListener("change", () => this.setFilter({ [name]: input.checked }));
            return make("label", {}, input, ` ${label}`);
        };
        const choice = (name, label, options) => {
            const select = make("select", {}, make("option", { value: "" }, "all"), options);
            select.addEventListener("change", () =>
                this.setFilter({ [name]: select.value === "" ? null : Number(select.value) }),
            );
            return make("label", {}, `${label} `, select);
        };
        const classes = this.catalog.overview.classes.map(([kind, name], number) =>
            make("option", { value: number }, visible(name === "" ? kind : name)),
        );
        this.filters.append(
            box("isFaulty", "with faults"),
            box("isIncomplete", "incomplete"),
            choice("classNumber", "Class", classes),
            choice("opType", "OPType", this.opTypeOptions()),
        );
    }

    opTypeOptions() {
        return [...Array(kOpTypeCount).keys()].map((opType) => {
            const names = ["property", "method"].map((kind) => this.catalog.operationName(kind, opType));
            const label = [...new Set(names)].join(" / ");
            return make("option", { value: opType }, `${hex(opType, 1)} ${label}`);
        });
    }

    setFilter(change) {
        Object.assign(this.filter, change);
        this.start();
    }

    get isOpen() {
        return !this.panel.hidden;
    }

    open() {
        this.search.load();
        this.panel.hidden = false;
        this.input.setAttribute("aria-expanded", String(this.results.length > 0));
    }

    close() {
        this.panel.hidden = true;
        this.input.setAttribute("aria-expanded", "false");
        this.setActive(-1);
    }

    onKeyAnywhere(event) {
        const isTyping = event.target.closest?.("input:not([type=checkbox]), textarea");
        if (event.key === "/" && !isTyping && !event.ctrlKey && !event.metaKey && !event.altKey) {
            event.preventDefault();
            this.input.focus();
            this.input.select();
        }
    }

    onKey(event) {
        const moves = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10 };
        if (event.key in moves) {
            event.preventDefault();
            this.open();
            this.move(moves[event.key]);
        } else if (event.key === "Enter") {
            event.preventDefault();
            this.chooseActive();
        } else if (event.key === "Escape") {
            event.preventDefault(); // the word stays
            this.close();
        }
    }

    /** What is asked for: the word and the filters. */
    get question() {
        return JSON.stringify([this.input.value, this.filter]);
    }

    /** Opens the active result or the first, once the results are those of what is asked for. */
    async chooseActive() {
        const { question } = this;
        if (this.answered !== question) {
            this.open();
            await this.run(-1);
            if (this.answered !== question || this.question !== question || !this.isOpen) {
                return; // who goes on typing, or closes the results, wants something else
            }
        }
        this.choose(Math.max(this.active, 0));
    }

    /** One step leads over the ends, from the field to the first and from the last to the field. */
    move(steps) {
        const count = this.list.children.length;
        const last = count - 1;
        const next = this.active + steps;
        if (Math.abs(steps) > 1) {
            this.setActive(Math.min(Math.max(next, 0), last));
        } else {
            this.setActive(next < -1 ? last : next > last ? -1 : next);
        }
    }

    setActive(number) {
        this.list.children[this.active]?.setAttribute("aria-selected", "false");
        this.active = number;
        const option = this.list.children[number];
        if (option) {
            option.setAttribute("aria-selected", "true");
            option.scrollIntoView({ block: "nearest" });
            this.input.setAttribute("aria-activedescendant", option.id);
        } else {
            this.input.removeAttribute("aria-activedescendant");
        }
    }

    choose(number) {
        if (number === this.results.length && this.hasMore) {
            this.limit += kResultsStep;
            this.run(number);
        } else if (this.results[number]) {
            this.go(addressOf(this.results[number]));
            this.close();
        }
    }

    /** A search from the beginning. */
    start() {
        this.limit = kResultsStep;
        this.open();
        this.run(-1);
    }

    async run(active) {
        const { question } = this;
        const query = this.input.value;
        await this.search.load();
        if (question !== this.question) {
            return; // another key has started another search
        }
        const found = await this.search.find(query, this.filter, this.limit);
        if (found) {
            this.answered = question;
            this.show(found, folded(query.trim()));
            this.list.dataset.query = query; // for those who wait for it
            this.setActive(Math.min(active, this.list.children.length - 1));
        }
    }

    show({ results, hasMore }, word) {
        this.results = results;
        this.hasMore = hasMore;
        this.active = -1;
        const options = results.map((result, number) => this.option(number, this.resultParts(result, word)));
        if (hasMore) {
            options.push(
                this.option(results.length, make("span", { class: "show-more" }, "Show more results")),
            );
        }
        this.list.replaceChildren(...options);
        this.list.hidden = options.length === 0;
        this.input.setAttribute("aria-expanded", String(this.isOpen && options.length > 0));
        this.status.textContent = this.statusText(word);
    }

    statusText(word) {
        if (word === "" && !isFiltering(this.filter)) {
            return "";
        }
        if (this.hasMore) {
            return `The first ${counted(this.results.length, "result")}`;
        }
        return this.results.length === 0 ? "Nothing found" : counted(this.results.length, "result");
    }

    option(number, content) {
        const attributes = {
            role: "option",
            id: `result-${number}`,
            "aria-selected": "false",
            "data-number": number,
        };
        return make("li", attributes, content);
    }

    resultParts(result, word) {
        const isTarget = result.topic === "address";
        return [
            make("span", { class: "topic" }, isTarget ? (result.row ? "function" : "block") : result.topic),
            make(
                "span",
                { class: "found" },
                isTarget ? targetName(result) : markedText(result.text, word),
                result.context && result.topic !== "description"
                    ? [" ", make("span", { class: "of" }, "of ", catalogText(result.context))]
                    : null,
            ),
            make(
                "span",
                { class: "where" },
                make("code", {}, addressOf(result)),
                " ",
                isTarget ? "" : targetName(result),
            ),
        ];
    }
}
