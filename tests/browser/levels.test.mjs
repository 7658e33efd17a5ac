// Who sees which tabs and settings.
import assert from "node:assert/strict";
import test from "node:test";
import { phone, save, visibleFields } from "./phone.mjs";

const tabs = (page) => page.locator("#navigation .current a:visible").allTextContents();

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
  for (const [user, changed, visibleTabs, fieldNames] of rows) {
    await phone.configure({ ...codes, ...changed });
    const page = await phone.openAs(user, "p=network&q=load");
    assert.deepEqual([await tabs(page), await visibleFields(page)], [visibleTabs, fieldNames], `${user} ${JSON.stringify(changed)}`);
    assert.equal(await page.locator(".bar").isVisible(), fieldNames.length > 0);
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
