// Every text that a template, a script or a handler can show is in every language, and no language holds others.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import test from "node:test";
import { handlers, languages, parts, placeOf, scripts, templates } from "./sources.mjs";

const tidy = (text) => text.trim().replace(/\s+/g, " ");
const marked = ["placeholder", "title", "aria-label", "alt"];

function* templateTexts({ text }) {
  for (const part of parts(text)) {
    if (part.tag) {
      for (const key of marked) if (key in part.attributes) yield part.attributes[key];
    } else if (!part.parents.some(({ attributes }) => attributes.translate === "no" || "data-text" in attributes)) {
      yield part.text;
    }
  }
}

const cLiteral = (text) => text.replace(/\\(.)/g, (escape, sign) => ({ n: "\n", t: "\t" })[sign] ?? sign);
const scriptTexts = ({ text }) => [...text.matchAll(/\bt\("((?:[^"\\]|\\.)*)"/g)].map(([, literal]) => cLiteral(literal));

// What handlers can show is listed beside this file, one text a line; "Account%d" stands for "Account" and a number.
const phoneTexts = readFileSync(new URL("phone_texts.txt", import.meta.url), "utf8").split("\n").filter((line) => line && !line.startsWith("#"));

// Sentences among the literals of the handlers; what goes to a log and compile-time checks are left out.
function* sentences({ text }) {
  const code = text.replace(/^\s*(\/\/|#).*$/gm, "").replace(/\b(log_log|static_assert|ActionURISyslog)\((?:"(?:[^"\\]|\\.)*"|[^;"])*;/g, "");
  for (const [run] of code.matchAll(/"(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*/g)) {
    const literal = [...run.matchAll(/"((?:[^"\\\n]|\\.)*)"/g)].map(([, piece]) => cLiteral(piece)).join("");
    yield { literal: tidy(literal), isSentence: /[a-z]{2}[,.!:]* +[A-Za-z]{2}/.test(literal) && !/[/=<>|]|\($|%[^d]/.test(literal) };
  }
}

const literals = handlers.flatMap((file) => [...sentences(file)].map((found) => ({ ...found, file: file.name })));
const withFile = (texts, file) => [...texts].map((text) => [text, file]);
// Each text with the files that show it.
const shown = new Map();
for (const [text, file] of [...templates.flatMap((template) => withFile(templateTexts(template), template)),
  ...scripts.flatMap((script) => withFile(scriptTexts(script), script)), ...withFile(phoneTexts, {})]) {
  shown.set(tidy(text), [...shown.get(tidy(text)) ?? [], file]);
}
// Names and abbreviations that are the same in every language.
const same = new Set(["IPv4", "IPv6", "IPv4 & IPv6", "DHCP", "PPPoE", "UDP", "TCP", "TLS", "DNS SRV", "STUN", "ACD", "Proxy-Require", "RPort", "user=phone", "TR-069", "LDAP", "HTTP", "HTTPS"]);

test("every sentence in a handler is listed as a text it can show, and every listed text is in a handler", () => {
  const listed = new Set(phoneTexts);
  const unlisted = literals.filter(({ literal, isSentence }) => isSentence && !listed.has(literal));
  assert.deepEqual(unlisted.map(({ file, literal }) => `${file}: ${literal}`), []);
  const known = new Set(literals.map(({ literal }) => literal));
  assert.deepEqual(phoneTexts.filter((text) => !known.has(text) && !known.has(text.replace("%d", ""))), []);
});

test("the languages are English, German and one that runs from right to left", () => {
  assert.deepEqual(languages.map(({ name, code, direction }) => [name, code, direction]),
    [["Arabic", "ar", "rtl"], ["English", "en", "ltr"], ["German", "de", "ltr"]]);
});

for (const { name, texts, places } of languages) {
  test(`${name} is complete and holds nothing else`, () => {
    const missing = [...shown.keys()].filter((text) => !(text in texts) && !same.has(text));
    if (name !== "English") assert.deepEqual(missing, []);  // English texts are the keys
    assert.deepEqual(Object.keys(texts).filter((text) => !shown.has(text)), []);
    const astray = Object.entries(places).flatMap(([place, found]) => Object.keys(found).filter((text) => placeOf(shown.get(text)) !== place).map((text) => `${place}: ${text}`));
    if (name !== "English") assert.deepEqual(astray, [], "a text that one section alone needs stands in its file, any other in the language's own");
    for (const [text, translation] of Object.entries(texts)) {
      const marks = (value) => (value.match(/%[1-9d]/g) ?? []).sort();
      assert.ok(translation.trim(), text);
      assert.deepEqual(marks(translation), marks(text), text);
    }
  });
}

if (process.argv.includes("--list")) console.log([...shown.keys()].filter((text) => !same.has(text)).join("\n"));
