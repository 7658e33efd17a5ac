// What a tar archive holds, read in the browser. Nothing is taken on trust: a broken archive is told as one.
const block = 512;
const mostEntries = 20_000;
const decoder = new TextDecoder();

const textOf = (bytes) => {
  const end = bytes.indexOf(0);
  return decoder.decode(end < 0 ? bytes : bytes.subarray(0, end));
};

const octalOf = (bytes) => {
  const text = textOf(bytes).trim();
  return /^[0-7]*$/.test(text) ? Number.parseInt(text || "0", 8) : NaN;
};

function isHeader(header) {
  let sum = 0;
  for (let i = 0; i < block; ++i) sum += i >= 148 && i < 156 ? 32 : header[i];
  return sum === octalOf(header.subarray(148, 156));
}

function pathOf(header) {
  const name = textOf(header.subarray(0, 100));
  const isPosix = textOf(header.subarray(257, 263)) === "ustar";
  const prefix = isPosix ? textOf(header.subarray(345, 500)) : "";
  return prefix ? `${prefix}/${name}` : name;
}

// The fields of an extended header: lines of "LENGTH NAME=VALUE".
function extension(bytes) {
  const fields = {};
  for (let at = 0; at < bytes.length;) {
    const blank = bytes.indexOf(32, at);
    const length = Number(decoder.decode(bytes.subarray(at, blank)));
    if (blank < 0 || !Number.isInteger(length) || length <= blank - at || at + length > bytes.length) break;
    const [, name, value] = /^([^=]*)=([^]*)\n$/.exec(decoder.decode(bytes.subarray(blank + 1, at + length))) ?? [];
    if (name) fields[name] = value;
    at += length;
  }
  return fields;
}

const kinds = new Map([["0", "file"], ["\0", "file"], ["7", "file"], ["5", "folder"], ["1", "link"], ["2", "link"]]);

// {entries: [{path, kind, bytes}], isWhole}: kind is "file", "folder", "link" or "other". No tar archive at all has no
// entries; one that is cut short or broken is not whole.
export function readTar(bytes) {
  const entries = [];
  let next = {};  // what extended headers say of the entry behind them
  let at = 0;
  while (at + block <= bytes.length && entries.length < mostEntries) {
    const header = bytes.subarray(at, at + block);
    if (header.every((byte) => byte === 0)) return { entries, isWhole: true };
    const size = Number(next.size ?? octalOf(header.subarray(124, 136)));
    if (!isHeader(header) || !Number.isInteger(size) || at + block + size > bytes.length) return { entries, isWhole: false };
    const content = bytes.subarray(at + block, at + block + size);
    const type = String.fromCharCode(header[156]);
    if (type === "L") next.path = textOf(content);
    else if (type === "x") next = { ...next, ...extension(content) };
    else if (type !== "K" && type !== "g") {
      const path = next.path ?? pathOf(header);
      const kind = kinds.get(type) ?? "other";
      entries.push({ path, kind: kind === "file" && path.endsWith("/") ? "folder" : kind, bytes: content });
      next = {};
    }
    at += block + Math.ceil(size / block) * block;
  }
  return { entries, isWhole: at >= bytes.length && at > 0 };
}
