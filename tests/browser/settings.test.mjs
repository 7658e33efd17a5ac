// Provisioning: secrets, days and times, and an update that the page waits for; rings.
import assert from "node:assert/strict";
import { copyFileSync, readFileSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { enter, phone, press, values } from "./phone.mjs";

test("days make up the stored digits, secrets stay unless they are typed, and Cancel brings the stored days back", async () => {
  await phone.configure({ AutoProvisionPassword: "kept-secret", AutoProvisionAESKey16: "0123456789abcdef", AutoProvisionWeeklyMask: "530" });
  const page = await phone.openAs("admin", "settings-autop");
  assert.equal(await page.isVisible("#days"), false);
  await enter(page, { AutoProvisionEnableWeekly: true, AutoProvisionWeeklyBeginTime: "01:30", AutoProvisionAESKey16MAC: "fedcba9876543210" });
  const checked = () => page.locator("#days :checked").evaluateAll((all) => all.map(({ value }) => value));
  assert.deepEqual(await checked(), ["3", "5", "0"]);
  await page.getByLabel("Saturday").check();
  await page.getByLabel("Wednesday").uncheck();
  await phone.assertSaves(page, { AutoProvisionPassword: "kept-secret", AutoProvisionAESKey16: "0123456789abcdef",
    AutoProvisionAESKey16MAC: "fedcba9876543210", AutoProvisionWeeklyMask: "056", AutoProvisionWeeklyBeginTime: "01:30" });
  assert.doesNotMatch(await page.content(), /kept-secret|0123456789abcdef|fedcba/);
  await page.getByLabel("Saturday").uncheck();
  await press(page, "Cancel");
  assert.deepEqual(await checked(), ["5", "6", "0"]);
});

test("an update saves first; the notice waits until it has begun and is over, and goes back", async () => {
  const setRunning = (running) => phone.state({ answers: { "autoServer 0xa0001": running } });
  await setRunning(0);
  const page = await phone.openAs("admin", "settings-autop", { timed: true });
  const look = async () => {
    const asked = page.waitForRequest(/servlet/);
    await page.clock.fastForward(3000);
    await (await asked).response();
  };
  await enter(page, { AutoProvisionUser: "phone46" });
  await press(page, "Save and update now");
  await page.getByText("The phone is updating its settings").waitFor();
  await phone.assertStored({ AutoProvisionUser: "phone46" });
  await look();
  await page.getByText(/Waiting for the phone: [3-9] s/).waitFor();  // the run is still to begin
  await setRunning(1);
  for (let looks = 0; looks < 5; ++looks) await look();
  await page.getByText(/Waiting for the phone: (1[89]|2\d) s/).waitFor();
  await setRunning(0);
  await page.clock.fastForward(3000);
  await page.waitForURL(/p=settings-autop&q=load/);
});

test("each text gets its ring; the phone's rings and users' own can be played", async () => {
  const inRoot = (...path) => join(phone.root, ...path);
  for (const name of JSON.parse(readFileSync(inRoot("phone/www/htdocs/media/sound/list.json"), "utf8"))) {
    const files = ["phone/www/htdocs/media/sound", "phone/resource/sysdata/sound"].map((folder) => readFileSync(inRoot(folder, name)));
    assert.deepEqual(files[0], files[1], name);
  }
  copyFileSync(inRoot("phone/resource/sysdata/sound/Ring1.wav"), inRoot("data/userdata/sound/Own.wav"));
  const page = await phone.openAs("admin", "settings-ring");
  const play = page.locator("tr").nth(3).getByRole("button");
  assert.equal(await play.isVisible(), false);
  for (const [ring, address] of [["Ring2.wav", "/media/sound/Ring2.wav"], ["Own.wav", "/media/user/sound/Own.wav"]]) {
    await enter(page, { Ringer3: ring });
    assert.equal(await play.getAttribute("aria-label"), `Play: ${ring}`);
    const sound = page.waitForResponse(`**${address}`);
    await play.click();
    assert.match((await sound).headers()["content-type"], /audio\/wav/);
  }
  await enter(page, { Text3: "internal", Text10: "\"<b>" });
  await phone.assertSaves(page, { AlertInfo2Text: "internal", AlertInfo2Ringer: "5", AlertInfo9Text: "\"<b>", AlertInfo9Ringer: "0" });
  assert.deepEqual(await values(page, "Ringer3", "Ringer10", "Text10"), ["Own.wav", "default-ring.wav", "\"<b>"]);
});
