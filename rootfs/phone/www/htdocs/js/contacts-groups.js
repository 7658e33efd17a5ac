// Groups: added, renamed, given a ring, deleted.
import { t } from "./i18n.js";
import { blacklist, everybody, groups, leaveTo, send, titleOf } from "./contacts-phone.js";
import { askFirst, listOf } from "./question.js";
import { openDialog, prepareDialog, setField } from "./form-dialog.js";
import { runInPage } from "./contacts-actions.js";

const dialog = document.getElementById("group");
const form = document.getElementById("group-form");
const { oldGroupName, GroupInfo: nameField, GroupRing: ringField } = form.elements;
const stored = { name: oldGroupName.value, ring: oldGroupName.dataset.ring };
const isOwn = ({ id }) => id !== everybody && id !== blacklist;

function open(name, ring, heading) {
  setField(oldGroupName, name);
  setField(nameField, name);
  setField(ringField, ring);
  openDialog(dialog, heading);
  nameField.focus();
}

async function save() {
  const name = nameField.value.trim();
  const old = oldGroupName.value;
  const ring = ringField.value;
  const { grouplistloop = [] } = await send(old ? "editgroup" : "addgroup", { ...old && { oldGroupName: old }, GroupInfo: name, GroupRing: ring });
  dialog.close();
  const group = grouplistloop.find(({ groupName }) => groupName === name);
  leaveTo(group?.groupId ?? everybody, 1, t("Saved."));
}

async function remove(group) {
  const isSure = await askFirst({
    title: t("Delete the group %1?", group.name),
    text: t("Its contacts stay in the list of all contacts."),
    action: t("Delete"),
  });
  if (!isSure) return;
  await send("deletegroup", { GroupInfo: group.name });
  leaveTo(everybody, 1, t("The group %1 has been deleted.", group.name));
}

async function removeAll() {
  const own = groups().filter(isOwn).map(({ name }) => name);
  const isSure = await askFirst({
    title: t("Delete all groups?"),
    text: `${t("Groups: %1", own.length)}. ${t("Their contacts stay in the list of all contacts.")}`,
    parts: [listOf(own)],
    action: t("Delete all"),
  });
  if (!isSure) return;
  await send("deleteallgroup");
  leaveTo(everybody, 1, t("All groups have been deleted."));
}

export function prepareGroups(group) {
  prepareDialog(dialog, save);
  document.getElementById("add-group").addEventListener("click", () => open("", "Auto", t("New group")));
  const all = document.getElementById("delete-groups");
  all.hidden = !groups().some(isOwn);
  all.addEventListener("click", () => runInPage(removeAll));
  if (!isOwn(group)) return;
  const [edit, end] = ["edit-group", "delete-group"].map((id) => document.getElementById(id));
  edit.textContent = t("Edit the group %1", titleOf(group));
  edit.addEventListener("click", () => open(stored.name, stored.ring || "Auto", t("Edit group")));
  end.textContent = t("Delete the group %1", titleOf(group));
  end.addEventListener("click", () => runInPage(() => remove(group)));
  edit.hidden = false;
  end.hidden = false;
}
