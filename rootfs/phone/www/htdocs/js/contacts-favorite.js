// The directories of the phone's menu and of its search: those in use in their order, and the others.
import { t } from "./i18n.js";
import { orderLists } from "./ordered-lists.js";

for (const pair of document.querySelectorAll(".columns")) {
  orderLists([...pair.querySelectorAll(".items")], [t("Remove"), t("Use")]);
}
