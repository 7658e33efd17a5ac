// Changing passwords.
import assert from "node:assert/strict";
import test from "node:test";
import { phone, save } from "./phone.mjs";

test("one's own password needs the old one, and both new ones must be the same", async () => {
  const page = await phone.openTimed("user", "p=security&q=load");
  assert.deepEqual(await page.locator("#mode option").allTextContents(), ["user"]);
  const rows = [["abc", "Weak"], ["aaaaaaaaaaaa", "Weak"], ["dbxk4fws", "Fair"], ["Dbxk4fws", "Good"], ["correct horse battery", "Strong"], ["", ""]];
  for (const [password, strength] of rows) {
    await page.fill("#editNewPassword", password);
    assert.equal(await page.textContent("#strength-text"), strength, password);
  }
  await page.fill("#editNewPassword", "correct horse battery");
  await page.fill("#repeat", "correct horse");
  await page.getByText("The passwords do not match.").waitFor();
  await page.fill("#repeat", "correct horse battery");
  assert.equal(await page.textContent("#repeat-error"), "");
  await save(page);
  assert.equal(await page.textContent("#editOldPassword-error"), "This field is required.");
  await page.fill("#editOldPassword", "wrong");
  await save(page);
  await page.getByText("The old password is wrong.").waitFor();
  await page.clock.fastForward(4000);
  await page.waitForURL(/p=security&q=load/);
  await page.fill("#editOldPassword", "user");
  await page.fill("#editNewPassword", "correct horse battery");
  await page.fill("#repeat", "correct horse battery");
  await save(page);
  await page.getByText("The password has been changed.").waitFor();
  assert.match(await page.getAttribute("#notice-link", "href"), /p=security&q=load$/);
  await page.clock.fastForward(4000);
  await page.waitForURL(/p=security&q=load/);
  await phone.logIn(await phone.open("p=status&q=load"), "user", "correct horse battery");
});

test("the administrator changes others' passwords without knowing them", async () => {
  const page = await phone.openAs("admin", "p=security&q=load");
  assert.deepEqual([await page.inputValue("#mode"), await page.isVisible("#editOldPassword")], ["admin", true]);
  await page.selectOption("#mode", "var");
  assert.equal(await page.isVisible("#editOldPassword"), false);
  await page.fill("#editNewPassword", "new for var");
  await page.fill("#repeat", "new for var");
  await save(page);
  await page.getByText("The password has been changed.").waitFor();
  await phone.logIn(await phone.open("p=status&q=load"), "var", "new for var");
});
