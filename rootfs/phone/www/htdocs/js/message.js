// The line above the page's content that tells what happened; a screen reader reads it out.
// kind: "success", "warning" or "error". An empty text takes the line away. actions: buttons behind the text, [text, act].
export function message(text, kind = "success", actions = []) {
  const line = document.getElementById("message");
  if (line.textContent === text && !actions.length) return;
  const shown = document.createElement("span");
  shown.textContent = text;
  const buttons = actions.map(([name, act]) => {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = name;
    button.addEventListener("click", act);
    return button;
  });
  line.replaceChildren(...text ? [shown] : [], ...buttons);
  line.dataset.kind = kind;
}

// Leaves a text for the page that follows, if it is this one again; an empty one stands for its usual text.
export function messageAfter(text) {
  const { page } = document.body.dataset;
  try {
    sessionStorage.setItem("saved", text ? `${page}\n${text}` : page);
  } catch { /* the save is told by what the page shows */ }
}

// That text, once: nothing when there is none for this page.
export function messageBefore(usual) {
  try {
    const [target, text = usual] = sessionStorage.getItem("saved")?.split("\n") ?? [];
    sessionStorage.removeItem("saved");
    return target === document.body.dataset.page ? text : "";
  } catch {
    return "";
  }
}
