// Archives of the configuration: what is in one, and what it would change. Texts of secrets never leave this file.
import { readTar } from "./tar.js";

const secretWords = ["password", "passwd", "pswd", "pwd", "pin", "aeskey", "secret"];
const decoder = new TextDecoder();

export const isSecret = (key) => secretWords.some((word) => key.toLowerCase().includes(word));
const isIni = (path) => /\.(ini|cfg)$/.test(path);

// What the ini format cannot carry stands behind "\:" with "\xNN" for a byte and "\\" for a backslash.
function decoded(text) {
  if (!text.startsWith("\\:")) return text;
  return text.slice(2).replace(/\\(\\|x([0-9a-f]{2}))/g, (mark, sign, byte) => byte ? String.fromCharCode(Number.parseInt(byte, 16)) : "\\");
}

// The settings of an ini file: a map from "section\nkey" to {section, key, value}.
export function readIni(text) {
  const settings = new Map();
  let section = "";
  for (const line of text.replace(/^\uFEFF/, "").split(/[\r\n]+/)) {
    const trimmed = line.trim();
    const [, name] = /^\[(.*)\]/.exec(trimmed) ?? [];
    if (name !== undefined) section = decoded(name);
    const equals = trimmed.indexOf("=");
    if (name !== undefined || equals < 1 || /^[;#[]/.test(trimmed)) continue;
    const key = decoded(trimmed.slice(0, equals).trim());
    settings.set(`${section}\n${key}`, { section, key, value: decoded(trimmed.slice(equals + 1).trim()) });
  }
  return settings;
}

const cleaned = (path) => path.split("/").filter((part) => part && part !== ".");
const hasControls = (text) => [...text].some((sign) => sign < " " || sign === "\x7f");

// Why the phone would refuse an entry; empty when it would not.
function faultOf({ path, kind }, parts) {
  if (kind !== "file" && kind !== "folder") return "kind";
  if (parts.includes("..") || hasControls(path) || parts.some((part) => new TextEncoder().encode(part).length > 255)) return "name";
  const inSet = parts[0] === "factory" || (parts[0] === "phone" && (parts[1] === "factory" || parts.length === 1));
  return inSet && (kind === "folder" || parts.length > (parts[0] === "phone" ? 2 : 1)) ? "" : "place";
}

// {files: a map from the path in "/config" to bytes, faults: [{path, fault}]}. The fault of the whole archive has no
// path: "tar" for none, "cut" for one that is not whole, "empty" for one without settings.
export function readArchive(bytes) {
  const { entries, isWhole } = readTar(bytes);
  const tops = { factory: new Map(), phone: new Map() };
  const faults = [];
  let hasSet = false;
  for (const entry of entries) {
    const parts = cleaned(entry.path);
    if (!parts.length) continue;
    const fault = faultOf(entry, parts);
    if (fault) faults.push({ path: entry.path, fault });
    else if (entry.kind === "file") tops[parts[0]].set(parts.slice(parts[0] === "phone" ? 2 : 1).join("/"), entry.bytes);
    hasSet ||= parts[0] === "factory" || parts[1] === "factory";
  }
  if (!entries.length) faults.push({ fault: "tar" });
  else if (!isWhole) faults.push({ fault: "cut" });
  else if (!hasSet) faults.push({ fault: "empty" });
  const files = entries.some(({ path }) => cleaned(path)[0] === "factory") ? tops.factory : tops.phone;
  if (files.has("htpasswd")) files.set("data/htpasswd", files.get("htpasswd"));
  return { files, faults };
}

const isSame = (one, other) => one.length === other.length && one.every((byte, index) => byte === other[index]);

// The settings that differ: {file, section, key, from, to}; a side is undefined where it has no such setting, and null
// where it holds a secret.
function differences(file, from, to) {
  const [before, after] = [from, to].map((bytes) => readIni(decoder.decode(bytes)));
  const changes = [];
  for (const [name, { section, key }] of new Map([...before, ...after])) {
    const [old, fresh] = [before.get(name)?.value, after.get(name)?.value];
    if (old === fresh) continue;
    const secret = isSecret(key);
    const shown = (value) => secret && value ? null : value;
    changes.push({ file, section, key, from: shown(old), to: shown(fresh) });
  }
  return changes;
}

// What an import of `fresh` changes in `current`, both as files by path.
export function compare(current, fresh) {
  const result = { settings: [], added: [], changed: [], same: [], kept: [...current.keys()].filter((path) => !fresh.has(path)) };
  for (const [path, bytes] of fresh) {
    const old = current.get(path);
    if (!old && !isIni(path)) result.added.push(path);
    else if (old && isSame(old, bytes)) result.same.push(path);
    else if (isIni(path)) {
      result.settings.push(...differences(path, old ?? new Uint8Array(), bytes));
      (old ? result.changed : result.added).push(path);
    } else result.changed.push(path);
  }
  return result;
}

// The secrets that an archive holds: [file, section, key] each.
export function secretsOf(files) {
  const found = [];
  for (const [path, bytes] of files) {
    if (path === "htpasswd" || path === "data/htpasswd") found.push([path, "", ""]);
    if (path.endsWith(".xml") && /\b\w*(?:password|passwd|pswd|pwd|secret)\w*\s*=\s*"[^"]+"/i.test(decoder.decode(bytes))) found.push([path, "", ""]);
    if (!isIni(path)) continue;
    for (const { section, key, value } of readIni(decoder.decode(bytes)).values()) if (value && isSecret(key)) found.push([path, section, key]);
  }
  return found;
}

// How many settings its ini files hold.
export const countSettings = (files) =>
  [...files].filter(([path]) => isIni(path)).reduce((count, [, bytes]) => count + readIni(decoder.decode(bytes)).size, 0);
