// The whole catalog: its blocks, and what of it is lost.

import { addressText } from "./address.js";
import { catalogName, catalogText, make, makeTable } from "./dom.js";
import { faultCount, faultList } from "./fault_view.js";
import { fillInSteps } from "./steps.js";
import { counted, grouped, hex } from "./text.js";

const kAddressesStep = 200;

function figure(count, what) {
    return make("div", {}, make("dt", {}, what), make("dd", {}, grouped(count)));
}

function figures(catalog) {
    const { functions, messages, faults, areFaultsCut } = catalog.overview;
    return make(
        "dl",
        { class: "figures" },
        figure(catalog.blocks.length, "blocks"),
        figure(functions, "functions"),
        figure(messages, "messages"),
        figure(faults, areFaultsCut ? "faults, and more" : "faults"),
    );
}

function incompleteBadge(count) {
    return count === 0
        ? make("span", { class: "faint" }, "\u2013")
        : make("span", { class: "badge layout-incomplete" }, `${grouped(count)} incomplete`);
}

function blockRow(block) {
    const faint = () => make("span", { class: "faint" }, "\u2013");
    return make(
        "tr",
        {},
        make("td", { class: "code" }, hex(block.id, 2)),
        make(
            "th",
            { scope: "row" },
            make("a", { href: `#${addressText(block.id)}` }, catalogName(block.name)),
        ),
        make("td", {}, block.kind ? catalogText(block.kind) : faint()),
        make("td", {}, block.version ? catalogText(block.version) : faint()),
        make("td", { class: "number" }, grouped(block.count)),
        make("td", {}, faultCount(block.faults)),
        make("td", {}, incompleteBadge(block.incomplete)),
    );
}

function blockTable(catalog) {
    const columns = [
        "ID",
        "Block",
        "Kind",
        "Version",
        make("th", { scope: "col", class: "number" }, "Functions"),
        "Faults",
        "Layouts",
    ];
    return makeTable("Table of the function blocks", columns, catalog.blocks.map(blockRow), {
        class: "blocks",
    });
}

/** Addresses of operations as links. */
function addressList(addresses, label) {
    if (addresses.length === 0) {
        return null;
    }
    const list = make("ul", { class: "addresses", "aria-label": label });
    const more = fillInSteps(list, addresses.length, kAddressesStep, "message", (place) =>
        make("li", {}, make("a", { href: `#${addresses[place]}` }, addresses[place])),
    );
    return [make("h3", {}, `${label} (${grouped(addresses.length)})`), list, more];
}

/** What was lost, or that nothing was. */
function lossSection(catalog, others) {
    const { lostBlocks = 0, lostFunctions = 0, lostMessages = 0, incomplete } = catalog.overview;
    const lost = [
        [lostBlocks, "block"],
        [lostFunctions, "function"],
        [lostMessages, "message"],
    ].filter(([count]) => count > 0);
    const words = lost.map(([count, what]) => counted(count, what)).join(", ");
    const isWhole = words === "" && incomplete.length === 0;
    return make(
        "section",
        { "aria-labelledby": "losses" },
        make("h2", { id: "losses" }, "What was lost"),
        make(
            "p",
            {},
            isWhole
                ? "Nothing: all of the catalog could be read."
                : words === ""
                  ? "No element."
                  : `${words}.`,
        ),
        addressList(incomplete, "Messages whose layout is incomplete"),
        faultList(others, make("h3", {}, "Faults outside of the blocks")),
    );
}

/** The faults that are about no block. */
export async function otherFaults(catalog) {
    const piece = catalog.overview.otherFaults;
    return piece ? catalog.store.get(piece) : [];
}

/** The parts below the heading of the catalog. `others`: its other faults. */
export function overviewParts(catalog, others) {
    return [
        figures(catalog),
        make(
            "section",
            { "aria-labelledby": "blocks" },
            make("h2", { id: "blocks" }, "Function blocks"),
            blockTable(catalog),
        ),
        lossSection(catalog, others),
    ];
}
