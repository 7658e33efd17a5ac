// What is looked for in scripts: faults first, then the one dialect of pages, simulator and tests.
import js from "@eslint/js";
import globals from "globals";

const faults = {
  "array-callback-return": "error",
  "consistent-return": "error",
  "default-case-last": "error",
  "eqeqeq": "error",
  "no-constructor-return": "error",
  "no-eval": "error",
  "no-extend-native": "error",
  "no-implicit-coercion": "error",
  "no-implied-eval": "error",
  "no-new-func": "error",
  "no-new-wrappers": "error",
  "no-param-reassign": "error",
  "no-return-assign": "error",
  "no-script-url": "error",
  "no-self-compare": "error",
  "no-shadow": "error",
  "no-template-curly-in-string": "error",
  "no-throw-literal": "error",
  "no-unmodified-loop-condition": "error",
  "no-unreachable-loop": "error",
  "no-unused-expressions": "error",
  "no-use-before-define": ["error", { functions: false, classes: false, variables: false }],
  "prefer-promise-reject-errors": "error",
};

const dialect = {
  "arrow-parens": "error",
  "brace-style": ["error", "1tbs", { allowSingleLine: true }],
  "comma-dangle": ["error", "always-multiline"],
  "no-tabs": "error",
  "no-trailing-spaces": "error",
  "no-useless-rename": "error",
  "no-restricted-syntax": ["error", { selector: "VariableDeclarator > Identifier[name=/^[A-Z][A-Z0-9_]+$/]", message: "Constants are camelCase." }],
  "no-var": "error",
  "object-curly-spacing": ["error", "always"],
  "object-shorthand": ["error", "methods"],
  "prefer-const": "error",
  "prefer-template": "error",
  "quotes": ["error", "double", { avoidEscape: true }],
  "semi": "error",
};

// Text that came from elsewhere is never read as HTML.
const message = "Set textContent, or append elements.";
const markup = {
  "no-restricted-properties": ["error", { object: "document", property: "write", message },
    ...["innerHTML", "outerHTML", "insertAdjacentHTML"].map((property) => ({ property, message }))],
};

export default [
  { linterOptions: { reportUnusedDisableDirectives: "error" } },
  js.configs.recommended,
  { languageOptions: { ecmaVersion: 2022, sourceType: "module" }, rules: { ...faults, ...dialect } },
  { files: ["rootfs/**/*.js", "simulator/web/*.js"], languageOptions: { globals: globals.browser }, rules: markup },
  { files: ["**/*.mjs"], languageOptions: { globals: globals.node } },
  { files: ["tests/browser/*.mjs"], languageOptions: { globals: globals.browser } },
  { files: ["tests/**/*.mjs"], rules: { "no-script-url": "off" } },  // hostile texts
];
