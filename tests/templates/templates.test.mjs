// Rules that every template keeps: escaping, the content security policy, users' data never translated, labels.
import assert from "node:assert/strict";
import test from "node:test";
import { includes, pages, parts, templates } from "./sources.mjs";

const elements = (text) => [...parts(text)].filter((part) => part.tag);

for (const { name, text } of templates) {
  test(`${name} keeps the rules`, () => {
    assert.ok(text.startsWith('{{%AUTOESCAPE context="HTML"}}\n'), "escapes by context");
    assert.doesNotMatch(text, /\{\{\w+:|\{\{%(?!AUTOESCAPE context="HTML")/, "no modifier switches escaping off");
    assert.doesNotMatch(text.replace(/="[^"]*"/g, '=""'), /=\s*(?:\{\{|[^\s">{]+\{\{)/, "attributes with variables are quoted");
    assert.doesNotMatch(text, /<[a-z][^>]*\n/, "a tag stands on one line");
    for (const { tag, attributes, source } of elements(text)) {
      assert.ok(tag !== "style" && !("style" in attributes), `no inline style: ${source}`);
      assert.ok(tag !== "script" || "src" in attributes, `no inline script: ${source}`);
      assert.ok(!Object.keys(attributes).some((key) => /^on[a-z]+$/.test(key)), `no inline handler: ${source}`);
      for (const key of ["href", "src", "action"]) {
        if (key in attributes) assert.match(attributes[key], /^(#\w|\/servlet(\?|$)|\/(css|js|language|img)\/)/, source);
      }
      if (attributes.type === "password") assert.ok(["********", undefined].includes(attributes.value), `no secret: ${source}`);
    }
    for (const { text: shown, parents } of [...parts(text)].filter((part) => part.text?.includes("{{"))) {
      const own = parents.at(-1)?.attributes ?? {};
      assert.ok(own.translate === "no" || "data-text" in own, `${shown}: user's data (translate="no") or the phone's text (data-text)?`);
      assert.match(shown, /^\{\{\w+\}\}$/, "a variable stands alone in its element");
    }
  });
}

for (const { name, text } of pages) {
  test(`${name} uses the shared pieces and labels its fields`, () => {
    const markers = [...text.matchAll(/\{\{>(\w+)\}\}/g)].map(([, marker]) => `${marker.toLowerCase()}.htm`);
    for (const marker of ["page_head.htm", "page_end.htm"]) assert.ok(markers.includes(marker), marker);
    for (const marker of markers) assert.ok(includes.some((include) => include.name === marker), marker);
    const all = elements(text);
    const ids = all.map(({ attributes }) => attributes.id).filter(Boolean);
    assert.equal(new Set(ids).size, ids.length, "ids are unique");
    const labels = all.filter(({ tag }) => tag === "label").map(({ attributes }) => attributes.for);
    const isLabelled = ({ tag, attributes: { type, id } }) =>
      !["input", "select", "textarea"].includes(tag) || ["hidden", "radio"].includes(type) || labels.includes(id);
    assert.deepEqual(all.filter((element) => !isLabelled(element)).map(({ source }) => source), [], "fields have labels");
    for (const { attributes } of all.filter((element) => element.attributes.role === "switch")) {
      const twins = all.filter((element) => element.attributes.name === attributes.name);
      assert.deepEqual(twins.map((twin) => [twin.attributes.type, twin.attributes.value]), [["checkbox", "1"], ["hidden", "0"]]);
    }
  });
}
