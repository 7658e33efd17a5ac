// Rules that are edited one at a time: the table of them, the dialog of one, and deleting those that are selected.
import { ask, attempt, plain, Refusal } from "./ask.js";
import { openDialog, prepareDialog, setField } from "./form-dialog.js";
import { t } from "./i18n.js";
import { message } from "./message.js";
import { faultOf } from "./dial-rules.js";
import "./dial-checks.js";
import "./dial-tryout.js";

const filledRows = 10;  // a table with fewer rules comes with empty rows up to here
const typeWithOneAccount = "19";

const { page, phoneType } = document.body.dataset;
const card = document.getElementById("rules");
const table = card.querySelector("table");
const [body] = table.tBodies;
const addButton = document.getElementById("add");
const tools = document.getElementById("chosen-tools");
const chooseAll = document.getElementById("choose-all");
const chosenText = document.getElementById("chosen");
const deleteButton = document.getElementById("delete-chosen");
const dialog = document.getElementById("rule");
const { form } = dialog.querySelector("button");
const fields = [...form.querySelectorAll("input:not([type=hidden])")];

// Cells of a rule's texts are named by the form's fields, data-field, and by the page's variables, data-var.
const cellsOf = (row) => [...row.querySelectorAll("[data-field]")];
// As the phone has them, by row: what an empty one means may stand in its cell.
const texts = new Map();
const isEmpty = (row) => Object.values(texts.get(row)).every((text) => !text);
const rows = () => [...body.rows];
const boxOf = (row) => row.querySelector("[type=checkbox]");
const chosen = () => rows().filter((row) => boxOf(row).checked);
const numberOf = (row) => row.dataset.row;
// What tells a rule from others.
const titleOf = (row) => Object.values(texts.get(row)).find(Boolean) ?? numberOf(row);

// Phones with one account have no choice of one.
function dropAccounts() {
  const column = [...table.tHead.rows[0].cells].findIndex((cell) => cell.id === "accounts");
  for (const row of table.rows) row.cells[column].remove();
  fields.pop().closest(".field").remove();
}

function showChosen() {
  const count = chosen().length;
  for (const row of rows()) row.classList.toggle("chosen", boxOf(row).checked);
  chooseAll.checked = count > 0 && count === body.rows.length;
  chooseAll.indeterminate = count > 0 && !chooseAll.checked;
  chosenText.textContent = count ? t("Selected: %1", count) : "";
  deleteButton.hidden = !count;
}

// The rules are known by their places: somebody else may have changed the list since it was shown.
async function assertUnchanged(some) {
  const { TRLoop } = await ask(page, "load");
  for (const row of some) {
    const now = TRLoop[numberOf(row) - 1];
    const isSame = now && cellsOf(row).every(({ dataset }) => plain(now[dataset.var]) === texts.get(row)[dataset.field]);
    if (!isSame) throw new Refusal(t("The rules have been changed meanwhile. Reload the page and try again."));
  }
}

async function send(action, values, told) {
  await ask(page, action, {}, new URLSearchParams(values));
  sessionStorage.setItem("saved", `${page}\n${told}`);
  dialog.close();
  location.reload();
}

function open(row) {
  dialog.dataset.row = row ? numberOf(row) : "";
  for (const field of fields) setField(field, row ? texts.get(row)[field.name] : "");
  openDialog(dialog, row ? t("Edit the rule") : t("Add a rule"));
}

async function save() {
  const row = rows().find((one) => numberOf(one) === dialog.dataset.row);
  const values = Object.fromEntries(fields.map(({ name, value }) => [name, value]));
  if (row) await assertUnchanged([row]);
  await send(row ? "edit" : "add", row ? { ...values, currentIndex: numberOf(row) } : values, t("Saved."));
}

async function remove() {
  const some = chosen();
  const isSure = confirm(some.length === 1 ? t("Delete the rule %1?", titleOf(some[0])) : t("Delete the %1 selected rules?", some.length));
  if (!isSure) return;
  await assertUnchanged(some);
  await send("del", { recountNum: some.map(numberOf).join(",") }, t("Deleted: %1", some.length));
}

// What the text of a cell means, where it does not say so itself.
function explain(cell) {
  if (cell.dataset.field === "editAccount" && !cell.textContent) cell.textContent = t("All");
  const isRule = dialog.querySelector(`[name=${cell.dataset.field}]`)?.dataset.check.includes("dialRule");
  if (!isRule || (cell.textContent && !faultOf(cell.textContent))) return;
  const error = document.createElement("p");
  error.className = "error";
  error.textContent = t("This fits no number.");
  cell.append(error);
}

function prepareRow(row) {
  boxOf(row).setAttribute("aria-label", t("Select: %1", titleOf(row)));
  boxOf(row).addEventListener("change", showChosen);
  const edit = row.querySelector("button");
  edit.setAttribute("aria-label", t("Edit: %1", titleOf(row)));
  edit.addEventListener("click", () => open(row));
  for (const cell of cellsOf(row)) explain(cell);
}

if (phoneType === typeWithOneAccount) dropAccounts();
for (const row of rows()) texts.set(row, Object.fromEntries(cellsOf(row).map((cell) => [cell.dataset.field, cell.textContent])));
if (body.rows.length === filledRows) while (body.rows.length && isEmpty(rows().at(-1))) rows().at(-1).remove();
rows().forEach(prepareRow);
table.hidden = !body.rows.length;
tools.hidden = !body.rows.length;
document.getElementById("no-rules").hidden = body.rows.length > 0;
const isFull = body.rows.length >= Number(card.dataset.max);
addButton.disabled = isFull;
document.getElementById("full").hidden = !isFull;
document.getElementById("full").textContent = t("The list is full. It takes %1 rules.", card.dataset.max);

showChosen();
chooseAll.addEventListener("change", () => {
  for (const row of rows()) boxOf(row).checked = chooseAll.checked;
  showChosen();
});
addButton.addEventListener("click", () => open(null));
const line = { set textContent(text) { message(text, "error"); }, dataset: {} };
deleteButton.addEventListener("click", () => attempt(line, card, remove));
prepareDialog(dialog, save);
