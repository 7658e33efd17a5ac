// The features: forwarding, general settings and logo, audio, phone lock, remote control and action URLs.
import assert from "node:assert/strict";
import { existsSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { answerDialogs, assertErrors, axe, checkPage, phone, save, screenshot, values, visibleFields } from "./phone.mjs";

const open = (name, user = "admin", options = {}) => phone.openAs(user, `p=${name}&q=load`, options);
const openGeneral = (user, options) => open("features-general", user, options);
const logoExists = () => existsSync(join(phone.root, "config/Pics/logo.dob"));
const lose = "Discard the unsaved changes?";

test("the pages of few fields check them, show what a switch brings and save what shows", async () => {
  const page = await phone.openAs("admin");
  const numbers = "Enter numbers separated by commas, without spaces, such as 112,911.";
  const trusted = "Enter IP addresses separated by commas, without spaces, with * for any part, or the word any.";
  const servers = "Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21.";
  await checkPage(page, "features-audio", {
    change: async () => { await page.uncheck("#VolumeButtonSoundOn"); await page.selectOption("#RingerDevice", "2"); },
    errors: [["ReDialtoneNumber", "9a", "Enter digits only."], ["ReDialtoneNumber", "9", ""]],
    messages: ["0x10007 11 0"], stores: { VolumeButtonSoundOn: "0", RingerDevice: "2", ReDialtoneNumber: "9", CallWaitingToneSwitch: "1" },
  });
  await checkPage(page, "features-transfer", { change: () => page.getByLabel("Blind transfer", { exact: true }).check(), messages: [], stores: { TransferModeViaDsskey: "2" } });
  await checkPage(page, "features-phonelock", {
    stored: { LockEnable: "0" }, fields: ["LockEnable", "EmergencyNumberList"],
    change: async () => { await page.check("#LockEnable"); await page.selectOption("#PhoneLock", "2"); }, appear: ["PhoneLock", "UnlockPIN", "LockTimeout"],
    errors: [["EmergencyNumberList", "112,,911", numbers], ["EmergencyNumberList", "112, 911", numbers], ["EmergencyNumberList", "112,*#06#", ""],
      ["UnlockPIN", "12a4", "Enter 1 to 15 digits."], ["UnlockPIN", "", "This field is required."], ["UnlockPIN", "********", ""], ["UnlockPIN", "0815", ""],
      ["LockTimeout", "3601", "Enter a whole number from 0 to 3600."], ["LockTimeout", "3600", ""]],
    messages: ["app_hostapp 0x10007 20 0"], stores: { LockEnable: "1", PhoneLock: "2", EmergencyNumberList: "112,*#06#", LockTimeout: "3600" },
  });
  await checkPage(page, "features-intercom", {
    stored: { IntercomAllowance: "0" }, fields: ["IntercomAllowance"], change: () => page.check("#IntercomAllowance"),
    appear: ["IntercomMuteSwitch", "IntercomToneSwitch", "IntercomBargeSwitch"],
  });
  await checkPage(page, "features-remotecontrl", {
    errors: [["AURILimitIP", "10.0.*.*,192.168.1.7", ""], ["AURILimitIP", "ANY", ""], ["AURILimitIP", "2001:db8::7", ""],
      ...["10.0.*", "any,10.0.0.1", "10.0.0.256", "10.0.0.1, 10.0.0.2", "10.0.0.1,"].map((text) => ["AURILimitIP", text, trusted]),
      ["PushXMLServerIP", "10.0.0.1 , 10.0.0.2", ""], ["PushXMLServerIP", "10.0.0.*", servers], ["PushXMLServerIP", "host.example", servers]],
  });
});

test("forwarding and do not disturb have settings of the phone", async () => {
  const page = await phone.openAs("user", "p=features-forward&q=load");
  assert.equal(await page.isVisible("#ForwardAccount"), false);
  await page.check("#BusyForwardSwitch");
  await save(page);
  assert.equal(await page.textContent("#BusyForwardTarget-error"), "This field is required.");
  await page.fill("#BusyForwardTarget", "2002");
  await page.selectOption("#NoAnswerForwardDelayTime", { label: "18" });
  await page.check("#DndStatus");
  await phone.assertSaves(page, ["0x10007 1 0", "0x10007 30 0"],
    { BusyForwardSwitch: "1", BusyForwardTarget: "2002", NoAnswerForwardDelayTime: "3", DndStatus: "1" });
});

test("another mode or account shows its own settings, after a question when changes would be lost", async () => {
  await phone.configure({ "AccountEnable@0": "1", "AccountUserName@0": "1000", "AccountEnable@1": "1", "AccountUserName@1": "" });
  const page = await phone.openAs("admin", "p=features-forward&q=load");
  const isPhoneMode = (name) => page.locator(`[name=${name}][value="0"]`).isChecked();
  const questions = answerDialogs(page);
  await page.fill("#BusyForwardTarget", "2003");
  await page.getByLabel("Each account").first().click();
  assert.deepEqual([questions, await isPhoneMode("ForwardMode"), await page.isVisible("#ForwardAccount")], [[lose], true, false]);
  await page.getByRole("button", { name: "Cancel" }).click();
  await page.getByLabel("Each account").first().click();
  await page.getByText("The mode shown takes effect when you save.").waitFor();
  assert.deepEqual(await page.locator("#ForwardAccount option").allTextContents(), ["1000", "Account 2"]);
  assert.deepEqual([await page.inputValue("#BusyForwardTarget"), await isPhoneMode("DndMode")], ["", true]);
  await page.selectOption("#ForwardAccount", "1");
  await page.waitForURL(/fwd=1/);
  await page.check("#AlwaysForwardSwitch");
  await page.fill("#AlwaysForwardTarget", "3003");
  await phone.assertSaves(page, ["0x10007 1 0"], { ForwardMode: "1" });
  assert.match(page.url(), /p=features-forward&q=load&fwd=1$/);
  assert.deepEqual(await values(page, "ForwardAccount", "AlwaysForwardTarget"), ["1", "3003"]);
  await page.selectOption("#ForwardAccount", "0");
  await page.waitForURL(/fwd=0/);
  assert.deepEqual([await page.inputValue("#AlwaysForwardTarget"), questions], ["", [lose]]);
});

test("without an active account the forward page says so and keeps the settings", async () => {
  await phone.configure({ "AccountEnable@0": "0", "AccountEnable@1": "0", BusyForwardTarget: "2002" });
  const page = await phone.openAs("admin", "p=features-forward&q=load&ForwardMode=1&DndMode=1");
  assert.equal(await page.locator(".alert:visible").count(), 2);
  assert.deepEqual(await visibleFields(page), ["ForwardMode", "DndMode", "DNDEmergencySwitch"]);
  await phone.assertSaves(page, ["0x10007 30 0"], { DndMode: "1", BusyForwardTarget: "2002" });
});

test("the overview leads to each group that the user may see", async () => {
  const page = await openGeneral();
  const groups = ["Incoming calls", "During a call", "Dialling", "Hotline", "Redial", "DTMF", "Headset and lamps", "Call list", "SIP", "Logo", "Web page and start"];
  assert.deepEqual(await page.locator(".overview a").allTextContents(), groups);
  await page.getByRole("link", { name: "Redial" }).click();
  await page.waitForFunction(() => { const { top } = document.getElementById("redial").getBoundingClientRect(); return top > 0 && top < 200; });
  await phone.configure({ FeaturesHotlineNumber: "0", FeaturesHotlineDelay: "0", FeaturesUseLogo: "3" });
  const other = await openGeneral("var");
  assert.deepEqual(await other.locator(".overview a").allTextContents(), groups.filter((group) => !["Hotline", "Logo"].includes(group)));
  await phone.configure({ FeaturesHotlineNumber: "1", FeaturesHotlineDelay: "1", FeaturesUseLogo: "1" });
});

test("a save stores all groups, leaves those of other pages alone and restarts only for what needs it", async () => {
  await phone.configure({ GPickupCode: "*77" });
  const page = await openGeneral();
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
  await page.getByRole("button", { name: "Save and restart" }).click();
  await page.getByRole("button", { name: "Go back" }).click();
  await page.fill("#DhcpHostnameValue", "desk-7");
  await save(page);
  await page.getByText("Restart the phone now?").waitFor();
  assert.deepEqual(await axe(page), []);
  await page.getByRole("button", { name: "Go back" }).click();
  await phone.assertSaves(page, [], { DhcpHostnameValue: "desk-7" }, "Save only");
});

test("a logo is uploaded and deleted in the page, and what was typed stays", async () => {
  const page = await openGeneral();
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
  const page = await openGeneral();
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
  const page = await openGeneral("admin", { javaScriptEnabled: false });
  await page.setInputFiles("#logoFile", { name: "logo.dob", mimeType: "application/octet-stream", buffer: Buffer.from([250, 250, 0]) });
  await page.getByRole("button", { name: "Upload" }).click();
  assert.deepEqual([await page.textContent("h1"), await page.textContent("main .card p")], ["Upload", "big"]);
  await page.getByRole("link", { name: "Go back" }).click();
  assert.match(page.url(), /p=features-general&q=load$/);
});

test("an address for an event is http or https and may hold variables", async () => {
  const page = await open("features-actionurl");
  assert.equal(await page.locator("main input:visible").count(), 34);
  assert.equal(await page.locator("#AURemoteIP").count(), 0);
  const wrong = "Enter an address that begins with http:// or https://, without spaces.";
  const right = ["http://192.168.1.5/event?phone=$mac&caller=$remote", "https://$ip:8443/$call_id", "HTTP://host", ""];
  const bad = ["ftp://host/x", "host/x", "http://", "http:///x", "http://host/a b", "http://host:99999/", "javascript:alert(1)"];
  await assertErrors(page, [...right.map((text) => ["AUIncomingCall", text, ""]), ...bad.map((text) => ["AUIncomingCall", text, wrong])]);
  const address = "http://192.168.1.5/?ip=$ip&user=$active_user";
  await page.fill("#AUIncomingCall", address);
  await page.getByText("What an address may contain").click();
  await page.getByText("$display_remote").waitFor();
  await phone.assertSaves(page, ["0x10007 38 0"], { AUIncomingCall: address });
  assert.equal(await page.inputValue("#AUIncomingCall"), address);
});
