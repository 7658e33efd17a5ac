// The account selector of the account pages: it opens the page of another account, and asks before changes are lost.
import { mayLeave } from "./form.js";

const settings = document.querySelector("form[method=post]");
const select = document.getElementById("acc");

select.addEventListener("change", () => {
  if (mayLeave(settings)) select.form.submit();
  else select.value = settings.elements.var_accountID.value;
});
select.form.querySelector("button").hidden = true;
