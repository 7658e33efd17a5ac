// Words in texts of any language: case, accents and signs between letters do not count.
const variants = { ß: "ss", ς: "σ", ı: "i", ø: "o", æ: "ae", œ: "oe", ł: "l", đ: "d", ى: "ي", ة: "ه", "ـ": "" };
const withoutSpaces = /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\p{Script=Thai}\p{Script=Lao}\p{Script=Khmer}\p{Script=Myanmar}]/u;

const foldSign = (sign) => sign.normalize("NFKD").replace(/[\p{M}\p{Cf}]/gu, "").toLowerCase().replace(/[ßςıøæœłđىةـ]/g, (one) => variants[one]);

export const fold = (text) => [...text].map(foldSign).join("");

// A word of a search as a pattern for folded texts: it stands at the beginning of a word, in scripts without spaces
// anywhere. Arabic words may have their article before them.
function patternOf(word) {
  const letters = word.match(/[\p{L}\p{N}]/gu);
  if (!letters) return word.replace(/[\\^$.*+?()[\]{}|/]/g, "\\$&");
  const start = withoutSpaces.test(word) ? "" : "(?<![\\p{L}\\p{N}])(?:ال)?";
  return start + letters.join("[^\\p{L}\\p{N}\\s]?");
}

// The words of what somebody types, as patterns, and the whole of it, folded.
export function readQuery(text) {
  const words = fold(text).split(/\s+/).filter(Boolean);
  return { whole: words.join(" "), patterns: words.map((word) => new RegExp(patternOf(word), "u")) };
}

// Parts of the text, in turns without and with a match: ["", "Dial", " tone"].
export function split(text, { patterns }) {
  const places = [];  // of the folded text's units
  let folded = "", place = 0;
  for (const sign of text) {
    const unit = foldSign(sign);
    for (let i = 0; i < unit.length; ++i) places.push(place);
    folded += unit;
    place += sign.length;
  }
  places.push(text.length);
  const isMatch = new Array(text.length).fill(false);
  for (const { source } of patterns) {
    for (const { 0: match, index } of folded.matchAll(new RegExp(source, "gu"))) {
      const last = places[index + match.length - 1];
      const end = places.find((one) => one > last) ?? text.length;
      if (match) isMatch.fill(true, places[index], end);
    }
  }
  const parts = [""];
  isMatch.forEach((match, at) => {
    if (match !== (parts.length % 2 === 0)) parts.push("");
    parts[parts.length - 1] += text[at];
  });
  return parts;
}

// What a text is worth to a search that finds a word in it.
const equal = 2, begins = 1;
const worth = { labelStart: 5, titleStart: 5, label: 4, title: 3, heading: 2, help: 1 };

function worthOf(pattern, { label, isPage, heading, help, page }) {
  const at = label.search(pattern);
  if (at === 0) return isPage ? worth.titleStart : worth.labelStart;
  if (at > 0) return isPage ? worth.title : worth.label;
  if (heading.search(pattern) >= 0) return worth.heading;
  return help.search(pattern) >= 0 ? worth.help : page.search(pattern) >= 0 ? -worth.help : 0;
}

// How well an entry of folded texts fits; 0 when not all words are in it, or all are those of its page alone.
export function rate(entry, { whole, patterns }) {
  const found = patterns.map((pattern) => worthOf(pattern, entry));
  if (found.includes(0) || found.every((one) => one < 0)) return 0;
  const extra = entry.label === whole ? equal : entry.label.startsWith(whole) ? begins : 0;
  return found.reduce((sum, one) => sum + Math.abs(one), 0) / found.length + extra;
}
