// Logging in and out, and changing passwords.
import assert from "node:assert/strict";
import test from "node:test";
import { phone, save } from "./phone.mjs";

test("a wrong password is refused in words, and the form keeps the name only", async () => {
  phone.expectProblems("401");
  const page = await phone.open("p=status&q=load");
  await page.waitForFunction(() => document.activeElement.id === "username");
  await page.fill("#username", "admin");
  await page.fill("#pwd", "not-the-password");
  await page.click("button[type=submit]");
  await page.getByRole("alert").getByText("The user name or the password is wrong.").waitFor();
  assert.equal(await page.inputValue("#username"), "admin");
  assert.equal(await page.inputValue("#pwd"), "");
  assert.equal(await page.evaluate(() => document.activeElement.id), "pwd");
  await phone.logIn(page, "admin", "admin");
  assert.equal(await page.textContent("h1"), "Status");
});

test("a login leads to the page that was asked for, a logout to the form", async () => {
  const asked = ["p=network&q=load", "p=account-register&q=load&acc=2"];
  const page = await phone.open();
  for (const query of asked) {
    await phone.go(page, query);
    await phone.logIn(page, "admin", "admin");
    assert.equal(page.url(), `${phone.origin}/servlet?${query}`);
    await page.getByRole("link", { name: "Log out" }).click();
    await page.waitForURL((url) => url.search.includes("p=login"));
  }
});

test("without scripts, people log in and save all the same", async () => {
  const page = await phone.open("p=features-acd&q=load", { javaScriptEnabled: false });
  await page.fill("#username", "admin");
  await page.fill("#pwd", "admin");
  await page.click("button[type=submit]");
  await page.check("#EnableACDAutoAvailable");
  await page.fill("#ACDAutoAvailableTime", "42");
  await page.click("button[type=submit]");
  await phone.assertStored({ EnableACDAutoAvailable: "1", ACDAutoAvailableTime: "42" });
  await page.uncheck("#EnableACDAutoAvailable");
  await page.click("button[type=submit]");
  await phone.assertStored({ EnableACDAutoAvailable: "0" });
  await phone.configure({ NetworkWanType: "1", NetworkIPAddressMode: "2" });
  await phone.go(page, "p=network&q=load");
  await page.fill("#NetworkPppoeUser", "line7");
  await page.getByRole("button", { name: "Save", exact: true }).click();
  await phone.assertStored({ NetworkPppoeUser: "line7", NetworkWanType: "1", NetworkIPAddressMode: "2" });
});

test("after a refused login without scripts the page does not hold the password", async () => {
  phone.expectProblems("401");
  const page = await phone.open("p=login&q=loginForm", { javaScriptEnabled: false });
  await page.fill("#username", "admin");
  await page.fill("#pwd", "hunter2-wrong");
  await page.click("button[type=submit]");
  assert.equal(await page.textContent("#notice"), "The username or password is error!");
  assert.doesNotMatch(await page.content(), /hunter2-wrong/);
});

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
  await page.getByText("The passwords do not match.").waitFor();
  await page.fill("#repeat", "correct horse battery");
  assert.equal(await page.textContent("#repeat-error"), "");
  await save(page);
  assert.equal(await page.textContent("#editOldPassword-error"), "This field is required.");
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

test("the third wrong password locks the client out, and the form says for how long", async () => {
  phone.expectProblems("401");
  const page = await phone.open("p=login&q=loginForm");
  await page.fill("#username", "admin");
  for (let attempt = 0; attempt < 3; ++attempt) {
    await page.fill("#pwd", `wrong${attempt}`);
    await Promise.all([page.waitForResponse((answer) => answer.request().method() === "POST"), page.click("button[type=submit]")]);
    await page.waitForFunction(() => document.getElementById("pwd").value === "");
  }
  await page.getByText("Too many failed attempts. Please try again in 3 minutes").waitFor();
});
