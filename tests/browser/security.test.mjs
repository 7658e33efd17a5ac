// Changing passwords.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { startPhone } from "./phone.mjs";

let phone;
before(async () => { phone = await startPhone(); });
after(() => phone?.stop());

const save = (page) => page.locator(".bar .primary").click();

test("one's own password needs the old one, and both new ones must be the same", async () => {
  const page = await phone.openAs("user", "p=security&q=load");
  assert.deepEqual(await page.locator("#mode option").allTextContents(), ["user"]);
  const rows = [["abc", "Weak"], ["aaaaaaaaaaaa", "Weak"], ["dbxk4fws", "Fair"], ["Dbxk4fws", "Good"], ["correct horse battery", "Strong"], ["", ""]];
  for (const [password, strength] of rows) {
    await page.fill("#editNewPassword", password);
    assert.equal(await page.textContent("#strength-text"), strength, password);
  }
  await page.fill("#editNewPassword", "correct horse battery");
  await page.fill("#repeat", "correct horse");
  await page.getByText("The two passwords differ.").waitFor();
  await page.fill("#repeat", "correct horse battery");
  assert.equal(await page.textContent("#repeat-error"), "");
  await save(page);
  assert.equal(await page.textContent("#editOldPassword-error"), "This field must be filled in.");
  await page.fill("#editOldPassword", "wrong");
  await save(page);
  await page.getByText("The old password is wrong.").waitFor();
  await page.waitForURL(/p=security&q=load/);
  await page.fill("#editOldPassword", "user");
  await page.fill("#editNewPassword", "correct horse battery");
  await page.fill("#repeat", "correct horse battery");
  await save(page);
  await page.getByText("The password has been changed.").waitFor();
  assert.match(await page.getAttribute("#notice-link", "href"), /p=security&q=load$/);
  await page.waitForURL(/p=security&q=load/);
  const again = await phone.open();
  await phone.go(again, "p=status&q=load");
  await phone.logIn(again, "user", "correct horse battery");
  phone.assertNoProblems();
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
  const other = await phone.open();
  await phone.go(other, "p=status&q=load");
  await phone.logIn(other, "var", "new for var");
  phone.assertNoProblems();
});
