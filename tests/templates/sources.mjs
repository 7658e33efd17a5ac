// The delivered pages as text, taken apart for the checks of templates and languages.
import { readdirSync, readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { runInNewContext } from "node:vm";

const top = fileURLToPath(new URL("../../", import.meta.url));
const www = `${top}rootfs/phone/www/`;

export const read = (folder, ending) => readdirSync(folder)
  .filter((name) => name.endsWith(ending))
  .map((name) => ({ name, text: readFileSync(`${folder}/${name}`, "utf8") }));

const templateFolder = `${www}WEB-INFO/template`;
export const pages = read(templateFolder, ".htm");
export const includes = read(`${templateFolder}/include`, ".htm");
export const templates = [...pages, ...includes];
export const scripts = read(`${www}htdocs/js`, ".js");
export const handlers = ["servlet", "framework"].flatMap((folder) => read(top + folder, ".cpp").concat(read(top + folder, ".h")));

export const languages = read(`${www}htdocs/language`, ".js").map(({ name, text }) => {
  const window = {};
  runInNewContext(text, { window });
  return { name: name.replace(/\.js$/, ""), ...window.phoneLanguage };
});

const voidTags = new Set(["input", "meta", "link", "br", "use", "path"]);
const unescape = (text) => text.replaceAll("&lt;", "<").replaceAll("&gt;", ">").replaceAll("&quot;", '"').replaceAll("&amp;", "&");

// A template's tags and texts in order: {tag, attributes} and {text, parents}. Conditions inside a tag are left out.
export function* parts(template) {
  const source = template.replace(/\{\{[!%].*?\}\}/gs, "").replace(/\{\{[#/>]\w+\}\}/g, "");
  const parents = [];
  for (const [, tag, text] of source.matchAll(/(<(?:"[^"]*"|[^">])*>)|([^<]+)/g)) {
    if (text !== undefined) {
      if (text.trim()) yield { text: unescape(text.trim().replace(/\s+/g, " ")), parents: [...parents] };
      continue;
    }
    const [, closing, name, rest] = /^<(\/?)([\w!-]+)(.*)>$/s.exec(tag);
    if (closing) {
      while (parents.length && parents.pop().tag !== name);
      continue;
    }
    const attributes = Object.fromEntries([...rest.matchAll(/([\w-]+)(?:="([^"]*)")?/g)].map(([, key, value = ""]) => [key, unescape(value)]));
    yield { tag: name, attributes, source: tag };
    if (!voidTags.has(name) && !name.startsWith("!")) parents.push({ tag: name, attributes });
  }
}
