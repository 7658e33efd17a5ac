// The features: forwarding, and the general settings with their overview and the logo.
import assert from "node:assert/strict";
import { existsSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { answerDialogs, axe, enter, phone, press, save, screenshot, values, visibleFields } from "./phone.mjs";

const lose = "Discard the unsaved changes?";

test("another mode or account shows its own settings, after a question when changes would be lost", async () => {
  await phone.configure({ "AccountEnable@0": "1", "AccountUserName@0": "1000", "AccountEnable@1": "1", "AccountUserName@1": "" });
  const page = await phone.openAs("admin", "features-forward");
  const isPhoneMode = (name) => page.locator(`[name=${name}][value="0"]`).isChecked();
  const chooseAccounts = () => page.getByLabel("Each account").first().click();
  const questions = answerDialogs(page);
  await enter(page, { BusyForwardSwitch: true });
  await save(page);
  assert.equal(await page.textContent("#BusyForwardTarget-error"), "This field is required.");
  await chooseAccounts();
  assert.deepEqual([questions, await isPhoneMode("ForwardMode"), await page.isVisible("#ForwardAccount")], [[lose], true, false]);
  await press(page, "Cancel");
  await chooseAccounts();
  await page.getByText("The mode shown takes effect when you save.").waitFor();
  assert.deepEqual(await page.locator("#ForwardAccount option").allTextContents(), ["1000", "Account 2"]);
  assert.deepEqual([await page.inputValue("#BusyForwardTarget"), await isPhoneMode("DndMode")], ["", true]);
  await enter(page, { ForwardAccount: "1" });
  await page.waitForURL(/fwd=1/);
  await enter(page, { AlwaysForwardSwitch: true, AlwaysForwardTarget: "3003" });
  await phone.assertSaves(page, { ForwardMode: "1" });
  assert.match(page.url(), /p=features-forward&q=load&fwd=1$/);
  assert.deepEqual(await values(page, "ForwardAccount", "AlwaysForwardTarget"), ["1", "3003"]);
  await enter(page, { ForwardAccount: "0" });
  await page.waitForURL(/fwd=0/);
  assert.deepEqual([await page.inputValue("#AlwaysForwardTarget"), questions], ["", [lose]]);

  await phone.configure({ "AccountEnable@0": "0", "AccountEnable@1": "0", BusyForwardTarget: "2002" });
  await phone.go(page, "p=features-forward&q=load&ForwardMode=1&DndMode=1");
  assert.equal(await page.locator(".alert:visible").count(), 2);
  assert.deepEqual(await visibleFields(page), ["ForwardMode", "DndMode", "DNDEmergencySwitch"]);
  await phone.assertSaves(page, { DndMode: "1", BusyForwardTarget: "2002" });
});

test("the overview leads to each group that the user may see", async () => {
  const page = await phone.openAs("admin", "features-general");
  const groups = ["Incoming calls", "During a call", "Dialling", "Hotline", "Redial", "DTMF", "Headset and lamps", "Call list", "SIP", "Logo",
    "Web page and start"];
  assert.deepEqual(await page.locator(".overview a").allTextContents(), groups);
  await page.getByRole("link", { name: "Redial" }).click();
  await page.waitForFunction(() => { const { top } = document.getElementById("redial").getBoundingClientRect(); return top > 0 && top < 200; });
  await phone.configure({ FeaturesHotlineNumber: "0", FeaturesHotlineDelay: "0", FeaturesUseLogo: "3" });
  const other = await phone.openAs("var", "features-general");
  assert.deepEqual(await other.locator(".overview a").allTextContents(), groups.filter((group) => !["Hotline", "Logo"].includes(group)));
  await phone.configure({ FeaturesHotlineNumber: "1", FeaturesHotlineDelay: "1", FeaturesUseLogo: "1" });
});

test("a save asks for a restart only where a changed field needs one, and where the button says so", async () => {
  const page = await phone.openAs("admin", "features-general");
  await enter(page, { CallWaitingOnCode: "*43#" });
  await phone.assertSaves(page, { CallWaitingOnCode: "*43#" });
  await press(page, "Save and restart");
  await press(page, "Go back");
  await enter(page, { DhcpHostnameValue: "desk-7" });
  await save(page);
  await page.getByText("Restart the phone now?").waitFor();
  assert.deepEqual(await axe(page), []);
  await press(page, "Go back");
  await phone.assertSaves(page, { DhcpHostnameValue: "desk-7" }, "Save only");
});

test("a logo is uploaded and deleted in the page, what was typed stays, and the phone's refusals are told", async () => {
  const page = await phone.openAs("admin", "features-general");
  assert.equal(await page.locator("#logoFile").count(), 0);  // this type has no logo of one's own
  await phone.state({ phoneType: 41 });
  await page.reload();
  await enter(page, { HotlineNumber: "500" });
  await page.getByText("It may be up to 192 pixels wide and 64 pixels high.").waitFor();
  const remove = page.getByRole("button", { name: "Delete the logo" });
  const exists = () => existsSync(join(phone.root, "config/Pics/logo.dob"));
  const choose = (...bytes) =>
    page.setInputFiles("#logoFile", { name: "logo.dob", mimeType: "application/octet-stream", buffer: Buffer.from([...bytes, 0, 0, 0]) });
  const result = (text) => page.locator("#logo-result").getByText(text).waitFor();
  const upload = async (text) => { await press(page, "Upload"); await result(text); };
  assert.equal(await remove.isVisible(), false);
  await upload("Choose a file first.");
  await choose(193, 64);
  await result("This logo is 193 × 64 pixels. The screen shows up to 192 × 64.");
  await choose(192, 64);
  await phone.state({ talking: true });
  await upload("A call is in progress");
  await phone.state({ talking: false });
  phone.expectProblems("500");
  for (const [status, variables, text] of [
    [200, { result: "big" }, "The logo is too large for the phone. The old logo stays."],
    [200, { result: "fail" }, "The phone could not store the logo. Please try again."],
    [200, {}, "The phone received no file. Please try again."],
    [500, undefined, "The phone does not answer. Please try again."],
  ]) {
    const body = variables ? JSON.stringify({ template: "upload-result", variables }) : "";
    await page.route("**/*uploadLogo", (route) => route.fulfill({ status, contentType: "application/json", body }), { times: 1 });
    await upload(text);
  }
  await upload("The logo has been uploaded.");
  assert.deepEqual([exists(), await values(page, "LCDLogo", "HotlineNumber")], [true, ["2", "500"]]);
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "features-general-logo");
  answerDialogs(page, false, true);
  await remove.click();
  assert.equal(exists(), true);
  await remove.click();
  await result("The logo has been deleted.");
  assert.deepEqual([exists(), await remove.isVisible(), await page.inputValue("#HotlineNumber")], [false, false, "500"]);
  await choose(1, 1);
  await page.context().clearCookies();
  await upload("You have been logged out.");
});
