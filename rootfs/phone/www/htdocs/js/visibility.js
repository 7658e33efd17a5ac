// Shows and hides tabs and settings by the level of who is logged in. Presentation only: the phone's web server sends and
// takes nothing that is hidden here.
//
// ShowLevel is "tab=code&tab=code$setting=code&setting=code"; without "$" it holds one of both alone. Codes: "0" admin,
// "1" admin and var, "2" everyone, "3" nobody. A setting without a code, or with another one, is shown to admin only:
// hiding too much is noticed and mended, showing too much is not.
const ranks = new Map([["admin", 0], ["var", 1]]);

const codes = (list) => new Map(list.split("&").map((entry) => {
  const end = entry.indexOf("=");
  return [entry.slice(0, end), entry.slice(end + 1)];
}));

// {tabs, items}: maps from key to code.
export function parseLevels(text) {
  const end = text.indexOf("$");
  return { tabs: codes(end < 0 ? text : text.slice(0, end)), items: codes(text.slice(end + 1)) };
}

export function maySee(identity, code) {
  if (code === "3") return false;
  const needed = code === "1" || code === "2" ? Number(code) : 0;
  return (ranks.get(identity) ?? 2) <= needed;
}

// The tab that opened the page.
function ownTab(page) {
  return [...document.querySelectorAll(`#navigation [data-page~="${CSS.escape(page)}"]`)].find(({ dataset: { form } }) => {
    const [name, value] = (form ?? "").split("=");
    return !form || document.querySelector(`main input[name="${name}"]`)?.value === value;
  });
}

// Hides the tabs that may not be seen and returns the others. A page speaks of tabs of its own section only, and not
// always of all; those it leaves out are shown.
const applyToTabs = (all, identity, tabs) => [...all].filter((tab) => {
  const { tab: key } = tab.dataset;
  const shown = !key || !tabs.has(key) || maySee(identity, tabs.get(key));
  tab.parentElement.hidden = !shown;
  return shown;
});

// Pages that share an entry of the menu have a row of tabs of their own. True when the page is none of these, or its tab
// is visible.
function applyToRow(page, identity, tabs) {
  const row = document.querySelectorAll("main [data-tab]");
  const visible = applyToTabs(row, identity, tabs);
  const own = [...row].find((tab) => tab.dataset.page === page);
  own?.setAttribute("aria-current", "page");
  if (!own) for (const tab of row) tab.closest("ul").hidden = true;  // the row of other pages
  return !own || visible.includes(own);
}

function applyToNavigation(page, identity, tabs) {
  const own = ownTab(page);
  if (!own) return true;
  const section = own.closest(".sections > li");
  section.classList.add("current");
  section.querySelector("a").setAttribute("aria-current", "true");
  own.setAttribute("aria-current", own.dataset.page === page ? "page" : "true");
  const visible = applyToTabs(section.querySelectorAll("[data-page]"), identity, tabs);
  section.hidden = visible.length === 0;
  if (visible.length) section.querySelector("a").href = visible[0].href;
  return applyToRow(page, identity, tabs) && visible.includes(own);
}

// Returns false when nothing is left of them.
function applyToSettings(identity, items) {
  for (const element of document.querySelectorAll("[data-level]")) {
    if (!maySee(identity, items.get(element.dataset.level))) element.hidden = true;
  }
  const groups = [...document.querySelectorAll(".card")];
  for (const group of groups) {
    const parts = [...group.querySelectorAll(".field, dl, table")];
    if (parts.length && parts.every((part) => part.closest("[hidden]"))) group.hidden = true;
  }
  return groups.some((group) => !group.hidden);
}

// Returns false when the user may not see the page itself, or nothing on it.
export function applyLevels({ page, identity, showLevel }) {
  const { tabs, items } = parseLevels(showLevel);
  const somethingShows = applyToSettings(identity, items);
  return applyToNavigation(page, identity, tabs) && somethingShows;
}
