// What every page does once it has been read: language, visibility, forms. Then it is shown.
import { prepareForm } from "./form.js";
import { t, translatePage } from "./i18n.js";
import { arrived } from "./left.js";
import { message, messageBefore } from "./message.js";
import { applyLevels } from "./visibility.js";

const { page, identity = "", showLevel = "" } = document.body.dataset;

function prepareMenu() {
  const button = document.querySelector(".menu");
  button?.addEventListener("click", () => {
    button.setAttribute("aria-expanded", String(document.body.classList.toggle("menu-open")));
  });
}

// On a narrow screen a table's rows stand as lists, each cell with its column's name.
function nameCells() {
  for (const table of document.querySelectorAll("table:not(.wide)")) {
    const names = [...table.querySelectorAll("thead th")].map((head) => head.textContent);
    for (const row of table.tBodies[0].rows) [...row.cells].forEach((cell, index) => { cell.dataset.label = names[index]; });
  }
}

// A save ends in the page that it was made on, or names another one; that page tells of it, any other forgets it, and so
// does one that is only opened again.
function confirmSave() {
  const text = messageBefore(arrived ? t("Saved.") : "");
  if (!text || document.getElementById("notice")) return;
  message(text);
  // A page shown as the answer to the save itself is not to be posted again by a reload.
  if (location.search.includes("q=write")) history.replaceState(null, "", location.href.replace("q=write", "q=load"));
}

try {
  translatePage(document.documentElement);
  prepareMenu();
  nameCells();
  if (page === "login") {
    messageBefore("");  // a save that ended here did not take place
  } else {
    const allowed = applyLevels({ page, identity, showLevel });
    for (const form of document.querySelectorAll("form[method=post]:has(.bar)")) prepareForm(form);
    confirmSave();
    if (!allowed) {
      for (const part of document.querySelectorAll("main > .card, main > form, main > .lead")) part.hidden = true;
      message(t("Your user level may not see this page."), "warning");
    }
  }
  document.title = `${document.title} – ${t("Desk phone")}`;
} finally {
  document.documentElement.classList.remove("starting");
}
