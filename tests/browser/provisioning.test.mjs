// Provisioning and TR-069: secrets, days and times, and an update that the page waits for.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { startPhone } from "./phone.mjs";

let phone;
before(async () => {
  phone = await startPhone();
  await phone.configure({ AutoProvisionPassword: "kept-secret", AutoProvisionAESKey16: "0123456789abcdef", AutoProvisionWeeklyMask: "530" });
});
after(() => phone?.stop());

const stored = (...keys) => Promise.all(keys.map((key) => phone.config(key)));

test("settings are checked and saved, secrets stay unless they are typed", async () => {
  const page = await phone.openAs("admin", "p=settings-autop&q=load");
  const rows = [
    ["AutoProvisionServerURL", "ftp://", "Enter an address such as https://server.example/folder."],
    ["AutoProvisionServerURL", "https://a b/c", "Enter an address such as https://server.example/folder."],
    ["AutoProvisionServerURL", "http://192.168.1.256/", "Enter an address such as https://server.example/folder."],
    ["AutoProvisionServerURL", "tftp://10.0.0.1:70000/", "Enter an address such as https://server.example/folder."],
    ["AutoProvisionServerURL", "https://server.example:8443/phones/?a=b", ""],
    ["AutoProvisionOptionType", "66", "Enter a whole number from 128 to 254."],
    ["AutoProvisionOptionType", "160", ""],
    ["AutoProvisionAESKey16MAC", "short", "Enter exactly 16 characters."],
    ["AutoProvisionAESKey16MAC", "fedcba9876543210", ""],
  ];
  for (const [id, text, error] of rows) {
    await page.fill(`#${id}`, text);
    await page.locator(`#${id}`).dispatchEvent("change");
    assert.equal(await page.textContent(`#${id}-error`), error, text);
  }
  assert.equal(await page.isVisible("#days"), false);
  await page.check("#AutoProvisionEnableWeekly");
  const checked = () => page.locator("#days :checked").evaluateAll((all) => all.map(({ value }) => value));
  assert.deepEqual(await checked(), ["3", "5", "0"]);
  await page.getByLabel("Saturday").check();
  await page.getByLabel("Wednesday").uncheck();
  await page.fill("#AutoProvisionWeeklyBeginTime", "01:30");
  await page.fill("#AutoProvisionWeeklyEndTime", "04:00");
  const sent = await phone.messagesDuring(async () => {
    await page.locator(".bar .primary").click();
    await page.getByText("Saved.").waitFor();
  });
  assert.deepEqual(sent, []);
  assert.deepEqual(await stored("AutoProvisionServerURL", "AutoProvisionPassword", "AutoProvisionAESKey16", "AutoProvisionAESKey16MAC", "AutoProvisionWeeklyMask", "AutoProvisionWeeklyBeginTime"),
    ["https://server.example:8443/phones/?a=b", "kept-secret", "0123456789abcdef", "fedcba9876543210", "056", "01:30"]);
  assert.doesNotMatch(await page.content(), /kept-secret|0123456789abcdef|fedcba/);
  await page.getByLabel("Saturday").uncheck();
  await page.getByRole("button", { name: "Cancel" }).click();
  assert.deepEqual(await checked(), ["5", "6", "0"]);
  phone.assertNoProblems();
});

test("an update saves first; the notice waits until it is over and goes back", async () => {
  await phone.state({ answers: { "autoServer 0xa0001": 1 } });
  const page = await phone.openAs("admin", "p=settings-autop&q=load");
  await page.fill("#AutoProvisionUser", "phone46");
  const sent = await phone.messagesDuring(async () => {
    await page.getByRole("button", { name: "Save and update now" }).click();
    await page.getByText("The phone is fetching its settings").waitFor();
  });
  assert.deepEqual([sent, await phone.config("AutoProvisionUser")], [["autoServer 0xb0001 0 0"], "phone46"]);
  await page.getByText("Waiting for the phone: 4 s").waitFor();
  await phone.state({ answers: { "autoServer 0xa0001": 0 } });
  await page.waitForURL(/p=settings-autop&q=load/);
  assert.equal(await page.inputValue("#AutoProvisionUser"), "phone46");
  phone.assertNoProblems();
});

test("TR-069 shows the name that the server gets and keeps its secrets", async () => {
  await phone.configure({ TR069ServerPassword: "acs-secret", TR069ConnectionRequestPassword: "request-secret" });
  const page = await phone.openAs("admin", "p=settings-tr069&q=load");
  assert.match(await page.inputValue("#TR069ServerUsername"), /^02005E-DeskPhone46-02005e[\da-f]{6}$/i);
  await page.fill("#TR069ServerURL", "https://acs.example/");
  await page.fill("#TR069ConnectionRequestPassword", "new-secret");
  const sent = await phone.messagesDuring(async () => {
    await page.locator(".bar .primary").click();
    await page.getByText("Saved.").waitFor();
  });
  assert.deepEqual([sent, await stored("TR069ServerURL", "TR069ServerPassword", "TR069ConnectionRequestPassword")],
    [["0x10007 23 0"], ["https://acs.example/", "acs-secret", "new-secret"]]);
  phone.assertNoProblems();
});
