// Shows what the address behind "#" names.

import { addressText, parseAddress } from "./address.js";
import { blockDetails, blockLine, blockParts } from "./block_view.js";
import { Catalog } from "./catalog.js";
import { catalogName, catalogText, make } from "./dom.js";
import { makePatterns } from "./drawing_view.js";
import { functionLine, functionParts } from "./function_view.js";
import { otherFaults, overviewParts } from "./overview_view.js";
import { Search } from "./search.js";
import { SearchBox } from "./search_box.js";
import { beginSteps, extendedLists, showAllSteps } from "./steps.js";
import { Store } from "./store.js";
import { visible } from "./text.js";

const byId = (id) => document.getElementById(id);

/** Copies a text even where the page may not use the clipboard by itself. */
async function copy(text) {
    try {
        await navigator.clipboard.writeText(text);
    } catch {
        const field = make("textarea", { class: "unseen", "aria-hidden": "true" });
        field.value = text;
        document.body.append(field);
        field.select();
        document.execCommand("copy");
        field.remove();
    }
}

/** An address as it was before the browser escaped it; whatever else stands there stays. */
function decoded(text) {
    try {
        return decodeURIComponent(text);
    } catch {
        return text;
    }
}

function copyButton() {
    const label = "Copy link";
    const button = make("button", { type: "button", class: "copy" }, label);
    const status = make("span", { role: "status", class: "unseen" });
    button.addEventListener("click", async () => {
        await copy(location.href);
        button.focus();
        button.textContent = "Copied";
        status.textContent = "The link is copied";
        setTimeout(() => {
            button.textContent = label;
            status.textContent = "";
        }, 2000);
    });
    return [button, status];
}

class Page {
    constructor(catalog) {
        this.catalog = catalog;
        this.view = byId("view");
        this.round = 0;
        this.title = document.title;
        this.entered = 0;
        this.key = null; // of the place in the history that is shown
        this.left = new Map(); // how places were left, by their keys
        this.scroll = 0;
        this.hash = null; // that is shown
    }

    start() {
        document.body.append(makePatterns());
        byId("version").append(
            this.catalog.overview.version ? catalogText(this.catalog.overview.version) : "",
        );
        history.scrollRestoration = "manual"; // the browser would scroll before the view is there
        window.addEventListener("hashchange", () => this.show(true));
        window.addEventListener("scroll", () => {
            if (location.hash === this.hash) {
                this.scroll = window.scrollY; // and not the browser's move to the top for another place
            }
        });
        window.addEventListener("beforeprint", showAllSteps);
        byId("skip").addEventListener("click", (event) => {
            event.preventDefault(); // the address stays
            this.focusHeading();
        });
        return this.show(false);
    }

    focusHeading() {
        this.view.querySelector("h1").focus();
    }

    /** Shows the place of the address; what is built meanwhile for another one is dropped. */
    async show(isMove) {
        const round = ++this.round;
        const address = location.hash;
        const hash = decoded(address.slice(1));
        const numbers = parseAddress(hash);
        const target = hash === "" ? {} : numbers && this.catalog.find(numbers);
        this.leave();
        const makeParts = target ? await this.viewOf(target) : () => this.nothing(hash);
        if (round !== this.round) {
            return;
        }
        const left = this.enter();
        beginSteps(left.lists);
        const parts = makeParts();
        this.view.replaceChildren(
            ...parts.flat(Infinity).filter((part) => part !== null && part !== undefined),
        );
        const heading = this.view.querySelector("h1");
        document.title = hash === "" ? this.title : `${hash} ${heading.textContent} \u2013 ${this.title}`;
        window.scrollTo(0, left.scroll ?? 0);
        if (isMove) {
            heading.focus({ preventScroll: true });
        }
        if (left.scroll === undefined) {
            this.view.querySelector("tr.current")?.scrollIntoView({ block: "nearest" });
        }
        this.hash = address;
        this.scroll = window.scrollY;
        this.view.dataset.shown = hash; // for those who wait for it
    }

    /** Remembers how the view was left that is shown. */
    leave() {
        if (this.key !== null) {
            this.left.set(this.key, { scroll: this.scroll, lists: extendedLists() });
        }
    }

    /** How the place was left that is shown next; a new one gets a key. */
    enter() {
        this.key = history.state?.key ?? `${performance.timeOrigin}-${++this.entered}`;
        history.replaceState({ key: this.key }, "");
        return this.left.get(this.key) ?? {};
    }

    /** A promise of what makes the parts of a view, once what they show is unpacked. */
    viewOf(target) {
        if (target.row) {
            return this.functionView(target);
        }
        return target.block ? this.blockView(target.block) : this.overview();
    }

    heading(name, address, line, description) {
        return make(
            "header",
            { class: "heading" },
            make(
                "div",
                { class: "title" },
                make("h1", { tabindex: "-1" }, name),
                address ? make("code", { class: "address" }, address) : null,
                copyButton(),
            ),
            line,
            description ? make("p", { class: "description" }, catalogText(description)) : null,
        );
    }

    /** Where the place stands, and what stands before and behind it. */
    trail(steps, before, behind) {
        const items = steps.map(([address, name]) =>
            make("li", {}, make("a", { href: `#${address}` }, name)),
        );
        const step = (target, label) =>
            target
                ? make(
                      "a",
                      {
                          href: `#${target.address}`,
                          class: "step",
                          "aria-label": `${label}: ${visible(target.name)}`,
                      },
                      label,
                  )
                : null;
        return make(
            "nav",
            { class: "trail", "aria-label": "Place in the catalog" },
            make("ol", {}, items),
            make("div", { class: "steps" }, step(before, "Previous"), step(behind, "Next")),
        );
    }

    async overview() {
        const { overview } = this.catalog;
        const line = overview.version
            ? make("p", { class: "line" }, make("span", {}, "release ", catalogText(overview.version)))
            : null;
        const others = await otherFaults(this.catalog);
        return () => [
            this.heading(catalogText(overview.file), null, line, null),
            overviewParts(this.catalog, others),
        ];
    }

    async blockView(block) {
        const at = (index) => {
            const other = this.catalog.blocks[index];
            return other && { address: addressText(other.id), name: other.name };
        };
        const details = await blockDetails(this.catalog, block);
        return () => [
            this.trail([["", "Catalog"]], at(block.index - 1), at(block.index + 1)),
            this.heading(catalogName(block.name), addressText(block.id), blockLine(block), block.description),
            blockParts(this.catalog, block, details),
        ];
    }

    async functionView({ block, row, opType = null }) {
        const details = await this.catalog.details(row);
        const at = (number) =>
            number >= 0 && number < this.catalog.functionCount ? this.catalog.functionAt(number) : null;
        const steps = [
            ["", "Catalog"],
            [addressText(block.id), [addressText(block.id), " ", catalogName(block.name)]],
        ];
        return () => [
            this.trail(steps, at(row.number - 1), at(row.number + 1)),
            this.heading(
                catalogName(row.name),
                addressText(block.id, row.id, opType),
                functionLine(row, details),
                details.description,
            ),
            functionParts(row, details, opType),
        ];
    }

    nothing(hash) {
        return [
            this.trail([["", "Catalog"]]),
            this.heading("Nothing here", null, null, null),
            make("p", {}, "The catalog has nothing at ", make("code", {}, catalogText(hash)), "."),
        ];
    }
}

async function start() {
    const store = new Store((name) => byId(`data-${name}`).textContent);
    const catalog = await Catalog.load(store);
    const search = new Search(catalog);
    new SearchBox(
        catalog,
        search,
        {
            input: byId("search"),
            panel: byId("panel"),
            list: byId("results"),
            status: byId("found"),
            filters: byId("filters"),
        },
        (address) => {
            location.hash = address;
        },
    );
    await new Page(catalog).start();
    // What is searched is unpacked while somebody looks at the first view.
    setTimeout(() => search.load(), 200);
}

start().catch((error) => {
    byId("view").replaceChildren(
        make("h1", {}, "This page can\u2019t be shown"),
        make("p", {}, `It needs a browser of 2023 or later. (${error.message})`),
    );
});
