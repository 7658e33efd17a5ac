// A CSV file before its import: which column holds what, and what looks wrong.
import { t } from "./i18n.js";
import { findings, guess } from "./contacts-mapping.js";
import { loadPage } from "./contacts-phone.js";

const rowsAtFirst = 50;  // as the style sheet shows them before this script runs
const portion = 200;     // rows that are added at once: a table of all would take seconds

const form = document.getElementById("mapping");

function readTable(table) {
  const rows = [...table.tBodies[0].rows].map((row) => [...row.cells].slice(1).map((cell) => cell.textContent));
  const titles = table.tHead.rows.length > 1 ? [...table.tHead.rows[0].cells].slice(1).map((cell) => cell.textContent) : [];
  return { rows, titles, selects: [...table.tHead.querySelectorAll("select")] };
}

function item({ kind, text }) {
  const line = document.createElement("li");
  line.dataset.kind = kind;
  line.translate = false;
  line.textContent = text;
  return line;
}

function labelColumns({ titles, selects }) {
  selects.forEach((select, column) => {
    select.labels[0].textContent = titles[column] ? t("Column %1 holds: %2", column + 1, titles[column]) : t("Column %1 holds", column + 1);
  });
}

// Keeps the form's list of columns and what is said about it up to the choices.
function watch(table, { rows, selects }, groups) {
  const names = new Map([...selects[0].options].map((option) => [Number(option.value), option.text]));
  const button = form.querySelector("[type=submit]");
  const look = () => {
    const mapping = selects.map((select) => Number(select.value));
    const found = findings(mapping, rows, names, groups);
    const wrong = new Set(found.filter(({ kind }) => kind === "error").map(({ column }) => column));
    form.elements.arrcol.value = mapping.join(",");
    button.disabled = wrong.size > 0;
    document.getElementById("findings").replaceChildren(...found.map(item));
    selects.forEach((select, column) => {
      if (wrong.has(column)) select.setAttribute("aria-invalid", "true");
      else select.removeAttribute("aria-invalid");
    });
  };
  table.addEventListener("change", look);
  look();
}

function prepareFold(table) {
  const button = document.getElementById("unfold");
  const [body] = table.tBodies;
  const rest = [...body.rows].slice(rowsAtFirst);
  const show = () => {
    button.hidden = !rest.length;
    button.textContent = t("Show more rows (%1 left)", rest.length);
  };
  for (const row of rest) row.remove();
  table.classList.remove("folded");
  button.addEventListener("click", () => { body.append(...rest.splice(0, portion)); show(); });
  show();
}

// A question that is answered with no keeps the form from all that follows its sending.
function askBeforeDeleting() {
  form.addEventListener("submit", (event) => {
    if (form.elements.delOld.value !== "1" || confirm(t("Delete all contacts of the phone and import the file?"))) return;
    event.preventDefault();
    event.stopImmediatePropagation();
  }, { capture: true });
}

async function prepare() {
  const table = form.querySelector("table");
  const content = readTable(table);
  document.getElementById("row-count").textContent = t("Rows: %1", content.rows.length);
  prepareFold(table);
  labelColumns(content);
  const offered = new Set([...content.selects[0].options].map((option) => Number(option.value)));
  guess(content.titles, content.rows, content.selects.length, offered).forEach((value, column) => { content.selects[column].value = value; });
  askBeforeDeleting();
  form.addEventListener("submit", () => sessionStorage.setItem("saved", `contactsbasic\n${t("Imported.")}`));
  const groups = await loadPage("0", 1).then((page) => new Set(page.groups.map(({ name }) => name)), () => null);
  watch(table, content, groups);
}

if (form) prepare();
