// The codecs of an account: those in use in their order, and the others.
import "./account.js";
import { t } from "./i18n.js";
import { message } from "./message.js";
import { orderLists } from "./ordered-lists.js";

const [used, unused] = document.querySelectorAll(".items");
orderLists([used, unused], [t("Remove"), t("Use")]);

used.closest("form").addEventListener("submit", (event) => {
  if (used.children.length || used.closest("[hidden]")) return;
  event.preventDefault();
  event.stopImmediatePropagation();
  message(t("Not saved. At least one codec must be in use."), "error");
  unused.querySelector("[data-over]")?.focus();
}, { capture: true });
