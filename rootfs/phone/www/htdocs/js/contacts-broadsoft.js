// The custom directories: the phone loads their list from the server, and the page follows that and shows them as boxes.
// What is ticked makes up the field that is saved; a list that does not show is not saved.
import { compose, noteChange } from "./changed.js";
import { t } from "./i18n.js";
import { message } from "./message.js";
import { ask, poll, SessionEnded } from "./poll.js";

const askSeconds = 2;
const address = "/servlet?p=contacts-broadsoft&q=";

const field = document.getElementById("custom");
const list = document.getElementById("custom-list");
const outcome = field.querySelector(".outcome");
const { z: isShown, activeCustomList: names, BsftCustom: custom } = field.closest("form").elements;

const boxes = () => [...list.querySelectorAll("input")];
const ticked = () => boxes().filter((box) => box.checked).map((box) => box.value).join(",");
const parse = (html) => new DOMParser().parseFromString(html, "text/html");

function tell(text, kind) {
  outcome.textContent = text;
  outcome.dataset.kind = kind;
}

function adoptList() {
  isShown.value = boxes().length ? "yes" : "no";
  names.value = ticked();
  names.dataset.stored = names.value;
  noteChange(names.form);
  tell(boxes().length ? "" : t("The server has no custom directories."), "warning");
}

async function showList() {
  const page = parse(await ask(`${address}load`));
  list.replaceChildren(...page.getElementById("custom-list").children);
  adoptList();
  history.replaceState(null, "", `${address}load`);
}

function tellFailure(reason) {
  const text = parse(reason).documentElement.textContent;
  tell(text ? t("The phone could not load the list: %1", text) : t("The phone could not load the list."), "error");
}

// True when there is nothing more to wait for.
async function look() {
  const status = await ask(`${address}askstatus`);
  if (status === "3") await showList();
  else if (status.startsWith("4,")) tellFailure(status.slice(2));
  else tell(t("The phone is loading the list…"), "warning");
  return status === "3" || status.startsWith("4,");
}

function follow() {
  const questions = poll(askSeconds, async () => {
    try {
      if (await look()) questions.pause();
    } catch (error) {
      tell(t("The phone does not answer. This page continues when it is back."), "warning");
      if (!(error instanceof SessionEnded)) return;
      questions.pause();
      tell("");
      message(t("You have been logged out. Reload the page to log in."), "warning");
    }
  });
  questions.resume();
}

compose(names.form, {
  inputs: [names],
  say: ([value]) => value.split(",").join(", "),
  write([value]) {
    for (const box of boxes()) box.checked = value.split(",").includes(box.value);
    names.value = ticked();
    return names.value === value;
  },
});
list.addEventListener("change", () => { names.value = ticked(); });
if (custom[0].defaultChecked) {
  if (field.dataset.state === "false") adoptList();
  else follow();
}
