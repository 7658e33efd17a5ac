// The state of the account while the page is open.
import "./account.js";
import { showValue, t } from "./i18n.js";
import { message } from "./message.js";
import { ask, poll, SessionEnded } from "./poll.js";

const askSeconds = 5;
const states = new Map([
  ["0", "Disabled"], ["1", "Registering"], ["2", "Registered"], ["3", "Register Failed"],
  ["4", "Unregistered"], ["5", "Registered"], ["6", "Inexistence"],
]);

const account = document.querySelector("form[method=post]").elements.var_accountID.value;
const badge = document.getElementById("AccountStatus");

const questions = poll(askSeconds, async () => {
  try {
    const code = await ask(`/servlet?p=account-register&q=askstatus&acc=${encodeURIComponent(account)}`);
    showValue(badge, states.get(code.trim()) ?? "Unknown");
  } catch (error) {
    if (error instanceof SessionEnded) {
      questions.pause();
      message(t("You have been logged out. Reload the page to log in."), "warning");
    } else {
      showValue(badge, "Unknown");
    }
  }
});
