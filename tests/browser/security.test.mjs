// Changing passwords.
import assert from "node:assert/strict";
import test from "node:test";
import { enter, phone, save } from "./phone.mjs";

test("one's own password needs the old one, and both new ones must be the same", async () => {
  const page = await phone.openAs("user", "security", { timed: true });
  assert.deepEqual(await page.locator("#mode option").allTextContents(), ["user"]);
  const rows = [["abc", "Weak"], ["aaaaaaaaaaaa", "Weak"], ["dbxk4fws", "Fair"], ["Dbxk4fws", "Good"], ["", ""], ["correct horse battery", "Strong"]];
  for (const [password, strength] of rows) {
    await enter(page, { editNewPassword: password });
    assert.equal(await page.textContent("#strength-text"), strength, password);
  }
  await enter(page, { repeat: "correct horse" });
  await page.getByText("The passwords do not match.").waitFor();
  await enter(page, { repeat: "correct horse battery" });
  assert.equal(await page.textContent("#repeat-error"), "");
  await save(page);
  assert.equal(await page.textContent("#editOldPassword-error"), "This field is required.");
  for (const [old, text] of [["wrong", "The old password is wrong."], ["user", "The password has been changed."]]) {
    await enter(page, { editOldPassword: old, editNewPassword: "correct horse battery", repeat: "correct horse battery" });
    await save(page);
    await page.getByText(text).waitFor();
    assert.match(await page.getAttribute("#notice-link", "href"), /p=security&q=load$/);
    await page.clock.fastForward(4000);
    await page.waitForURL(/p=security&q=load/);
  }
  await phone.logIn(await phone.open("status"), "user", "correct horse battery");
});

test("the administrator changes others' passwords without knowing them", async () => {
  const page = await phone.openAs("admin", "security");
  assert.deepEqual([await page.inputValue("#mode"), await page.isVisible("#editOldPassword")], ["admin", true]);
  await enter(page, { mode: "var", editNewPassword: "new for var", repeat: "new for var" });
  assert.equal(await page.isVisible("#editOldPassword"), false);
  await save(page);
  await page.getByText("The password has been changed.").waitFor();
  await phone.logIn(await phone.open("status"), "var", "new for var");
});
