// What the scripts of the page have to keep to. ESLint is started in the folder of the project.

import js from "@eslint/js";

const kBrowser = [
    "Blob",
    "DecompressionStream",
    "Element",
    "Response",
    "atob",
    "document",
    "history",
    "location",
    "navigator",
    "performance",
    "setTimeout",
    "window",
];
const kNode = ["Buffer", "performance"];

const readable = (names) => Object.fromEntries(names.map((name) => [name, "readonly"]));

// Texts of the catalog must never be read as HTML or script.
const kUnsafe = ["innerHTML", "outerHTML", "insertAdjacentHTML", "setHTMLUnsafe", "write", "writeln"].map(
    (property) => ({ property, message: "dom.js makes elements." }),
);

export default [
    js.configs.recommended,
    {
        rules: {
            curly: "error",
            eqeqeq: "error",
            "no-eval": "error",
            "no-implied-eval": "error",
            "no-new-func": "error",
            "no-restricted-properties": ["error", ...kUnsafe],
            "no-shadow": "error",
            "no-var": "error",
            "object-shorthand": "error",
            "prefer-const": "error",
        },
    },
    { files: ["src/page/web/*.js"], languageOptions: { globals: readable(kBrowser) } },
    { files: ["tests/page/*.js"], languageOptions: { globals: readable(kNode) } },
];
