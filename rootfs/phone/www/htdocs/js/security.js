// The old password is asked for one's own account only; a hint tells how strong the new one is.
import { t } from "./i18n.js";

const form = document.querySelector("form[method=post]");
const { mode, editNewPassword, repeat } = form.elements;
const { identity } = document.body.dataset;
const strength = document.getElementById("strength");
const strengthText = document.getElementById("strength-text");

// A session that a command logged in has its login name for an identity.
const isLevel = [...mode.options].some((option) => option.value === identity);
const own = isLevel ? identity : mode.querySelector("[selected]")?.value;
document.getElementById("old").dataset.when = `mode=${own}`;
if (!mode.querySelector("[selected]")) {  // one's login name is not the name of one's level
  for (const option of mode.options) option.selected = option.defaultSelected = option.value === identity;
}
mode.dispatchEvent(new Event("change", { bubbles: true }));

// 0 (none) to 4: length counts most, the kinds of characters a little.
function strengthOf(password) {
  const kinds = [/\p{Ll}/u, /\p{Lu}/u, /\d/, /[^\p{L}\d]/u].filter((kind) => kind.test(password)).length;
  const variety = new Set(password).size;
  if (!password) return 0;
  if (password.length < 8 || variety < 5) return 1;
  const points = (password.length >= 12) + (password.length >= 16) + (kinds >= 2) + (kinds >= 3);
  return Math.min(4, 1 + points);
}

function showStrength() {
  strength.value = strengthOf(editNewPassword.value);
  strengthText.textContent = ["", t("Weak"), t("Fair"), t("Good"), t("Strong")][strength.value];
}

editNewPassword.addEventListener("input", () => {
  showStrength();
  if (repeat.value) repeat.dispatchEvent(new Event("input", { bubbles: true }));
});
form.addEventListener("reset", () => setTimeout(showStrength));
