// The network and PC port pages: what they check, save and restart.
import assert from "node:assert/strict";
import test from "node:test";
import { assertErrors, axe, phone, save, screenshot, values, visibleFields } from "./phone.mjs";

test("the network page shows what the mode needs and checks it", async () => {
  const page = await phone.openAs("admin", "p=network&q=load");
  const visible = async () => (await visibleFields(page)).filter((name) => !/Mode$|type$/.test(name));
  assert.deepEqual(await visible(), []);
  await page.getByLabel("PPPoE", { exact: true }).check();
  assert.deepEqual(await visible(), ["NetworkPppoeUser", "NetworkPppoePin"]);
  await page.getByRole("radio", { name: "Static IP" }).check();
  assert.deepEqual(await visible(), ["NetworkWanStaticIp", "NetworkWanStaticMask", "NetworkWanStaticGateWay", "NetworkWanStaticPriDns", "NetworkWanStaticSecDns"]);
  const wrong4 = "Enter an IPv4 address such as 192.168.1.20.";
  await assertErrors(page, [
    ["NetworkWanStaticIp", "", "This field is required."], ["NetworkWanStaticIp", "192.168.1.256", wrong4],
    ["NetworkWanStaticIp", "192.168.01.2", wrong4], ["NetworkWanStaticIp", "192.168.1.77", ""],
    ["NetworkWanStaticMask", "255.0.255.0", "Enter a subnet mask such as 255.255.255.0."], ["NetworkWanStaticMask", "255.255.255.0", ""],
    ["NetworkWanStaticGateWay", "192.168.2.1", "This address is not in the same network as 192.168.1.77."], ["NetworkWanStaticGateWay", "192.168.1.1", ""],
    ["NetworkWanStaticPriDns", "", ""], ["NetworkWanStaticPriDns", "one", wrong4], ["NetworkWanStaticPriDns", "9.9.9.9", ""],
  ]);
  await page.selectOption("#NetworkIPAddressMode", "1");
  await page.getByRole("radio", { name: "Static IP" }).check();
  assert.deepEqual(await visible(), ["NetworkIPv6WanIP", "NetworkIPv6Prefix", "NetworkIPv6WanGateway", "NetworkIPv6WanPrimaryDNS", "NetworkIPv6WanSecondaryDNS"]);
  const wrong6 = "Enter an IPv6 address such as 2001:db8::20.";
  const texts = { "2001:db8::20": "", "::ffff:192.0.2.1": "", "1:2:3:4:5:6:7:8": "", "1:2:3:4:5:6:7": wrong6, "1::2::3": wrong6, "fe80::12345": wrong6, "::1::": wrong6, ":::": wrong6 };
  await assertErrors(page, Object.entries(texts).map(([text, error]) => ["NetworkIPv6WanIP", text, error]));
});

test("network settings are saved alone or with a restart, which the page waits for", async () => {
  const page = await phone.openAs("admin", "p=network&q=load");
  await page.getByRole("radio", { name: "Static IP" }).check();
  await page.fill("#NetworkWanStaticIp", "192.168.1.77");
  await page.fill("#NetworkWanStaticMask", "255.255.255.0");
  await page.fill("#NetworkWanStaticGateWay", "192.168.1.1");
  await save(page);
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "network-restart");
  await page.getByRole("button", { name: "Go back" }).click();
  await phone.assertSaves(page, [], { NetworkWanType: "2", NetworkWanStaticIp: "192.168.1.77" }, "Save only");
  assert.match(page.url(), /p=network&q=load$/);

  phone.expectProblems("503", "ERR_");
  await phone.state({ rebootSeconds: 1 });
  await page.getByLabel("PPPoE", { exact: true }).check();
  await page.fill("#NetworkPppoeUser", "line7");
  await save(page);
  const announced = await phone.messagesDuring(async () => {
    await page.getByRole("button", { name: "Save and restart" }).click();
    await page.getByText("The phone is restarting").waitFor();
  });
  assert.deepEqual(announced, ["0x10007 9 0"]);
  await screenshot(page, "notice-restart");
  await page.waitForURL(/p=login&q=loginForm&jumpto=network/, { timeout: 30_000 });
  await phone.logIn(page, "admin", "admin");
  assert.deepEqual(await values(page, "NetworkPppoeUser", "NetworkPppoePin"), ["line7", "********"]);
  assert.equal(await page.textContent("#message"), "");
});

test("the PC port page checks its address range", async () => {
  const page = await phone.openAs("admin", "p=network-pcport&q=load");
  assert.equal(await page.locator("#NetworkLanRouterIP").isVisible(), false);
  await page.getByLabel("Router").check();
  await assertErrors(page, [
    ["NetworkLanDHCPStartIP", "10.0.0.50", ""], ["NetworkLanDHCPEndIP", "10.0.0.40", "The last address must not come before the first."],
    ["NetworkLanDHCPEndIP", "10.0.1.60", "This address is not in the same network as 10.0.0.1."], ["NetworkLanDHCPEndIP", "10.0.0.60", ""],
  ]);
  await page.uncheck("#NetworkPCPortSwitch");
  await phone.assertSaves(page, [], { NetworkLanType: "0", NetworkLanDHCPEndIP: "10.0.0.60", NetworkPCPortSwitch: "0" }, "Save only");
});
