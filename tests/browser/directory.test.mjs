// The directory pages: the order of favourites, and the list of custom directories that the phone loads in the background.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, phone } from "./phone.mjs";

test("favourites are stored as they are arranged, and a list that was not touched stays", async () => {
  const page = await phone.openAs("admin", "contacts-favorite");
  const questions = answerDialogs(page);
  const list = (field) => page.locator(`[data-field=${field}] > li > span`).allTextContents();
  const lists = () => Promise.all(["enabled", "disabled", "searchenabled", "searchdisabled"].map(list));
  const search = (await lists()).slice(2);
  const button = (field, name) => page.locator(`[data-field=${field}]`).getByRole("button", { name }).click();
  for (const name of await list("enabled")) await button("enabled", `Remove: ${name}`);
  await button("disabled", "Use: LDAP");
  await button("disabled", "Use: Contacts");
  await page.keyboard.press("Alt+ArrowUp");
  const [enabled, disabled] = await lists();
  assert.deepEqual(enabled, ["Contacts", "LDAP"]);
  await phone.go(page, "status").catch(() => {});
  assert.deepEqual(questions, ["beforeunload"]);
  await enter(page, { FeaturesRecentCallEnable: false });
  await phone.assertSaves(page, { FeaturesRecentCallEnable: "0" });
  assert.deepEqual(await lists(), [enabled, disabled, ...search]);
});

test("custom directories appear as boxes when the phone has loaded them, or the reason why it has not", async () => {
  await phone.configure({ BsftCustomListUse: "Sales" });
  await phone.state({ networkDirectories: ["A & <b>", "Sales"] });
  const page = await phone.openAs("admin", "contacts-broadsoft");
  const box = (name) => page.getByRole("checkbox", { name });
  await enter(page, { BsftCustom: true });
  await phone.assertSaves(page, { BsftCustom: "1" });
  await page.getByText("The phone is loading the list…").waitFor();
  await enter(page, { AccountBroadsoftXSIUserID: "2001" });  // loading does not take it back
  await box("A & <b>").check();
  assert.equal(await box("Sales").isChecked(), true);
  assert.equal(await page.textContent("#custom .outcome"), "");
  assert.deepEqual(await axe(page), []);
  await phone.assertSaves(page, { BsftCustomListUse: "A & <b>,Sales", "AccountBroadsoftXSIUserID@0": "2001" });

  for (const [networkDirectories, networkDirectoryError, text] of [
    [["x"], "no <b> & no %s", "The phone could not load the list: no <b> & no %s"], [[], "", "The server has no custom directories."],
  ]) {
    await phone.state({ networkDirectories, networkDirectoryError });
    await phone.assertSaves(page, { BsftCustomListUse: "A & <b>,Sales" });  // a list that does not show stays as it is
    await page.getByText(text).waitFor();
    assert.equal(await page.locator("#custom input[type=checkbox]").count(), 0);
  }
  assert.deepEqual(await axe(page), []);
});
