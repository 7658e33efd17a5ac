// The delivered pages as text, taken apart for the checks of templates and languages.
import { existsSync, readdirSync, readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { runInNewContext } from "node:vm";

const top = fileURLToPath(new URL("../../", import.meta.url));
const www = `${top}rootfs/phone/www/`;

export const read = (folder, ending, recursive = false) => readdirSync(folder, { recursive })
  .filter((name) => name.endsWith(ending))
  .map((name) => ({ name, text: readFileSync(`${folder}/${name}`, "utf8") }));

const templateFolder = `${www}WEB-INFO/template`;
export const pages = read(templateFolder, ".htm");
export const includes = read(`${templateFolder}/include`, ".htm");
export const templates = [...pages, ...includes];
export const scripts = read(`${www}htdocs/js`, ".js");
export const handlers = ["servlet", "framework"].flatMap((folder) => [".cpp", ".h"].flatMap((ending) => read(top + folder, ending, true)));

const fileOf = (address) => address.split("/").at(-1);

// {name, code, direction, texts}, and in `places` the texts by where they stand: "" is the language's own file, each
// other one the name of a section's file, which a page loads when its name begins as `sections` says.
export const languages = read(`${www}htdocs/language`, ".js").map(({ name, text }) => {
  const window = {};
  runInNewContext(text, { window });
  const language = { name: name.replace(/\.js$/, ""), sections: {}, ...window.phoneLanguage };
  const places = { "": language.texts };
  for (const address of Object.values(language.sections)) {
    const file = `${www}htdocs${address}`;
    places[fileOf(address)] = existsSync(file) ? runInNewContext(readFileSync(file, "utf8").replace("export default", "texts ="), {}) : {};
  }
  return { ...language, places, texts: Object.assign({}, ...Object.values(places)) };
});

const sections = Object.entries(Object.assign({}, ...languages.map((language) => language.sections)));

// The places of the pages that a template, an include or a script is part of.
const users = new Map();
const use = (file, place) => {
  if (!file || users.get(file.name)?.has(place)) return;
  users.set(file.name, (users.get(file.name) ?? new Set()).add(place));
  const named = [...file.text.matchAll(/"\/js\/([\w-]+\.js)"|from "\.\/([\w-]+\.js)"|^import "\.\/([\w-]+\.js)"|\{\{>(\w+)\}\}/gm)];
  for (const [, ...names] of named) {
    const name = names.find(Boolean);
    use([...scripts, ...includes].find((other) => other.name === (name.endsWith(".js") ? name : `${name.toLowerCase()}.htm`)), place);
  }
};
for (const page of pages) use(page, fileOf(sections.find(([start]) => page.name.startsWith(start))?.[1] ?? ""));

// Where a text belongs that these files show: to a section that needs it alone, or to all.
export const placeOf = (files) => {
  const places = new Set(files.flatMap(({ name }) => [...users.get(name) ?? [""]]));
  return places.size === 1 ? [...places][0] : "";
};

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
