// Questions to the phone that do not leave the page: its pages as JSON, its notices as refusals.
import { t } from "./i18n.js";

const entities = { "&amp;": "&", "&lt;": "<", "&gt;": ">", "&quot;": '"' };

// Some values come escaped for HTML, some plain; as on a page, one level of escaping is taken off.
export const plain = (value = "") => value.replace(/&(?:amp|lt|gt|quot);/g, (entity) => entities[entity]);

// The values and names of a list of choices.
export const choicesOf = (loop) => loop.map(({ selValue, selName }) => [plain(selValue), plain(selName)]);

// The phone did not do what it was asked for; the message tells the reader why.
export class Refusal extends Error {}

// Somebody else's level may see this.
export class Forbidden extends Refusal {}

// The template and the variables of the phone's answer. A notice is "timer$page$message".
async function answerOf(response) {
  const text = await response.text();
  if (!text) throw new Refusal(t("The phone could not do this. Reload the page and try again."));
  const { template, variables } = JSON.parse(text);
  if (template === "notice") throw new Refusal(t(variables.noticeLabel.split("$").slice(2).join("$")));
  if (template === "loginForm") throw new Refusal(t("You have been logged out. Reload the page to log in."));
  return variables;
}

// Opens a page, or with a body has it do something: the variables of the page that it leads to, the text of a file.
export async function ask(page, action, fields = {}, body = undefined) {
  try {
    const query = new URLSearchParams({ p: page, q: action, ...fields });
    const response = await fetch(`/servlet?${query}`, { method: body ? "POST" : "GET", headers: { Accept: "application/json" }, cache: "no-store", body });
    if (response.status === 403) throw new Forbidden(t("Your user level may not do this."));
    if (!response.ok) throw new Error(`status ${response.status}`);
    const isFile = response.headers.get("Content-Type")?.startsWith("text/xml");
    return isFile ? await response.text() : await answerOf(response);
  } catch (error) {
    throw error instanceof Refusal ? error : new Refusal(t("The phone does not answer. Please try again."));
  }
}

// What became of it, in a line beside the button.
export function show(line, shown, kind = "error") {
  line.textContent = shown;
  line.dataset.kind = kind;
}

const busy = new WeakSet();

// Runs work that the phone may refuse, and tells of it in the line; one work at a time in an area of the page.
export async function attempt(line, area, work) {
  if (busy.has(area)) return;
  busy.add(area);
  try {
    await work();
  } catch (error) {
    if (!(error instanceof Refusal)) throw error;
    show(line, error.message);
  } finally {
    busy.delete(area);
  }
}
