// Area code, tones and voice; provisioning: secrets, days and times, and an update that the page waits for; rings.
import assert from "node:assert/strict";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { assertErrors, checkPage, phone, values } from "./phone.mjs";

test("area code, tones and voice check their fields, show what a choice brings and save what shows", async () => {
  const page = await phone.openAs("admin");
  const tone = "Enter parts such as 425/480 separated by commas, without spaces.";
  const accounts = "Enter account numbers separated by commas, such as 1,2.";
  await checkPage(page, "settings-areacode", {
    errors: [["AreaCode", "05 71", "Enter digits, *, # and + only."], ["AreaCode", "0571", ""], ["AreaCodeMinLen", "8", ""], ["AreaCodeMaxLen", "7", "Enter at least 8."],
      ["AreaCodeMaxLen", "16", "Enter a whole number from 1 to 15."], ["AreaCodeMaxLen", "8", ""], ["AreaCodeAccount", "0,1", accounts], ["AreaCodeAccount", "1,2", ""]],
  });
  await checkPage(page, "settings-tones", {
    stored: { ToneCountry: "Austria", ToneDial: "350/0" }, fields: ["ToneCountry"], change: () => page.selectOption("#ToneCountry", "Custom"),
    appear: ["ToneDial", "ToneRing", "ToneBusy", "ToneCongestion", "ToneCallwaiting", "ToneDialrecall", "ToneRecord", "ToneInfo", "ToneStutter", "ToneMessage", "ToneAutoanswer"],
    errors: [...["425", "425/480, 0/480", "1+2+3+4+5/9"].map((text) => ["ToneDial", text, tone]), ["ToneDial", "!350+440/2000,0/480", ""], ["ToneBusy", "", ""]],
  });
  await checkPage(page, "settings-tones", {
    stored: { ToneCountry: "Custom" }, change: () => page.selectOption("#ToneCountry", "Austria"), messages: ["0x10007 12 0"], stores: { ToneDial: "350/0", ToneCountry: "Austria" },
  });
  await checkPage(page, "settings-voice", {
    stored: { JitterAdaptive: "0", JitterMin: "60", JitterNominal: "120", JitterMax: "240" }, fields: ["VPMECHO", "VPMVAD", "VPMCNG", "JitterType", "JitterNominal"],
    change: () => page.getByLabel("Adaptive", { exact: true }).check(), appear: ["JitterMin", "JitterMax"],
    errors: [["JitterMin", "100", ""], ["JitterNominal", "90", "Enter at least 100."], ["JitterNominal", "250", "Enter at most 240."], ["JitterNominal", "150", ""],
      ["JitterMax", "90", "Enter at least 100."], ["JitterMax", "401", "Enter a whole number from 0 to 400."], ["JitterMax", "400", ""]],
  });
  await checkPage(page, "settings-voice", {
    stored: { JitterAdaptive: "1" }, change: async () => { await page.fill("#JitterNominal", "80"); await page.getByLabel("Fixed").check(); },
    messages: ["0x10007 17 0"], stores: { JitterAdaptive: "0", JitterNominal: "80", JitterMin: "60" },
  });
});

test("settings are checked and saved, secrets stay unless they are typed", async () => {
  await phone.configure({ AutoProvisionPassword: "kept-secret", AutoProvisionAESKey16: "0123456789abcdef", AutoProvisionWeeklyMask: "530" });
  const page = await phone.openAs("admin", "p=settings-autop&q=load");
  const address = "Enter an address such as https://server.example/folder.";
  await assertErrors(page, [
    ...["ftp://", "https://a b/c", "http://192.168.1.256/", "tftp://10.0.0.1:70000/"].map((text) => ["AutoProvisionServerURL", text, address]),
    ["AutoProvisionServerURL", "https://server.example:8443/phones/?a=b", ""],
    ["AutoProvisionOptionType", "66", "Enter a whole number from 128 to 254."], ["AutoProvisionOptionType", "160", ""],
    ["AutoProvisionAESKey16MAC", "short", "Enter exactly 16 characters."], ["AutoProvisionAESKey16MAC", "fedcba9876543210", ""],
  ]);
  assert.equal(await page.isVisible("#days"), false);
  await page.check("#AutoProvisionEnableWeekly");
  const checked = () => page.locator("#days :checked").evaluateAll((all) => all.map(({ value }) => value));
  assert.deepEqual(await checked(), ["3", "5", "0"]);
  await page.getByLabel("Saturday").check();
  await page.getByLabel("Wednesday").uncheck();
  await page.fill("#AutoProvisionWeeklyBeginTime", "01:30");
  await page.fill("#AutoProvisionWeeklyEndTime", "04:00");
  await phone.assertSaves(page, [], { AutoProvisionServerURL: "https://server.example:8443/phones/?a=b", AutoProvisionPassword: "kept-secret",
    AutoProvisionAESKey16: "0123456789abcdef", AutoProvisionAESKey16MAC: "fedcba9876543210", AutoProvisionWeeklyMask: "056", AutoProvisionWeeklyBeginTime: "01:30" });
  assert.doesNotMatch(await page.content(), /kept-secret|0123456789abcdef|fedcba/);
  await page.getByLabel("Saturday").uncheck();
  await page.getByRole("button", { name: "Cancel" }).click();
  assert.deepEqual(await checked(), ["5", "6", "0"]);
});

test("an update saves first; the notice waits until it has begun and is over, and goes back", async () => {
  const setRunning = (running) => phone.state({ answers: { "autoServer 0xa0001": running } });
  await setRunning(0);
  const page = await phone.openTimed("admin", "p=settings-autop&q=load");
  const look = async () => {
    const asked = page.waitForRequest(/servlet/);
    await page.clock.fastForward(3000);
    await (await asked).response();
  };
  await page.fill("#AutoProvisionUser", "phone46");
  const sent = await phone.messagesDuring(async () => {
    await page.getByRole("button", { name: "Save and update now" }).click();
    await page.getByText("The phone is fetching its settings").waitFor();
  });
  assert.deepEqual(sent, ["autoServer 0xb0001 0 0"]);
  await phone.assertStored({ AutoProvisionUser: "phone46" });
  await look();
  await page.getByText(/Waiting for the phone: [3-9] s/).waitFor();  // the run is still to begin
  await setRunning(1);
  for (let looks = 0; looks < 5; ++looks) await look();
  await page.getByText(/Waiting for the phone: (1[89]|2\d) s/).waitFor();
  await setRunning(0);
  await page.clock.fastForward(3000);
  await page.waitForURL(/p=settings-autop&q=load/);
  assert.equal(await page.inputValue("#AutoProvisionUser"), "phone46");
});

test("each text gets its ring; the phone's rings can be played, users' own cannot", async () => {
  mkdirSync(join(phone.root, "data/userdata/sound"), { recursive: true });
  writeFileSync(join(phone.root, "data/userdata/sound/Own.wav"), "x");
  const page = await phone.openAs("admin", "p=settings-ring&q=load");
  const play = page.locator("tr").nth(3).getByRole("button");
  assert.equal(await play.isVisible(), false);
  await page.selectOption("#Ringer3", "Ring2.wav");
  assert.equal(await play.getAttribute("aria-label"), "Play: Ring2.wav");
  const sound = page.waitForResponse(/Ring2\.wav/);
  await play.click();
  assert.match((await sound).headers()["content-type"], /audio\/wav/);
  await page.selectOption("#Ringer3", "Own.wav");
  assert.equal(await play.isVisible(), false);
  await page.fill("#Text3", "internal");
  await page.fill("#Text10", "\"<b>");
  await phone.assertSaves(page, ["0x10007 57 0"], { AlertInfo2Text: "internal", AlertInfo2Ringer: "5", AlertInfo9Text: "\"<b>", AlertInfo9Ringer: "0" });
  assert.deepEqual(await values(page, "Ringer3", "Ringer10", "Text10"), ["Own.wav", "default-ring.wav", "\"<b>"]);
});

test("the rings that browsers can play are those that the phone comes with", async () => {
  const media = join(phone.root, "phone/www/htdocs/media/sound");
  for (const name of JSON.parse(readFileSync(join(media, "list.json"), "utf8"))) {
    assert.deepEqual(readFileSync(join(media, name)), readFileSync(join(phone.root, "phone/resource/sysdata/sound", name)), name);
  }
});
