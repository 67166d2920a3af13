// Parameters and what they are made of.

import { catalogName, catalogText, make } from "./dom.js";
import { faultList } from "./fault_view.js";
import { fillInSteps } from "./steps.js";

const kRowsStep = 60;
const kMembersStep = 40;

/** Pairs of a word and what there is to say; empty ones are left out. */
function facts(param) {
    const rows = [
        ["In databases", param.databaseName && catalogText(param.databaseName)],
        ["Range", param.range?.replace("..", " .. ")],
        ["Step", param.step],
        ["Exponent", param.exponent],
        ["Unit", param.unit && catalogText(param.unit)],
        ["Chosen by", param.selector && catalogText(param.selector)],
        ["Media type", param.media && catalogText(param.media)],
    ].filter(([, value]) => value !== undefined && value !== "");
    if (rows.length === 0) {
        return null;
    }
    return make(
        "dl",
        { class: "facts" },
        rows.map(([word, value]) => make("div", {}, make("dt", {}, word), make("dd", {}, value))),
    );
}

function smallTable(caption, columns, count, what, makeRow) {
    const rows = make("tbody");
    const more = fillInSteps(rows, count, kRowsStep, what, makeRow);
    const head = make(
        "tr",
        {},
        columns.map((column) => make("th", { scope: "col" }, column)),
    );
    return [
        make(
            "div",
            { class: "scroll", role: "region", "aria-label": caption, tabindex: "0" },
            make("table", { class: "small" }, make("thead", {}, head), rows),
        ),
        more,
    ];
}

/** Codes, names and descriptions stand one behind the other. */
function valueTable(param) {
    return smallTable(
        `Values of ${param.name}`,
        ["Code", "Value"],
        param.values.length / 3,
        "value",
        (row) => {
            const [code, name, description] = param.values.slice(3 * row, 3 * row + 3);
            const more =
                description === "" ? null : make("span", { class: "faint" }, " ", catalogText(description));
            return make(
                "tr",
                {},
                make("th", { scope: "row", class: "code" }, code),
                make("td", {}, catalogText(name), more),
            );
        },
    );
}

function bitTable(param) {
    return smallTable(`Bits of ${param.name}`, ["Bit", "Name", "1", "0"], param.bits.length, "bit", (row) => {
        const [bit, name, whenSet, whenClear] = param.bits[row];
        return make(
            "tr",
            {},
            make("th", { scope: "row", class: "code" }, String(bit)),
            make("td", {}, name === "" ? make("span", { class: "faint" }, "\u2013") : catalogText(name)),
            make("td", {}, catalogText(whenSet)),
            make("td", {}, catalogText(whenClear)),
        );
    });
}

function memberList(param) {
    if (!param.members?.length) {
        return null;
    }
    const list = make("ul", { class: "members" });
    const more = fillInSteps(list, param.members.length, kMembersStep, "member", (place) => {
        const repeated =
            param.repeated === place ? make("p", { class: "note" }, "repeated to the end:") : null;
        return make("li", {}, repeated, member(param.members[place]));
    });
    return [list, more];
}

function member(param) {
    if (param.type === "case") {
        const when = param.when ? ["When ", make("code", {}, catalogText(param.when))] : "Always";
        return make(
            "div",
            { class: "case" },
            make("p", { class: "when" }, when),
            memberList(param) ?? justBytes(),
        );
    }
    const head = make(
        "p",
        { class: "head" },
        make("strong", {}, catalogName(param.name)),
        " ",
        kindLine(param),
    );
    return make("div", { class: "member" }, head, parameterBody(param));
}

const justBytes = () => make("p", { class: "note" }, "bytes that the catalog does not describe");

function kindLine(param) {
    return make("span", { class: "type" }, `${param.type}, ${param.length}`);
}

function parameterBody(param) {
    return [
        param.description ? make("p", { class: "description" }, catalogText(param.description)) : null,
        facts(param),
        param.values?.length ? valueTable(param) : null,
        param.bits?.length ? bitTable(param) : null,
        memberList(param),
    ];
}

/** A parameter of a function, with the messages about it. `operations`: the names of those that it stands in. */
export function parameterSection(param, number, operations, faults) {
    const id = `parameter-${number}`;
    return make(
        "section",
        { class: "parameter", "aria-labelledby": id },
        make("h3", { id }, catalogName(param.name)),
        make("p", { class: "head" }, kindLine(param), make("span", { class: "in faint" }, operations)),
        faultList(faults, null, true),
        parameterBody(param),
    );
}
