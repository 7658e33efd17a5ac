#!/usr/bin/env node
// Makes the list of time zones that a phone is delivered with, from the system's zone data (Debian: tzdata):
// node scripts/make_time_zones.mjs [YEAR]
// Run by hand when the zone data changed; the file it writes is kept in the repository.
//
// Each country has a row for each of its kinds of time, under the name of a place in it. Daylight saving that follows
// the weeks of a month ("last Sunday of March") is written so when it does in the next five years. What does not, such
// as a day after the last Thursday, is written by the dates of YEAR, by default this one. Clock changes that follow no
// rule at all (Morocco, for Ramadan) are left out. The hour is the nearest one; the Chatham Islands change at 2:45.
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { fileURLToPath } from "node:url";

const zoneData = "/usr/share/zoneinfo/";
const target = fileURLToPath(new URL("../rootfs/phone/factory/data/AutoDST.xml", import.meta.url));
const year = Number(process.argv[2] ?? new Date().getFullYear());
const years = 5;  // for which a rule by weeks must hold
const mostRows = 300;

// Where nobody has a desk.
const skippedCountries = new Set(["AQ", "CC", "CX", "GS", "IO", "PN", "SJ", "TF", "UM"]);
const skippedZones = new Set(["America/Atikokan", "America/Blanc-Sablon", "America/Danmarkshavn", "America/Thule", "Australia/Eucla", "Europe/Simferopol"]);
// The places that people look for, where the zone data lists others first, and some beside those.
const knownPlaces = ["Australia/Sydney", "Australia/Adelaide", "America/Sao_Paulo", "America/Manaus", "America/Rio_Branco",
  "America/Punta_Arenas", "America/Whitehorse", "Asia/Krasnoyarsk", "Asia/Tashkent", "Asia/Yakutsk", "Europe/Samara"];
const furtherPlaces = ["Australia/Melbourne", "Asia/Novosibirsk"];

// What else people look for in a row.
const placeNames = { "America/Chicago": "Central, Chicago", "America/Denver": "Mountain, Denver", "America/Los_Angeles": "Pacific, Los Angeles",
  "America/New_York": "Eastern, New York", "Asia/Ho_Chi_Minh": "Hanoi, Ho Chi Minh City", "Asia/Kolkata": "New Delhi, Mumbai",
  "Asia/Shanghai": "Beijing, Shanghai" };
const countryNames = { AS: "American Samoa", BQ: "Caribbean Netherlands", CD: "DR Congo", CF: "Central African Republic", CG: "Congo", GB: "United Kingdom",
  KP: "North Korea", KR: "South Korea", MF: "Saint Martin", MM: "Myanmar", PS: "Palestine", SX: "Sint Maarten", SZ: "Eswatini",
  TC: "Turks and Caicos Islands", VG: "British Virgin Islands", VI: "US Virgin Islands", WS: "Samoa" };

const table = (name) => readFileSync(zoneData + name, "utf8").split("\n").filter((line) => line && !line.startsWith("#")).map((line) => line.split("\t"));
const countries = new Map(table("iso3166.tab").map(([code, name]) => [code, countryNames[code] ?? name.replace(" & ", " and ").replace(/^St /, "Saint ")]));

// The rule for the years to come, as the last line of a zone's file tells it, without the names of its times.
const futureOf = (zone) => readFileSync(zoneData + zone, "latin1").trimEnd().split("\n").at(-1).replace(/<[^>]*>|[A-Za-z]{3,}/g, "x");

// {country, zone}: of each country's places those that differ in their time.
function places() {
  const chosen = new Map();
  for (const [country, , zone] of table("zone.tab")) {
    if (skippedCountries.has(country) || skippedZones.has(zone)) continue;
    const kind = furtherPlaces.includes(zone) ? zone : `${country} ${futureOf(zone)}`;
    if (!chosen.has(kind) || knownPlaces.includes(zone)) chosen.set(kind, { country, zone });
  }
  return [...chosen.values()];
}

function nameOf({ country, zone }) {
  const place = placeNames[zone] ?? zone.split("/").at(-1).replaceAll("_", " ").replace(/^St /, "Saint ");
  const name = countries.get(country);
  return name.normalize("NFD").replace(/\p{M}/gu, "") === place ? name : `${name} (${place})`;
}

// When the clock of a zone changes in the years: {before, after} (seconds east of UTC) and `at`, by the clock before.
function changesOf(zone) {
  const lines = execFileSync("zdump", ["-v", "-c", `${year},${year + years}`, zone], { encoding: "utf8" }).split("\n");
  const looks = lines.flatMap((line) => {
    const [, utc, offset] = / (\w{3} +\d+ [\d:]+ \d{4}) UTC? = .*gmtoff=(-?\d+)$/.exec(line) ?? [];
    return utc ? [{ time: Date.parse(`${utc} UTC`), offset: Number(offset) }] : [];
  }).filter(({ time }) => new Date(time).getUTCFullYear() >= year);
  return looks.flatMap(({ time, offset }, index) => {
    const before = looks[index - 1];
    if (before?.time !== time - 1000 || before.offset === offset) return [];
    return [{ before: before.offset, after: offset, at: new Date(time + before.offset * 1000) }];
  });
}

const hourOf = (at) => Math.round(at.getUTCHours() + at.getUTCMinutes() / 60);
const weekday = (at) => at.getUTCDay() || 7;  // 1 is Monday, 7 Sunday
const isLast = (at) => new Date(at.getTime() + 7 * 86_400_000).getUTCMonth() !== at.getUTCMonth();

const byDate = (at) => `${at.getUTCMonth() + 1}/${at.getUTCDate()}/${hourOf(at)}`;

// month/week/weekday/hour, week 5 being the last one; null when the times of the years have none in common.
function byWeek(times) {
  const areLast = times.every(isLast);
  const rules = new Set(times.map((at) => [at.getUTCMonth() + 1, areLast ? 5 : Math.ceil(at.getUTCDate() / 7), weekday(at), hourOf(at)].join("/")));
  return times.length === years && rules.size === 1 ? [...rules][0] : null;
}

function daylightSaving(zone) {
  if (!futureOf(zone).includes(",")) return null;
  const changes = changesOf(zone);
  const [starts, ends] = [1, -1].map((sign) => changes.filter(({ before, after }) => Math.sign(after - before) === sign));
  const shift = (starts[0].after - starts[0].before) / 60;
  const rules = [starts, ends].map((all) => byWeek(all.map(({ at }) => at)));
  if (rules.every(Boolean)) return { type: 1, start: rules[0], end: rules[1], shift };
  const inYear = [starts, ends].map((all) => all.filter(({ at }) => at.getUTCFullYear() === year));
  if (inYear.some((all) => all.length !== 1)) throw new Error(`${zone} has no one rule for ${year}`);
  return { type: 0, start: byDate(inYear[0][0].at), end: byDate(inYear[1][0].at), shift };
}

// Minutes east of UTC, without daylight saving: the smaller of the offsets, whatever the zone's law calls standard.
const offsetOf = (zone) => Math.min(...futureOf(zone).split(",")[0].match(/[+-]?\d+(:\d+)?/g).map((text) => {
  const [hours, minutes = 0] = text.replace(/[+-]/, "").split(":").map(Number);
  return (text.startsWith("-") ? 1 : -1) * (hours * 60 + minutes);
}));

function offsetText(minutes) {
  if (minutes === 0) return "0";
  const [hours, rest] = [Math.floor(Math.abs(minutes) / 60), Math.abs(minutes) % 60];
  return `${minutes < 0 ? "-" : "+"}${hours}${rest ? `:${String(rest).padStart(2, "0")}` : ""}`;
}

const escape = (text) => text.replaceAll("&", "&amp;").replaceAll('"', "&quot;");

const rows = [{ offset: 0, name: "UTC", rule: null },
  ...places().map((place) => ({ offset: offsetOf(place.zone), name: nameOf(place), rule: daylightSaving(place.zone) }))]
  .sort((one, other) => one.offset - other.offset || (one.name < other.name ? -1 : 1));
const twice = rows.map(({ name }) => name).filter((name, index, names) => names.indexOf(name) < index);
if (rows.length > mostRows || twice.length) throw new Error(`${rows.length} rows, twice: ${twice}`);

const release = /# version (\S+)/.exec(readFileSync(`${zoneData}tzdata.zi`, "utf8"))[1];
const lines = rows.map(({ offset, name, rule }) => {
  const saving = rule ? ` iType="${rule.type}" szStart="${rule.start}" szEnd="${rule.end}" szOffset="${rule.shift}"` : "";
  return `\t<zone szTime="${offsetText(offset)}" szZone="${escape(name)}"${saving} />\n`;
});
writeFileSync(target, `<?xml version="1.0" encoding="utf-8"?>
<!-- From release ${release} of the zone data; rules by date are those of ${year}. -->
<zones>\n${lines.join("")}</zones>\n`);
console.log(`${rows.length} zones: ${rows.filter(({ rule }) => rule?.type === 1).length} rules by week, ` +
  `by date: ${rows.filter(({ rule }) => rule?.type === 0).map(({ name }) => name).join(", ")}`);
