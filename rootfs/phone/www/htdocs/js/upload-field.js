// A file that is taken to the phone without leaving the page, so that what was typed elsewhere in it stays.
import { t } from "./i18n.js";

const talking = (show) => show(t("Talking, Please wait..."), "warning");
const loggedOut = (show) => show(t("You have been logged out. Reload the page to log in."), "warning");

async function post(form) {
  const response = await fetch(form.action, { method: "POST", headers: { Accept: "application/json" }, body: new FormData(form) });
  return response.json();
}

// `form` has one file field; its outcome shows in the element `outcome`. `fault(file)` (async) says what is wrong with a
// file; `mayReplace()` asks before it goes; `done()` (async) gives the text for a file that was stored, `failed` is that
// for one that was not.
export function prepareUpload(form, { outcome, fault, mayReplace = () => true, done, failed }) {
  const input = [...form.elements].find((element) => element.type === "file");
  const button = [...form.elements].find((element) => element.type === "submit");
  const show = (text, kind = "error") => { outcome.textContent = text; outcome.dataset.kind = kind; };
  const faultOfFile = async () => input.files.length ? fault(input.files[0]) : t("Choose a file first.");

  async function send() {
    const { template, variables } = await post(form);
    if (template === "notice") talking(show);
    else if (template === "loginForm") loggedOut(show);
    else if (variables.result !== "success") show(failed());
    else {
      input.value = "";
      const [text, kind = "success"] = await done();
      show(text, kind);
    }
  }

  input.addEventListener("change", async () => show(input.files.length ? await faultOfFile() : ""));
  form.addEventListener("submit", async (event) => {
    event.preventDefault();
    const error = await faultOfFile();
    if (error) show(error);
    if (error || !mayReplace()) return;
    button.disabled = true;
    await send().catch(() => show(t("The phone does not answer. Please try again.")));
    button.disabled = false;
  });
}
