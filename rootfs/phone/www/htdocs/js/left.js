// What a form had entered when its page was left, as that page wrote it down. Of a save that ended in the login form, at a
// call in progress or nowhere at all it waits for the page's form as "kept"; after any other save it is what was saved.
// Whoever left the page on purpose gave it up, unless the way led to the login form.
import { drop, read, take, write } from "./store.js";

const { page, identity } = document.body.dataset;
const left = take("left");
const { type } = performance.getEntriesByType("navigation")[0] ?? {};  // a clock that is moved on has none

function wasInVain() {
  if (page === "login") return new URLSearchParams(location.search).get("jumpto") === left.page;
  const isBack = type === "back_forward" && left.page === page;
  return left.isSave && (isBack || document.getElementById("notice")?.dataset.notice.endsWith("$Talking, Please wait..."));
}

export const arrived = type !== "reload" && type !== "back_forward";
export const keptHere = Boolean(left && wasInVain());
if (keptHere) write("kept", left);
// What one user entered is not for another one.
if (identity && read("kept")?.identity !== identity) drop("kept");

export const saved = left?.isSave && arrived && left.page === page ? left : null;
