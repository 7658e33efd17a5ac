// Forwarding and do not disturb: one set of settings for the phone, or one for each account.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { startPhone } from "./phone.mjs";

let phone;
before(async () => {
  phone = await startPhone();
  await phone.configure({}, { 0: { AccountEnable: "1", AccountUserName: "1000" }, 1: { AccountEnable: "1", AccountUserName: "" } });
});
after(() => phone?.stop());

const save = async (page) => {
  await page.locator(".bar .primary").click();
  await page.getByText("Saved.").waitFor();
};
const radio = (page, name, value) => page.locator(`[name=${name}][value="${value}"]`);

test("the phone's own settings", async () => {
  const page = await phone.openAs("user", "p=features-forward&q=load");
  assert.equal(await page.isVisible("#ForwardAccount"), false);
  await page.check("#BusyForwardSwitch");
  await page.locator(".bar .primary").click();
  assert.equal(await page.textContent("#BusyForwardTarget-error"), "This field must be filled in.");
  await page.fill("#BusyForwardTarget", "2002");
  await page.selectOption("#NoAnswerForwardDelayTime", { label: "18" });
  await page.check("#DndStatus");
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["0x10007 1 0", "0x10007 30 0"]);
  assert.deepEqual(await Promise.all(["BusyForwardSwitch", "BusyForwardTarget", "NoAnswerForwardDelayTime", "DndStatus"].map((key) => phone.config(key))),
    ["1", "2002", "3", "1"]);
  phone.assertNoProblems();
});

test("another mode or account shows its own settings, after a question when changes would be lost", async () => {
  const page = await phone.openAs("admin", "p=features-forward&q=load");
  const questions = [];
  page.on("dialog", (dialog) => { questions.push(dialog.type()); dialog.dismiss(); });
  await page.fill("#BusyForwardTarget", "2003");
  await page.getByLabel("Each account").first().click();
  assert.deepEqual([questions, await radio(page, "ForwardMode", 0).isChecked(), await page.isVisible("#ForwardAccount")], [["confirm"], true, false]);
  await page.getByRole("button", { name: "Cancel" }).click();
  await page.getByLabel("Each account").first().click();
  await page.getByText("The mode shown takes effect when you save.").waitFor();
  assert.deepEqual(await page.locator("#ForwardAccount option").allTextContents(), ["1000", "Account 2"]);
  assert.deepEqual([await page.inputValue("#BusyForwardTarget"), await radio(page, "DndMode", 0).isChecked()], ["", true]);
  await page.selectOption("#ForwardAccount", "1");
  await page.waitForURL(/fwd=1/);
  await page.check("#AlwaysForwardSwitch");
  await page.fill("#AlwaysForwardTarget", "3003");
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["0x10007 1 0"]);
  assert.match(page.url(), /p=features-forward&q=load&fwd=1$/);
  assert.deepEqual([await page.inputValue("#ForwardAccount"), await page.inputValue("#AlwaysForwardTarget")], ["1", "3003"]);
  await page.selectOption("#ForwardAccount", "0");
  await page.waitForURL(/fwd=0/);
  assert.deepEqual([await page.inputValue("#AlwaysForwardTarget"), await phone.config("ForwardMode"), questions], ["", "1", ["confirm"]]);
  phone.assertNoProblems();
});

test("without an active account the page says so and keeps the settings", async () => {
  await phone.configure({}, { 0: { AccountEnable: "0" }, 1: { AccountEnable: "0" } });
  const page = await phone.openAs("admin", "p=features-forward&q=load");
  await phone.go(page, "p=features-forward&q=load&ForwardMode=1&DndMode=1");
  assert.equal(await page.locator(".alert:visible").count(), 2);
  assert.deepEqual(await page.locator("main .field:visible").evaluateAll((all) => all.map((field) => field.querySelector("[name]").name)),
    ["ForwardMode", "DndMode", "DNDEmergencySwitch"]);
  await save(page);
  assert.deepEqual([await phone.config("DndMode"), await phone.config("BusyForwardTarget")], ["1", "2002"]);
});
