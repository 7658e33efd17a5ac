// The feature and setting pages that edit a few values each: what is checked, shown, posted and announced.
import assert from "node:assert/strict";
import test from "node:test";
import { assertErrors, axe, phone, values, visibleFields } from "./phone.mjs";

const open = (name, user = "admin") => phone.openAs(user, `p=${name}&q=load`);

test("errors show at the field", async () => {
  const numbers = "Enter numbers separated by commas, without spaces, such as 112,911.";
  const trusted = "Enter IP addresses separated by commas, without spaces, with * for any part, or the word any.";
  const servers = "Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21.";
  const tone = "Enter parts such as 425/480 separated by commas, without spaces.";
  const accounts = "Enter account numbers separated by commas, such as 1,2.";
  const rows = {
    "features-audio": [["ReDialtoneNumber", "9a", "Enter digits only."], ["ReDialtoneNumber", "9", ""]],
    "features-phonelock": [["EmergencyNumberList", "112,,911", numbers], ["EmergencyNumberList", "112, 911", numbers], ["EmergencyNumberList", "112,*#06#", ""],
      ["UnlockPIN", "12a4", "Enter 1 to 15 digits."], ["UnlockPIN", "", "This field is required."], ["UnlockPIN", "********", ""], ["UnlockPIN", "0815", ""],
      ["LockTimeout", "3601", "Enter a whole number from 0 to 3600."], ["LockTimeout", "3600", ""]],
    "settings-areacode": [["AreaCode", "05 71", "Enter digits, *, # and + only."], ["AreaCode", "0571", ""], ["AreaCodeMinLen", "8", ""], ["AreaCodeMaxLen", "7", "Enter at least 8."],
      ["AreaCodeMaxLen", "16", "Enter a whole number from 1 to 15."], ["AreaCodeMaxLen", "8", ""], ["AreaCodeAccount", "0,1", accounts], ["AreaCodeAccount", "1,2", ""]],
    "settings-tones": [["ToneDial", "425", tone], ["ToneDial", "425/480, 0/480", tone], ["ToneDial", "1+2+3+4+5/9", tone], ["ToneDial", "!350+440/2000,0/480", ""], ["ToneBusy", "", ""]],
    "settings-voice": [["JitterMin", "100", ""], ["JitterNominal", "90", "Enter at least 100."], ["JitterNominal", "250", "Enter at most 240."], ["JitterNominal", "150", ""],
      ["JitterMax", "90", "Enter at least 100."], ["JitterMax", "401", "Enter a whole number from 0 to 400."], ["JitterMax", "400", ""]],
    "features-remotecontrl": [["AURILimitIP", "10.0.*.*,192.168.1.7", ""], ["AURILimitIP", "ANY", ""], ["AURILimitIP", "2001:db8::7", ""], ["AURILimitIP", "10.0.*", trusted],
      ["AURILimitIP", "any,10.0.0.1", trusted], ["AURILimitIP", "10.0.0.256", trusted], ["AURILimitIP", "10.0.0.1, 10.0.0.2", trusted], ["AURILimitIP", "10.0.0.1,", trusted],
      ["PushXMLServerIP", "10.0.0.1 , 10.0.0.2", ""], ["PushXMLServerIP", "10.0.0.*", servers], ["PushXMLServerIP", "host.example", servers]],
  };
  await phone.configure({ LockEnable: "1" });
  for (const [name, cases] of Object.entries(rows)) await assertErrors(await open(name), cases);
});

test("fields follow their switch", async () => {
  await phone.configure({ LockEnable: "0", IntercomAllowance: "0", DPickupSwitch: "0", GPickupSwitch: "0" });
  const rows = [
    // page, how to switch, the fields before, the fields that come
    ["features-phonelock", (page) => page.check("#LockEnable"), ["LockEnable", "EmergencyNumberList"], ["PhoneLock", "UnlockPIN", "LockTimeout"]],
    ["features-intercom", (page) => page.check("#IntercomAllowance"), ["IntercomAllowance"], ["IntercomMuteSwitch", "IntercomToneSwitch", "IntercomBargeSwitch"]],
    ["settings-tones", (page) => page.selectOption("#ToneCountry", "Custom"), ["ToneCountry"],
      ["ToneDial", "ToneRing", "ToneBusy", "ToneCongestion", "ToneCallwaiting", "ToneDialrecall", "ToneRecord", "ToneInfo", "ToneStutter", "ToneMessage", "ToneAutoanswer"]],
    ["settings-voice", (page) => page.getByLabel("Adaptive", { exact: true }).check(), ["VPMECHO", "VPMVAD", "VPMCNG", "JitterType", "JitterNominal"], ["JitterMin", "JitterMax"]],
  ];
  await phone.configure({ ToneCountry: "Austria", JitterAdaptive: "0" });
  for (const [name, change, first, more] of rows) {
    const page = await open(name);
    assert.deepEqual(await visibleFields(page), first, name);
    await change(page);
    assert.deepEqual((await visibleFields(page)).filter((field) => !first.includes(field)), more, name);
  }
});

test("a save posts what each kind of control holds, and nothing that does not show", async () => {
  await phone.configure({ LockEnable: "0", ToneCountry: "Custom", ToneDial: "350/0", JitterAdaptive: "1", JitterMin: "60", JitterNominal: "120", JitterMax: "240" });
  const rows = [
    // page, what is changed, the messages, the values
    ["features-audio", async (page) => { await page.uncheck("#VolumeButtonSoundOn"); await page.selectOption("#RingerDevice", "2"); }, ["0x10007 11 0"], { VolumeButtonSoundOn: "0", RingerDevice: "2", CallWaitingToneSwitch: "1" }],
    ["features-transfer", (page) => page.getByLabel("Blind transfer", { exact: true }).check(), [], { TransferModeViaDsskey: "2" }],
    ["features-phonelock", async (page) => { await page.check("#LockEnable"); await page.selectOption("#PhoneLock", "2"); await page.fill("#EmergencyNumberList", "112"); }, ["app_hostapp 0x10007 20 0"], { LockEnable: "1", PhoneLock: "2", EmergencyNumberList: "112" }],
    ["settings-tones", (page) => page.selectOption("#ToneCountry", "Austria"), ["0x10007 12 0"], { ToneDial: "350/0", ToneCountry: "Austria" }],
    ["settings-voice", async (page) => { await page.fill("#JitterNominal", "80"); await page.getByLabel("Fixed").check(); }, ["0x10007 17 0"], { JitterAdaptive: "0", JitterNominal: "80", JitterMin: "60" }],
  ];
  for (const [name, change, messages, stored] of rows) {
    const page = await open(name);
    await change(page);
    await phone.assertSaves(page, messages, stored);
  }
});

test("codes that are configuration values do not hide their fields", async () => {
  await phone.configure({ AreaCode: "3", ToneDial: "3", GPickupSwitch: "3", "settings-dialplan": "2", "settings-tones": "2", "features-bluetooth": "2", ToneCountry: "Custom" });
  for (const [name, field] of [["settings-areacode", "AreaCode"], ["settings-tones", "ToneDial"], ["features-bluetooth", "BluetoothSwitch"]]) {
    assert.ok((await visibleFields(await open(name, "user"))).includes(field), name);
  }
});

test("the audio page restarts the phone only when asked to, and asks once more", async () => {
  phone.expectProblems("503", "ERR_");
  const page = await open("features-audio");
  await page.getByRole("button", { name: "Save and restart" }).click();
  assert.deepEqual(await axe(page), []);
  await page.getByRole("button", { name: "Go back" }).click();
  await phone.state({ rebootSeconds: 1 });
  await page.getByRole("button", { name: "Save and restart" }).click();
  const messages = await phone.messagesDuring(async () => {
    await page.getByRole("dialog").getByRole("button", { name: "Save and restart" }).click();
    await page.getByText("The phone is restarting").waitFor();
  });
  assert.deepEqual(messages.filter((message) => message.startsWith("0x10007 11 ")), []);
  await page.waitForURL(/p=login/, { timeout: 30_000 });
  await phone.state({ rebootSeconds: 0 });
});

test("the hidden page saves, restarts and pushes a document to the screen", async () => {
  phone.expectProblems("inline style");  // of the browser's own report on a broken document, which nobody sees
  const page = await open("hidden");
  await page.check("#DndForbidden");
  await phone.assertSaves(page, ["0x10007 28 0"], { DndForbidden: "1" }, "Save only");
  const push = async (text, answer) => {
    await page.fill("#editPushXML", text);
    await page.getByRole("button", { name: "Show on the phone" }).click();
    await page.locator("#push-result, #editPushXML-error").getByText(answer).waitFor();
  };
  await push("<a><b></a>", "This is not a complete XML document.");
  assert.deepEqual(await axe(page), []);
  await push("<text>Hello & bye</text>", "This is not a complete XML document.");
  await push("<text>Hello</text>", "Refused. Your computer is not one of this phone's push servers.");
  await phone.configure({ PushXMLServerIP: "10.9.8.7, 127.0.0.1" });
  assert.deepEqual(await phone.messagesDuring(() => push("<text>Hello</text>", "The phone now shows the page.")), ["app_hostapp 0x3001a 0 0"]);
  await phone.state({ talking: true });
  await push("<text>Again</text>", "A call is in progress");
  await phone.state({ talking: false });
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

test("the command server belongs to phones that follow one", async () => {
  await phone.configure({ ISUME: "1", AURemoteIP: "192.0.2.9" });
  const page = await open("features-actionurl");
  assert.deepEqual(await values(page, "AURemoteIP"), ["192.0.2.9"]);
  await page.fill("#AURemoteIP", "commands.example");
  await phone.assertSaves(page, ["0x10007 38 0"], { AURemoteIP: "commands.example" });
  await page.getByRole("link", { name: "Command server" }).click();
  assert.match(page.url(), /#events-server$/);
});
