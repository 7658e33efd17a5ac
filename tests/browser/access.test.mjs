// Logging in and out, and who sees which tabs and settings.
import assert from "node:assert/strict";
import test from "node:test";
import { enter, phone, save, visibleFields } from "./phone.mjs";

test("a login leads to the page that was asked for, a logout to the form", async () => {
  const page = await phone.open();
  for (const query of ["p=network&q=load", "p=account-register&q=load&acc=2"]) {
    await phone.go(page, query);
    await phone.logIn(page, "admin", "admin");
    assert.equal(page.url(), `${phone.origin}/servlet?${query}`);
    await page.getByRole("link", { name: "Log out" }).click();
    await page.waitForURL((url) => url.search.includes("p=login"));
  }
});

test("tabs and settings follow the level codes", async () => {
  const codes = { "network-basic": "2", "network-advanced": "1", "network-pcport": "1", BasicIpaddressMode: "0", BasicIpv4config: "1", BasicIpv6config: "3" };
  const network = ["Network", "Basic"];
  const all = [...network, "Advanced", "PC port"];
  const rows = [
    // user, changed codes, visible tabs, visible fields
    ["admin", {}, all, ["NetworkIPAddressMode", "ipv4type"]],
    ["var", {}, all, ["ipv4type"]],
    ["user", {}, network, []],
    ["user", { BasicIpv6config: "2" }, network, ["ipv6type"]],
    ["admin", { "network-pcport": "3", "network-advanced": "3", BasicIpv4config: "3" }, network, ["NetworkIPAddressMode"]],
    // a code that is none, or is missing, is for admin alone
    ["admin", { "network-pcport": "", BasicIpv4config: "9" }, all, ["NetworkIPAddressMode", "ipv4type"]],
    ["var", { "network-pcport": "", "network-advanced": "", BasicIpv4config: "9" }, network, []],
  ];
  await phone.configure({ NetworkIPAddressMode: "2" });
  const pages = {};
  for (const [user, changed, visibleTabs, fieldNames] of rows) {
    await phone.configure({ ...codes, ...changed });
    const page = pages[user] ??= await phone.openAs(user);
    await phone.go(page, "network");
    const tabs = await page.locator("#navigation .current a:visible").allTextContents();
    assert.deepEqual([tabs, await visibleFields(page)], [visibleTabs, fieldNames], `${user} ${JSON.stringify(changed)}`);
    assert.equal(await page.locator(".bar").isVisible(), fieldNames.length > 0);
  }
});

test("values that look like codes do not hide their fields; a page above one's level shows no settings and no tab", async () => {
  await phone.configure({ AreaCode: "3", ToneDial: "3", GPickupSwitch: "3", "settings-dialplan": "2", "area-code": "2", "settings-tones": "2",
    "features-bluetooth": "2", ToneCountry: "Custom", "features-acd": "0" });
  const page = await phone.openAs("user");
  for (const [name, field] of [["settings-areacode", "AreaCode"], ["settings-tones", "ToneDial"], ["features-bluetooth", "BluetoothSwitch"]]) {
    await phone.go(page, name);
    assert.ok((await visibleFields(page)).includes(field), name);
  }
  phone.expectProblems("403");
  await phone.go(page, "features-acd");
  assert.equal(await page.textContent("#message"), "Your user level may not see this page.");
  assert.deepEqual(await visibleFields(page), []);
  assert.equal(await page.isVisible("#navigation [data-page=features-acd]"), false);
  assert.deepEqual(await page.locator("#navigation .sections > li:visible > a").allTextContents(),
    ["Status", "Account", "Network", "Keys", "Features", "Settings", "Directory", "Security"]);
});

test("what may not be seen is hidden before the first paint and is not posted", async () => {
  await phone.configure({ "features-acd": "2", FeaturesACDAutoAvailable: "2", FeaturesACDAutoAvailableTimer: "0", EnableACDAutoAvailable: "0",
    ACDAutoAvailableTime: "77" });
  const page = await phone.openAs("user");
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
  await phone.go(page, "features-acd");
  await enter(page, { EnableACDAutoAvailable: true });
  assert.deepEqual(await page.evaluate(() => globalThis.seen), []);
  const posted = page.waitForRequest((request) => request.method() === "POST");
  await save(page);
  assert.equal((await posted).postData(), "EnableACDAutoAvailable=1");
});

test("a wrong password is refused in words, the form keeps the name only, and the third one locks the client out", async () => {
  phone.expectProblems("401");
  const page = await phone.open("status");
  await page.waitForFunction(() => document.activeElement.id === "username");
  await enter(page, { username: "admin" });
  for (const text of [...Array(2).fill("The user name or the password is wrong."), "Too many failed attempts. Please try again in 3 minutes"]) {
    await enter(page, { pwd: "not-the-password" });
    await Promise.all([page.waitForResponse((answer) => answer.request().method() === "POST"), page.click("button[type=submit]")]);
    await page.waitForFunction(() => document.activeElement.id === "pwd" && document.activeElement.value === "");
    await page.getByRole("alert").getByText(text).waitFor();
    assert.equal(await page.inputValue("#username"), "admin");
  }
});
