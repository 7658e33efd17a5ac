// Words of a search: in every script, in any case, with signs that are no letters, and with markup.
import assert from "node:assert/strict";
import test from "node:test";
import { fold, rate, readQuery, split } from "../../rootfs/phone/www/htdocs/js/search-words.js";

const entry = (label, more = {}) => ({ label: fold(label), heading: "", help: "", page: "", isPage: false, ...more });

test("words are found at their beginnings, or anywhere in scripts without spaces", () => {
  const rows = [
    // text, what finds parts of it (in turns beside and in the match), what does not
    ["Dial tone", { "dia": ["", "Dia", "l tone"], "TONE  dial ": ["", "Dial", " ", "tone"], "e": null, "tones": null, "ial": null }],
    ["TR-069 on", { tr069: ["", "TR-069", " on"], "tr-0": ["", "TR-0", "69 on"], "069": ["TR-", "069", " on"], "o": ["TR-069 ", "o", "n"] }],
    ["Größe, naïve Ångström", { GROSSE: ["", "Größe", ", naïve Ångström"], "größ nai": ["", "Größ", "e, ", "naï", "ve Ångström"], ang: ["Größe, naïve ", "Ång", "ström"], ö: null }],
    ["Straße", { "strass": ["", "Straß", "e"], "stras": ["", "Straß", "e"] }],
    ["مدة الشبكة", { "شبكه": ["مدة ", "الشبكة"], "الشب": ["مدة ", "الشب", "كة"], "بكة": null, "مُدّ": ["", "مد", "ة الشبكة"] }],
    ["网络设置", { 设置: ["网络", "设置"], 络: ["网", "络", "设置"], 置网: null }],
    ["การตั้งค่า", { "ตั้ง": ["การ", "ตั้ง", "ค่า"] }],
    ["네트워크 설정", { 네트: ["", "네트", "워크 설정"], 설: ["네트워크 ", "설", "정"], 정: null }],
    ["Ｗｉ‑Ｆｉ ΟΔΟΣ Ёлка", { "wi-fi": ["", "Ｗｉ‑Ｆｉ", " ΟΔΟΣ Ёлка"], οδος: ["Ｗｉ‑Ｆｉ ", "ΟΔΟΣ", " Ёлка"], елка: ["Ｗｉ‑Ｆｉ ΟΔΟΣ ", "Ёлка"] }],
    ["Send # 😀 unchanged", { "#": ["Send ", "#", " 😀 unchanged"], "😀": ["Send # ", "😀", " unchanged"], "<b>": null, "(": null, "[a-z]": null, ".*": null, "\\": null, "$1": null }],
  ];
  for (const [text, searches] of rows) {
    for (const [typed, parts] of Object.entries(searches)) {
      const query = readQuery(typed);
      assert.equal(rate(entry(text), query) > 0, parts !== null, `${text}: ${typed}`);
      if (parts) assert.deepEqual(split(text, query), parts, `${text}: ${typed}`);
    }
  }
  assert.equal(readQuery(" \t ").whole, "");
});

test("a label goes before a page's title, a heading and a help text, and all words have to be found", () => {
  const ranked = [entry("Port"), entry("Port of STUN"), entry("STUN port"), entry("A port", { isPage: true }),
    entry("x", { heading: "port" }), entry("x", { help: "a port" }), entry("x", { page: "port" }), entry("sport")];
  const values = ranked.map((one) => rate(one, readQuery("port")));
  assert.deepEqual(values, [7, 6, 4, 3, 2, 1, 0, 0]);
  const both = readQuery("port network");
  assert.deepEqual([entry("Port", { page: "network" }), entry("Port"), entry("x", { page: "network port" })].map((one) => rate(one, both) > 0),
    [true, false, false]);
});
