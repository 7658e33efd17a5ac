// The general features page: its groups, its logo and the restart that some of its settings need.
import assert from "node:assert/strict";
import { existsSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { answerDialogs, axe, phone, save, screenshot, values } from "./phone.mjs";

const open = (user = "admin", options = {}) => phone.openAs(user, "p=features-general&q=load", options);
const logoExists = () => existsSync(join(phone.root, "config/Pics/logo.dob"));

test("the overview leads to each group that the user may see", async () => {
  const page = await open();
  const groups = ["Incoming calls", "During a call", "Dialling", "Hotline", "Redial", "DTMF", "Headset and lamps", "Call list", "SIP", "Logo", "Web page and start"];
  assert.deepEqual(await page.locator(".overview a").allTextContents(), groups);
  await page.getByRole("link", { name: "Redial" }).click();
  await page.waitForFunction(() => { const { top } = document.getElementById("redial").getBoundingClientRect(); return top > 0 && top < 200; });
  await phone.configure({ FeaturesHotlineNumber: "0", FeaturesHotlineDelay: "0", FeaturesUseLogo: "3" });
  const other = await open("var");
  assert.deepEqual(await other.locator(".overview a").allTextContents(), groups.filter((group) => !["Hotline", "Logo"].includes(group)));
  await phone.configure({ FeaturesHotlineNumber: "1", FeaturesHotlineDelay: "1", FeaturesUseLogo: "1" });
});

test("a save stores all groups, leaves those of other pages alone and restarts only for what needs it", async () => {
  await phone.configure({ GPickupCode: "*77" });
  const page = await open();
  assert.equal(await page.locator("#PSWDialPrefix").isVisible(), false);
  await page.check("#EnablePSWDial");
  await page.fill("#PSWDialPrefix", "");
  await save(page);
  assert.equal(await page.textContent("#PSWDialPrefix-error"), "This field is required.");
  await page.fill("#PSWDialPrefix", "17909");
  await page.fill("#PSWDialLength", "4");
  await page.fill("#CallWaitingOnCode", "*43#");
  await page.getByLabel("*", { exact: true }).check();
  await page.selectOption("#NormalRefuseCode", "603");
  await page.check("#AccountAutoAnswerSwitch");
  await page.fill("#CallNumFilter", " ,-()\"'");
  await page.selectOption("#PayloadType", "9");
  await page.fill("#ReLogOffTime", "5");
  await phone.assertSaves(page, ["app_hostapp 0x10007 11 0", "0x10007 42 0"], { EnablePSWDial: "1", PSWDialPrefix: "17909", PSWDialLength: "4", CallWaitingOnCode: "*43#", KeyAsSendSwitch: "2", NormalRefuseCode: "603", CallNumFilter: " ,-()\"'", PayloadType: "9", ReLogOffTime: "5", GPickupCode: "*77", DialNowDelay: "1",
    "AccountAutoAnswerSwitch@6": "1" });
  assert.equal(await page.isChecked("#AccountAutoAnswerSwitch"), true);
  await page.fill("#DhcpHostnameValue", "desk-7");
  await save(page);
  await page.getByText("Restart the phone now?").waitFor();
  assert.deepEqual(await axe(page), []);
  await page.getByRole("button", { name: "Go back" }).click();
  await phone.assertSaves(page, [], { DhcpHostnameValue: "desk-7" }, "Save only");
});

test("a logo is uploaded and deleted in the page, and what was typed stays", async () => {
  const page = await open();
  assert.equal(await page.locator("#logoFile").count(), 0);  // this type has no logo of one's own
  await phone.state({ phoneType: 41 });
  await page.reload();
  await page.fill("#HotlineNumber", "500");
  await page.getByText("It may be up to 192 pixels wide and 64 pixels high.").waitFor();
  assert.equal(await page.getByRole("button", { name: "Delete the logo" }).isVisible(), false);
  const choose = (...bytes) => page.setInputFiles("#logoFile", { name: "logo.dob", mimeType: "application/octet-stream", buffer: Buffer.from([...bytes, 0, 0, 0]) });
  const upload = () => page.getByRole("button", { name: "Upload" }).click();
  const result = (text) => page.locator("#logo-result").getByText(text).waitFor();
  await upload();
  await result("Choose a file first.");
  await choose(193, 64);
  await result("This logo is 193 × 64 pixels. The screen shows up to 192 × 64.");
  await choose(192, 64);
  await phone.state({ talking: true });
  await upload();
  await result("A call is in progress");
  await phone.state({ talking: false });
  const messages = await phone.messagesDuring(async () => { await upload(); await result("The logo has been uploaded."); });
  assert.deepEqual([messages, logoExists(), await values(page, "LCDLogo", "HotlineNumber")], [["app_hostapp 0x10007 21 0"], true, ["2", "500"]]);
  await phone.assertStored({ LCDLogo: "2" });
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "features-general-logo");
  answerDialogs(page, false, true);
  const button = page.getByRole("button", { name: "Delete the logo" });
  await button.click();
  assert.equal(logoExists(), true);
  await button.click();
  await result("The logo has been deleted.");
  assert.deepEqual([logoExists(), await button.isVisible(), await page.inputValue("#HotlineNumber")], [false, false, "500"]);
});

test("the phone's refusals are told: too big, no file, logged out", async () => {
  phone.expectProblems("500");
  const page = await open();
  const rows = [
    [{ body: { template: "upload-result", variables: { result: "big" } } }, "The logo is too large for the phone. The old logo stays."],
    [{ body: { template: "upload-result", variables: { result: "fail" } } }, "The phone could not store the logo. Please try again."],
    [{ body: { template: "upload-result", variables: {} } }, "The phone received no file. Please try again."],
    [{ status: 500 }, "The phone does not answer. Please try again."],
  ];
  for (const [{ status = 200, body }, text] of rows) {
    await page.route("**/*uploadLogo", (route) => route.fulfill({ status, contentType: "application/json", body: body ? JSON.stringify(body) : "" }), { times: 1 });
    await page.setInputFiles("#logoFile", { name: "logo.dob", mimeType: "application/octet-stream", buffer: Buffer.from([1, 1]) });
    await page.getByRole("button", { name: "Upload" }).click();
    await page.locator("#logo-result").getByText(text).waitFor();
  }
  await page.context().clearCookies();
  await page.getByRole("button", { name: "Upload" }).click();
  await page.locator("#logo-result").getByText("You have been logged out.").waitFor();
});

test("without scripts the upload answers with a page", async () => {
  const page = await open("admin", { javaScriptEnabled: false });
  await page.setInputFiles("#logoFile", { name: "logo.dob", mimeType: "application/octet-stream", buffer: Buffer.from([250, 250, 0]) });
  await page.getByRole("button", { name: "Upload" }).click();
  assert.deepEqual([await page.textContent("h1"), await page.textContent("main .card p")], ["Upload", "big"]);
  await page.getByRole("link", { name: "Go back" }).click();
  assert.match(page.url(), /p=features-general&q=load$/);
});
