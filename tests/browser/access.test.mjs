// Logging in and out, and who sees which tabs and settings.
import assert from "node:assert/strict";
import test from "node:test";
import { phone, save, visibleFields } from "./phone.mjs";

const tabs = (page) => page.locator("#navigation .current a:visible").allTextContents();

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

test("tabs and settings follow the level codes", async () => {
  const codes = { "network-basic": "2", "network-pcport": "1", BasicIpaddressMode: "0", BasicIpv4config: "1", BasicIpv6config: "3" };
  const rows = [
    // user, changed codes, visible tabs, visible fields
    ["admin", {}, ["Network", "Basic", "PC port"], ["NetworkIPAddressMode", "ipv4type"]],
    ["var", {}, ["Network", "Basic", "PC port"], ["ipv4type"]],
    ["user", {}, ["Network", "Basic"], []],
    ["user", { BasicIpv6config: "2" }, ["Network", "Basic"], ["ipv6type"]],
    ["admin", { "network-pcport": "3", BasicIpv4config: "3" }, ["Network", "Basic"], ["NetworkIPAddressMode"]],
    // a code that is none, or is missing, is for admin alone
    ["admin", { "network-pcport": "", BasicIpv4config: "9" }, ["Network", "Basic", "PC port"], ["NetworkIPAddressMode", "ipv4type"]],
    ["var", { "network-pcport": "", BasicIpv4config: "9" }, ["Network", "Basic"], []],
  ];
  await phone.configure({ NetworkIPAddressMode: "2" });
  const pages = {};
  for (const [user, changed, visibleTabs, fieldNames] of rows) {
    await phone.configure({ ...codes, ...changed });
    const page = pages[user] ??= await phone.openAs(user);
    await phone.go(page, "p=network&q=load");
    assert.deepEqual([await tabs(page), await visibleFields(page)], [visibleTabs, fieldNames], `${user} ${JSON.stringify(changed)}`);
    assert.equal(await page.locator(".bar").isVisible(), fieldNames.length > 0);
  }
});

test("codes that are configuration values do not hide their fields", async () => {
  await phone.configure({ AreaCode: "3", ToneDial: "3", GPickupSwitch: "3", "settings-dialplan": "2", "settings-tones": "2", "features-bluetooth": "2", ToneCountry: "Custom" });
  const page = await phone.openAs("user");
  for (const [name, field] of [["settings-areacode", "AreaCode"], ["settings-tones", "ToneDial"], ["features-bluetooth", "BluetoothSwitch"]]) {
    await phone.go(page, `p=${name}&q=load`);
    assert.ok((await visibleFields(page)).includes(field), name);
  }
});

test("a page above one's level shows no settings and no tab, the other sections stay", async () => {
  await phone.configure({ "features-acd": "0" });
  const page = await phone.openAs("user", "p=features-acd&q=load");
  assert.equal(await page.textContent("#message"), "Your user level may not see this page.");
  assert.deepEqual(await visibleFields(page), []);
  assert.equal(await page.locator("#navigation [data-page=features-acd]").isVisible(), false);
  assert.deepEqual(await page.locator("#navigation .sections > li:visible > a").allTextContents(),
    ["Status", "Account", "Network", "Features", "Settings", "Directory", "Security"]);
});

test("what may not be seen is hidden before the first paint and is not posted", async () => {
  await phone.configure({ "features-acd": "2", FeaturesACDAutoAvailable: "2", FeaturesACDAutoAvailableTimer: "0", EnableACDAutoAvailable: "0", ACDAutoAvailableTime: "77" });
  const page = await phone.openAs("user", "p=status&q=load");
  await page.addInitScript(() => {
    globalThis.seen = [];
    const look = () => {
      const field = document.getElementById("ACDAutoAvailableTime");
      if (field?.checkVisibility({ visibilityProperty: true })) globalThis.seen.push(document.documentElement.className);
      requestAnimationFrame(look);
    };
    look();
  });
  await page.route("**/js/app.js", async (route) => { await new Promise((done) => setTimeout(done, 300)); await route.continue(); });
  await phone.go(page, "p=features-acd&q=load");
  await page.check("#EnableACDAutoAvailable");
  assert.deepEqual(await page.evaluate(() => globalThis.seen), []);
  const posted = page.waitForRequest((request) => request.method() === "POST");
  await save(page);
  assert.equal((await posted).postData(), "EnableACDAutoAvailable=1");
  await page.getByText("Saved.").waitFor();
  await phone.assertStored({ ACDAutoAvailableTime: "77" });
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
