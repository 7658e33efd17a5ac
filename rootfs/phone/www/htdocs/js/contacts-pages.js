// Links to the pages of a group: the first, the last, those around the open one; a choice of all where there are many.
import { t } from "./i18n.js";

const around = 2;     // pages on each side of the open one
const fewPages = 10;  // up to so many need no choice

const form = document.getElementById("pages");
const { num: choice, group } = form.elements;

const addressOf = (page) => `/servlet?${new URLSearchParams({ p: "contactsbasic", q: "load", num: page, group: group.value || "0" })}`;

function link(page, text, label, isOpen) {
  const anchor = document.createElement("a");
  anchor.href = addressOf(page);
  anchor.textContent = text;
  anchor.setAttribute("aria-label", label);
  if (isOpen) anchor.setAttribute("aria-current", "page");
  return anchor;
}

function gap() {
  const sign = document.createElement("span");
  sign.textContent = "…";
  return sign;
}

// {open, last}: the page that is open and the last one.
export function openPages() {
  const last = choice.options.length;
  const open = Number([...choice.options].find((option) => option.defaultSelected)?.value ?? last + 1);
  return { open, last };
}

export function preparePages() {
  const { open, last } = openPages();
  if (open > last) {  // the contacts of this page are gone
    const { textContent } = document.getElementById("message");
    if (textContent) sessionStorage.setItem("saved", `contactsbasic\n${textContent}`);
    location.replace(addressOf(last));
    return;
  }
  form.hidden = last < 2;
  for (const part of form.querySelectorAll("label, select, button")) part.hidden = last <= fewPages;
  const shown = Array.from({ length: last }, (_, index) => index + 1).filter((page) => page === 1 || page === last || Math.abs(page - open) <= around);
  const items = shown.flatMap((page, index) => [
    ...index && page - shown[index - 1] > 1 ? [gap()] : [], link(page, String(page), t("Page %1 of %2", page, last), page === open),
  ]);
  if (open > 1) items.unshift(link(open - 1, "‹", t("Previous page")));
  if (open < last) items.push(link(open + 1, "›", t("Next page")));
  const list = document.createElement("ul");
  list.className = "overview";
  list.setAttribute("aria-label", t("Pages"));
  list.append(...items.map((item) => {
    const entry = document.createElement("li");
    entry.append(item);
    return entry;
  }));
  form.prepend(list);
}
