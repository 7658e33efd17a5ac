import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { startPhone } from "./phone.mjs";

let phone;
before(async () => { phone = await startPhone(); });
after(() => phone?.stop());

test("a wrong password is refused in words, and the form keeps the name only", async () => {
  const page = await phone.open();
  await phone.go(page, "p=status&q=load");
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
  phone.assertNoProblems("401");
});

test("a login leads to the page that was asked for, a logout to the form", async () => {
  const asked = ["p=network&q=load", "p=account-register&q=load&acc=2", "p=features-acd&q=load"];
  const page = await phone.open();
  for (const query of asked) {
    await phone.go(page, query);
    await phone.logIn(page, "admin", "admin");
    assert.equal(page.url(), `${phone.origin}/servlet?${query}`);
    await page.getByRole("link", { name: "Log out" }).click();
    await page.waitForURL((url) => url.search.includes("p=login"));
  }
  phone.assertNoProblems();
});

test("without scripts, people log in and save all the same", async () => {
  const page = await phone.open({ javaScriptEnabled: false });
  await phone.go(page, "p=features-acd&q=load");
  await page.fill("#username", "admin");
  await page.fill("#pwd", "admin");
  await page.click("button[type=submit]");
  await page.check("#EnableACDAutoAvailable");
  await page.fill("#ACDAutoAvailableTime", "42");
  await page.click("button[type=submit]");
  assert.deepEqual([await phone.config("EnableACDAutoAvailable"), await phone.config("ACDAutoAvailableTime")], ["1", "42"]);
  await page.uncheck("#EnableACDAutoAvailable");
  await page.click("button[type=submit]");
  assert.equal(await phone.config("EnableACDAutoAvailable"), "0");
  await phone.configure({ NetworkWanType: "1", NetworkIPAddressMode: "2" });
  await phone.go(page, "p=network&q=load");
  await page.fill("#NetworkPppoeUser", "line7");
  await page.getByRole("button", { name: "Save", exact: true }).click();
  assert.deepEqual([await phone.config("NetworkPppoeUser"), await phone.config("NetworkWanType"), await phone.config("NetworkIPAddressMode")],
    ["line7", "1", "2"]);
});

test("after a refused login without scripts the page does not hold the password", async () => {
  const page = await phone.open({ javaScriptEnabled: false });
  await phone.go(page, "p=login&q=loginForm");
  await page.fill("#username", "admin");
  await page.fill("#pwd", "hunter2-wrong");
  await page.click("button[type=submit]");
  assert.equal(await page.textContent("#notice"), "The username or password is error!");
  assert.doesNotMatch(await page.content(), /hunter2-wrong/);
  phone.assertNoProblems("401");
});

test("the third wrong password locks the client out, and the form says for how long", async () => {
  const page = await phone.open();
  await phone.go(page, "p=login&q=loginForm");
  await page.fill("#username", "admin");
  for (let attempt = 0; attempt < 3; ++attempt) {
    await page.fill("#pwd", `wrong${attempt}`);
    await Promise.all([page.waitForResponse((answer) => answer.request().method() === "POST"), page.click("button[type=submit]")]);
    await page.waitForFunction(() => document.getElementById("pwd").value === "");
  }
  await page.getByText("Too many failed attempts. Please try again in 3 minutes").waitFor();
  phone.assertNoProblems("401");
});
