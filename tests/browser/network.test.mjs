// The network page: a save that needs a restart, which the page waits for.
import assert from "node:assert/strict";
import test from "node:test";
import { axe, enter, phone, press, save, screenshot, values } from "./phone.mjs";

test("network settings are saved alone or with a restart, which the page waits for", async () => {
  const page = await phone.openAs("admin", "network");
  const address = { NetworkWanStaticIp: "192.168.1.77", NetworkWanStaticMask: "255.255.255.0", NetworkWanStaticGateWay: "192.168.1.1" };
  await enter(page, { ipv4type: "2", ...address });
  await save(page);
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "network-restart");
  await press(page, "Go back");
  await phone.assertSaves(page, { NetworkWanType: "2", ...address }, "Save only");
  assert.match(page.url(), /p=network&q=load$/);

  phone.expectProblems("503", "ERR_");
  await phone.state({ rebootSeconds: 1 });
  await enter(page, { ipv4type: "1", NetworkPppoeUser: "line7" });
  await save(page);
  await press(page, "Save and restart");
  await page.getByText("The phone is restarting").waitFor();
  await screenshot(page, "notice-restart");
  await page.waitForURL(/p=login&q=loginForm&jumpto=network/, { timeout: 30_000 });
  await phone.logIn(page, "admin", "admin");
  assert.deepEqual(await values(page, "NetworkPppoeUser", "NetworkPppoePin"), ["line7", "********"]);
  assert.equal(await page.textContent("#message"), "");
});
