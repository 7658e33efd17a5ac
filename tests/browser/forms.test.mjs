// Saving, checking and leaving the settings pages, with and without scripts.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, phone, save } from "./phone.mjs";

test("a save stores the fields, tells the phone and says so", async () => {
  const page = await phone.openAs("admin", "p=features-acd&q=load");
  await page.check("#EnableACDAutoAvailable");
  await page.fill("#ACDAutoAvailableTime", "301");
  await page.getByText("Enter a whole number from 0 to 300.").waitFor();  // as one types
  assert.equal(await page.getAttribute("#ACDAutoAvailableTime", "aria-invalid"), "true");
  assert.deepEqual(await axe(page), []);
  assert.deepEqual(await phone.messagesDuring(() => save(page)), []);
  assert.equal(await page.textContent("#message"), "Not saved. Please correct the marked fields.");
  await page.fill("#ACDAutoAvailableTime", "30");
  await phone.assertSaves(page, ["app_hostapp 0x10007 39 0"], { EnableACDAutoAvailable: "1", ACDAutoAvailableTime: "30" });
  await page.reload();
  assert.equal(await page.textContent("#message"), "");
});

test("unsaved changes are not left without a warning, and Cancel takes them back", async () => {
  const page = await phone.openAs("admin", "p=features-acd&q=load");
  const warnings = answerDialogs(page);
  const leave = () => page.getByRole("link", { name: "Status", exact: true }).click({ noWaitAfter: true });
  await page.fill("#ACDAutoAvailableTime", "55");
  await Promise.all([page.waitForEvent("dialog"), leave()]);
  assert.deepEqual(warnings, ["beforeunload"]);
  assert.match(page.url(), /p=features-acd/);
  await page.getByRole("button", { name: "Cancel" }).click();
  assert.equal(await page.inputValue("#ACDAutoAvailableTime"), "30");
  await leave();
  await page.waitForURL(/p=status/);
  assert.deepEqual(warnings, ["beforeunload"]);
});

test("during a call nothing is saved; the notice goes back by itself", async () => {
  const page = await phone.openTimed("admin", "p=features-acd&q=load");
  await phone.state({ talking: true });
  await page.fill("#ACDAutoAvailableTime", "12");
  await save(page);
  await page.getByText("A call is in progress").waitFor();
  await phone.state({ talking: false });
  await page.clock.fastForward(4000);
  await page.waitForURL(/p=features-acd&q=load/);
  await phone.assertStored({ ACDAutoAvailableTime: "30" });
  assert.equal(await page.textContent("#message"), "");
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
  await phone.go(page, "p=account-codec&q=load&acc=3");
  await save(page);
  assert.deepEqual(await page.locator("[data-field=enabled] > li > span").allTextContents(), ["G722", "PCMU", "PCMA", "G729"]);
});
