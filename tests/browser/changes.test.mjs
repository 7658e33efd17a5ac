// Changes that are counted, listed and put back; saves that are taken back; forms whose session ended.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, overflow, phone, press, save, screenshot, values } from "./phone.mjs";

const rows = (page) => page.locator(".changes li > div").allInnerTexts().then((all) => all.map((text) => text.replace(/\s+/g, " ")));
const message = (page, text) => page.locator("#message").getByText(text, { exact: true }).waitFor();
const focused = (page) => page.evaluate(() => document.activeElement.ariaLabel ?? document.activeElement.textContent);

// With the keyboard alone: the button stands first in the content.
async function takeBack(page) {
  await page.getByRole("button", { name: "Take back" }).waitFor();
  for (const key of ["Tab", "Enter", "Tab"]) await page.keyboard.press(key);
  assert.equal(await focused(page), "Take back");
  await page.keyboard.press("Enter");
}

test("changes are counted, listed in the page's words and put back one by one", async () => {
  await phone.configure({ AutoProvisionUser: "phone45" });
  const page = await phone.openAs("admin", "settings-autop", { viewport: { width: 360, height: 740 }, timed: true });
  await enter(page, { AutoProvisionEnableWeekly: true, AutoProvisionUser: "", AutoProvisionPassword: "new-secret", AutoProvisionWeeklyBeginTime: "01:30" });
  await page.getByLabel("Saturday").uncheck();
  const days = "Monday, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday";
  await page.clock.runFor(2000);
  assert.equal(await page.textContent(".bar [role=status]"), "5 changes");
  await page.getByRole("button", { name: "5 changes" }).press("Enter");
  assert.deepEqual(await rows(page), ["User name Server from phone45 to empty", "Password Server changed", "Weekly Schedule from Off to On",
    "From Schedule from 00:00 to 01:30", `Days Schedule from ${days} to ${days.replace(" Saturday,", "")}`]);
  assert.deepEqual([await axe(page), await overflow(page)], [[], 0]);
  await screenshot(page, "changes-narrow");
  await page.getByRole("button", { name: "Put back: Days" }).press("Enter");
  assert.deepEqual([await page.getByLabel("Saturday").isChecked(), await focused(page)], [true, "Put back: From"]);
  await page.getByRole("button", { name: "Put back: Weekly" }).press("Enter");  // which takes its time out of the form
  await page.keyboard.press("Enter");
  await page.keyboard.press("Enter");
  assert.deepEqual([await focused(page), await values(page, "AutoProvisionUser", "AutoProvisionPassword")], ["Save", ["phone45", "********"]]);
  await page.clock.runFor(2000);
  assert.equal(await page.textContent(".bar [role=status]"), "Nothing is changed.");
  assert.equal(await page.getByRole("button", { name: "change" }).count(), 0);
});

test("keys, lists and sliders tell their changes and come back as well", async () => {
  const page = await phone.openAs("admin", "p=dsskey&q=load&model=1");
  const open = (name) => page.getByRole("button", { name }).click();
  await page.locator("#key-2 > button").click();
  await page.fill("#key-type", "speed");
  await page.keyboard.press("Enter");
  await page.fill("#key-value", "100");
  await open("1 change");
  assert.deepEqual(await rows(page), ["Key 2 Keys from Line 2 to Speed dial 100 on Line 2"]);
  await press(page, "Put back: Key 2");
  assert.equal(await page.textContent("#key-2 .lines"), "Line 2");
  await phone.go(page, "account-codec");
  await press(page, "Remove: G722");
  await open("1 change");
  assert.deepEqual(await rows(page), ["In use Codecs from G722, PCMU, PCMA, G729 to PCMU, PCMA, G729"]);
  await press(page, "Put back: In use");
  assert.equal(await page.locator("[data-field=enabled] > li").first().getAttribute("data-entry"), "G722:2");
  await phone.configure({ InactiveLevel: "99" });  // not on the scale
  await phone.go(page, "settings-preference");
  await enter(page, { InactiveLevel: "4" });
  await open("1 change");
  await press(page, "Put back: ");
  assert.deepEqual([await page.textContent("output[for=InactiveLevel]"), await page.getAttribute("#InactiveLevel", "name")], ["99", ""]);
});

test("a save is taken back as a whole, as long as it is still what the phone has", async () => {
  const before = { NetworkWanType: "0", NetworkWanStaticIp: "10.0.0.7", NetworkWanStaticMask: "255.0.0.0", NetworkWanStaticGateWay: "" };
  const saved = { NetworkWanType: "2", NetworkWanStaticIp: "192.168.1.77", NetworkWanStaticMask: "255.255.255.0", NetworkWanStaticGateWay: "192.168.1.1" };
  const { NetworkWanType: ipv4type, ...address } = saved;
  await phone.configure(before);
  const page = await phone.openAs("admin", "network");
  const saveAddress = async () => {
    await enter(page, { ipv4type, ...address });
    await phone.assertSaves(page, saved, "Save only");
  };
  await saveAddress();
  await takeBack(page);
  await message(page, "Taken back.");
  await phone.assertStored(before);
  assert.equal(await page.getByRole("button", { name: "Take back" }).count(), 0);
  await saveAddress();
  await phone.configure({ NetworkWanStaticIp: "192.168.1.78" });
  await takeBack(page);
  await message(page, "Not taken back. It has been changed since: IP address: 192.168.1.78.");
  await phone.assertStored({ ...saved, NetworkWanStaticIp: "192.168.1.78" });
  await enter(page, { ipv4type: "1", NetworkPppoeUser: "line7", NetworkPppoePin: "0815" });
  await phone.assertSaves(page, { NetworkPppoePin: "0815" }, "Save only");
  assert.doesNotMatch(await page.evaluate(() => JSON.stringify(sessionStorage)), /0815/);
  await takeBack(page);
  await message(page, "Taken back. This stays as it was saved: PPPoE password.");
  await phone.assertStored({ NetworkWanType: "2", NetworkPppoePin: "0815", NetworkPppoeUser: "" });

  await phone.configure({ ToneCountry: "Custom", ToneDial: "350/0" });  // the save brings tones along
  await phone.go(page, "settings-tones");
  await enter(page, { ToneCountry: "Austria" });
  await phone.assertSaves(page, { ToneCountry: "Austria" });
  await takeBack(page);
  await message(page, "Taken back.");
  await phone.assertStored({ ToneCountry: "Custom", ToneDial: "350/0" });
});

test("keys and lists are taken back, of the account that was saved", async () => {
  const page = await phone.openAs("admin", "p=account-codec&q=load&acc=2");
  await press(page, "Move up: PCMU");
  await phone.assertSaves(page, { "AccountAudio2Priority@2": "2" });
  await takeBack(page);
  await message(page, "Taken back.");
  await phone.assertStored({ "AccountAudio2Priority@2": "1" });
  await phone.go(page, "p=dsskey&q=load&model=1&linepage=2");
  await page.locator("#key-12 > button").click();
  await page.fill("#key-type", "do not");
  await page.keyboard.press("Enter");
  await page.getByRole("button", { name: "1 change" }).waitFor();
  await save(page);
  await takeBack(page);
  await message(page, "Taken back.");
  assert.equal(await page.textContent("#key-12 .lines"), "Not used");
});

test("what was entered when a session ended is offered to the same user after the login, and to nobody else", async () => {
  const page = await phone.openAs("admin", "p=account-register&q=load&acc=3");
  const loseSession = async (act) => {
    await enter(page, { AccountEnable: true, AccountDisplayName: "Bob", AccountPassword: "new-secret" });
    await page.context().clearCookies();
    await act();
    await page.waitForURL(/jumpto=account-register/);
    await page.waitForSelector("html:not(.starting)");
  };
  await loseSession(() => save(page));
  assert.equal(await page.isVisible("#kept"), true);
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "login-kept");
  await phone.logIn(page, "admin", "admin");
  await message(page, "Your changes were not saved. Take them over?");
  await press(page, "Take over");
  await message(page, "Taken over. Nothing is saved yet. Not taken over: Password.");
  assert.match(page.url(), /acc=3/);
  await page.getByRole("button", { name: "2 changes" }).waitFor();
  assert.deepEqual([await axe(page), await page.inputValue("#AccountPassword")], [[], "********"]);
  await phone.assertStored({ "AccountDisplayName@3": "" });

  answerDialogs(page, true);
  await loseSession(() => page.reload());  // as a page asks for that has noticed it
  await phone.logIn(page, "admin", "admin");
  await press(page, "Discard");
  await page.reload();
  await page.waitForSelector("html:not(.starting)");
  assert.equal(await page.textContent("#message"), "");

  await loseSession(() => save(page));
  await phone.logIn(page, "var", "var");
  await phone.go(page, "p=account-register&q=load&acc=3");
  await page.waitForLoadState("load");
  assert.deepEqual([await page.textContent("#message"), await page.evaluate(() => sessionStorage.length)], ["", 0]);
});

test("a save during a call or without an answer keeps what was entered; without a store of the browser's, pages work all the same", async () => {
  const page = await phone.openAs("admin", "features-acd");
  await phone.state({ talking: true });
  await enter(page, { EnableACDAutoAvailable: true, ACDAutoAvailableTime: "44" });
  await save(page);
  await page.getByText("A call is in progress").waitFor();
  await phone.state({ talking: false });
  await page.waitForURL(/p=features-acd&q=load/);
  await press(page, "Take over");
  await phone.assertSaves(page, { EnableACDAutoAvailable: "1", ACDAutoAvailableTime: "44" });
  await page.getByRole("button", { name: "Take back" }).waitFor();

  phone.expectProblems("ERR_");
  await page.route("**/*q=write", (route) => route.abort());
  await enter(page, { ACDAutoAvailableTime: "43" });
  await Promise.all([page.waitForEvent("requestfailed"), save(page)]);
  await page.waitForTimeout(500);  // until the browser's own page is there
  await page.goBack();
  await page.getByRole("button", { name: "1 change" }).waitFor();
  assert.deepEqual([await values(page, "ACDAutoAvailableTime"), await page.textContent("#message")], [["43"], ""]);

  const other = await phone.openAs("admin");
  await other.addInitScript(() => Object.defineProperty(window, "sessionStorage", { get() { throw new DOMException("none", "SecurityError"); } }));
  await phone.go(other, "features-acd");
  await enter(other, { ACDAutoAvailableTime: "45" });
  await other.getByRole("button", { name: "1 change" }).waitFor();
  await Promise.all([other.waitForEvent("load"), save(other)]);
  await phone.assertStored({ ACDAutoAvailableTime: "45" });
});

test("a phone that moves is named before the save, looked for at both addresses, and opened where it answers", async () => {
  await phone.configure({ NetworkWanType: "0", NetworkIPAddressMode: "0" });
  const page = await phone.openAs("admin", "network", { timed: true });
  const there = "http://127.0.0.2:";
  await page.route(`${there}*/**`, (route) => route.fulfill({ body: "here" }));
  phone.expectProblems(there, "503", "ERR_");
  await enter(page, { ipv4type: "2", NetworkWanStaticIp: "127.0.0.2", NetworkWanStaticMask: "255.0.0.0", NetworkWanStaticGateWay: "127.0.0.1" });
  await save(page);
  const address = phone.origin.replace("127.0.0.1", "127.0.0.2");
  assert.deepEqual(await page.locator("dialog .findings li").allTextContents(), [
    `After the restart, these pages are found at ${address}/.`,
    "With a wrong gateway, subnet mask or prefix length, computers of other networks do not reach the phone."]);
  await phone.state({ rebootSeconds: 3600 });
  await press(page, "Save and restart");
  await page.getByRole("link", { name: address }).waitFor();
  await screenshot(page, "notice-new-address");
  assert.deepEqual(await axe(page), []);
  for (let looks = 0; looks < 60 && !page.url().startsWith(there); ++looks) {
    await page.clock.runFor(2000);
    await page.waitForTimeout(50);
  }
  await page.waitForURL(`${address}/`);
});
