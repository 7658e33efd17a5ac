// Saving, checking and leaving the settings pages, with and without scripts.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, phone, press, save } from "./phone.mjs";

test("a form checks as one types, says when it is saved, warns before changes are lost, and saves nothing during a call", async () => {
  const page = await phone.openAs("admin", "features-acd", { timed: true });
  const message = () => page.textContent("#message");
  await enter(page, { EnableACDAutoAvailable: true, ACDAutoAvailableTime: "301" });
  await page.clock.fastForward(700);
  await page.getByText("Enter a whole number from 0 to 300.").waitFor();  // as one types
  assert.equal(await page.getAttribute("#ACDAutoAvailableTime", "aria-invalid"), "true");
  assert.deepEqual(await axe(page), []);
  await save(page);
  assert.equal(await message(), "Not saved. Please correct the marked fields.");
  await enter(page, { ACDAutoAvailableTime: "30" });
  await phone.assertSaves(page, { EnableACDAutoAvailable: "1", ACDAutoAvailableTime: "30" });
  await page.reload();
  assert.equal(await message(), "");

  await enter(page, { ACDAutoAvailableTime: "12" });
  await phone.state({ talking: true });
  await save(page);
  await page.getByText("A call is in progress").waitFor();
  await phone.state({ talking: false });
  await page.clock.fastForward(4000);
  await page.waitForURL(/p=features-acd&q=load/);
  await phone.assertStored({ ACDAutoAvailableTime: "30" });
  assert.equal(await message(), "");

  const warnings = answerDialogs(page);
  const leave = () => page.getByRole("link", { name: "Status", exact: true }).click({ noWaitAfter: true });
  await enter(page, { ACDAutoAvailableTime: "55" });
  await Promise.all([page.waitForEvent("dialog"), leave()]);
  assert.match(page.url(), /p=features-acd/);
  await press(page, "Cancel");
  assert.equal(await page.inputValue("#ACDAutoAvailableTime"), "30");
  await leave();
  await page.waitForURL(/p=status/);
  assert.deepEqual(warnings, ["beforeunload"]);
});

test("without scripts, people log in and save all the same", async () => {
  await phone.configure({ NetworkWanType: "1", NetworkIPAddressMode: "2" });
  await phone.state({ phoneType: 41 });
  const page = await phone.open("features-acd", { javaScriptEnabled: false });
  await enter(page, { username: "admin", pwd: "admin" });
  await page.click("button[type=submit]");
  await page.waitForURL(/p=features-acd/);
  const rows = [
    ["features-acd", { EnableACDAutoAvailable: true, ACDAutoAvailableTime: "42" }, { EnableACDAutoAvailable: "1", ACDAutoAvailableTime: "42" }],
    ["features-acd", { EnableACDAutoAvailable: false }, { EnableACDAutoAvailable: "0" }],
    ["network", { NetworkPppoeUser: "line7" }, { NetworkPppoeUser: "line7", NetworkWanType: "1", NetworkIPAddressMode: "2" }],
    ["p=account-codec&q=load&acc=1", {}, { "AccountAudio2Switch@1": "1" }],
  ];
  for (const [query, entered, stored] of rows) {
    await phone.go(page, query);
    await enter(page, entered);
    await Promise.all([page.waitForEvent("load"), page.getByRole("button", { name: "Save", exact: true }).click()]);
    await phone.assertStored(stored);
  }
  assert.deepEqual(await page.locator("[data-field=enabled] > li > span").allTextContents(), ["G722", "PCMU", "PCMA", "G729"]);
  await phone.go(page, "features-general");
  await page.setInputFiles("#logoFile", { name: "logo.dob", mimeType: "application/octet-stream", buffer: Buffer.from([250, 250, 0]) });
  await press(page, "Upload");
  assert.deepEqual([await page.textContent("h1"), await page.textContent("main .card p")], ["Upload", "big"]);
  await page.getByRole("link", { name: "Go back" }).click();
  assert.match(page.url(), /p=features-general&q=load$/);
});
