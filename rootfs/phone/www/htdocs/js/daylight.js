// Rules of daylight saving for people: as sentences, and as the fields of the phone's own rule.
import { t } from "./i18n.js";

export const byDate = "0";
export const byWeek = "1";

const { lang } = document.documentElement;
export const locale = lang === "en" ? "en-GB" : lang;
const format = (options, month, day) => new Intl.DateTimeFormat(locale, { ...options, timeZone: "UTC" }).format(Date.UTC(2024, month - 1, day));

const monthName = (month) => format({ month: "long" }, month, 1);
const weekdayName = (day) => format({ weekday: "long" }, 1, day);  // 1 January 2024 was a Monday
const hourText = (hour) => `${String(hour).padStart(2, "0")}:00`;

const weekday = {
  1: (day, month) => t("first %1 of %2", day, month),
  2: (day, month) => t("second %1 of %2", day, month),
  3: (day, month) => t("third %1 of %2", day, month),
  4: (day, month) => t("fourth %1 of %2", day, month),
  5: (day, month) => t("last %1 of %2", day, month),
};
const weekNames = () => [t("First"), t("Second"), t("Third"), t("Fourth"), t("Last")];

function dayText(kind, { month, week, day }) {
  if (kind === byDate) return format({ day: "numeric", month: "long" }, month, day);
  return weekday[week]?.(weekdayName(day), monthName(month));
}

// What a rule says, in lines.
export function sentences({ kind, start, end, shift }) {
  if (kind !== byDate && kind !== byWeek) return [t("This time zone has no daylight saving time.")];
  const isWhole = [start, end].every(({ month, day, hour, week = "1" }) => Number(month) && Number(day) && Number(week) && hour);
  if (!isWhole) return [t("The rule of this time zone is not complete.")];
  return [
    t("Begins: %1, %2", dayText(kind, start), hourText(start.hour)),
    t("Ends: %1, %2", dayText(kind, end), hourText(end.hour)),
    ...shift ? [t("The clock is put forward by %1 minutes.", shift)] : [],
  ];
}

const numbers = (first, last) => Array.from({ length: last - first + 1 }, (_, index) => first + index);
const choices = {
  month: () => numbers(1, 12).map((month) => [month, monthName(month)]),
  week: () => weekNames().map((name, index) => [index + 1, name]),
  weekday: () => numbers(1, 7).map((day) => [day, weekdayName(day)]),
  day: () => numbers(1, 31).map((day) => [day, day]),
  hour: () => numbers(0, 23).map((hour) => [hour, hourText(hour)]),
};

const daysOf = (month) => new Date(Date.UTC(2024, month || 1, 0)).getUTCDate();  // February has 29

// The fields of a boundary: selects that are named like its parts.
export class BoundaryFields {
  constructor(element, kind) {
    this.element = element;
    this.selects = {};
    for (const select of element.querySelectorAll("select")) {
      const part = /(Month|Week|Day|Hour)$/.exec(select.name)[1].toLowerCase();
      this.selects[part] = select;
      const options = choices[part === "day" && kind === byWeek ? "weekday" : part]();
      select.append(new Option("–", ""), ...options.map(([value, text]) => new Option(text, value)));
    }
    if (kind === byDate) this.selects.month.addEventListener("change", () => this.limitDays());
  }

  // Offers the days that the month has.
  limitDays() {
    const { month, day } = this.selects;
    const last = daysOf(month.value);
    for (const option of day.options) option.hidden = option.disabled = Number(option.value) > last;
    if (Number(day.value) > last) day.value = String(last);
  }

  // Shows a boundary; as the stored one, it is what a reset brings back.
  show(boundary, isStored) {
    for (const [part, select] of Object.entries(this.selects)) {
      const value = /^\d+$/.test(boundary[part] ?? "") ? String(Number(boundary[part])) : "";
      select.value = value;
      if (select.selectedIndex < 0) select.value = "";
      if (isStored) for (const option of select.options) option.defaultSelected = option.selected;
    }
    if (!this.selects.week) this.limitDays();
  }

  // Tells at the field when something is missing; true when nothing is.
  check() {
    const missing = Object.values(this.selects).find((select) => !select.disabled && !select.value);
    document.getElementById(`${this.element.id}-error`).textContent = missing ? t("Choose all parts.") : "";
    missing?.focus();
    return !missing;
  }
}
