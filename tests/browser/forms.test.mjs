// Saving, checking and leaving the settings pages.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { axe, screenshot, startPhone } from "./phone.mjs";

let phone;
before(async () => { phone = await startPhone(); });
after(() => phone?.stop());

const save = (page) => page.locator(".bar .primary").click();
const errorOf = (page, id) => page.textContent(`#${id}-error`);

test("a save stores the fields, tells the phone and says so", async () => {
  const page = await phone.openAs("admin", "p=features-acd&q=load");
  await page.check("#EnableACDAutoAvailable");
  await page.fill("#ACDAutoAvailableTime", "301");
  await page.getByText("Enter a whole number from 0 to 300.").waitFor();  // as one types
  assert.equal(await page.getAttribute("#ACDAutoAvailableTime", "aria-invalid"), "true");
  assert.deepEqual(await axe(page), []);
  const refused = await phone.messagesDuring(() => save(page));
  assert.deepEqual(refused, []);
  assert.equal(await page.textContent("#message"), "Not saved: please correct the marked fields.");
  await page.fill("#ACDAutoAvailableTime", "30");
  const sent = await phone.messagesDuring(async () => {
    await save(page);
    await page.getByText("Saved.").waitFor();
  });
  assert.deepEqual(sent, ["app_hostapp 0x10007 39 0"]);
  assert.deepEqual([await phone.config("EnableACDAutoAvailable"), await phone.config("ACDAutoAvailableTime")], ["1", "30"]);
  await page.reload();
  assert.equal(await page.textContent("#message"), "");
  phone.assertNoProblems();
});

test("unsaved changes are not left without a warning, and Cancel takes them back", async () => {
  const page = await phone.openAs("admin", "p=features-acd&q=load");
  const warnings = [];
  page.on("dialog", (dialog) => { warnings.push(dialog.type()); dialog.dismiss(); });
  await page.fill("#ACDAutoAvailableTime", "55");
  await page.getByRole("link", { name: "Status", exact: true }).click({ noWaitAfter: true });
  await page.waitForTimeout(300);
  assert.deepEqual(warnings, ["beforeunload"]);
  assert.match(page.url(), /p=features-acd/);
  await page.getByRole("button", { name: "Cancel" }).click();
  assert.equal(await page.inputValue("#ACDAutoAvailableTime"), "30");
  await page.getByRole("link", { name: "Status", exact: true }).click();
  await page.waitForURL(/p=status/);
  assert.deepEqual(warnings, ["beforeunload"]);
});

test("during a call nothing is saved; the notice goes back by itself", async () => {
  const page = await phone.openAs("admin", "p=features-acd&q=load");
  await phone.state({ talking: true });
  await page.fill("#ACDAutoAvailableTime", "12");
  await save(page);
  await page.getByText("A call is in progress").waitFor();
  await phone.state({ talking: false });
  await page.waitForURL(/p=features-acd&q=load/);
  assert.equal(await phone.config("ACDAutoAvailableTime"), "30");
  assert.equal(await page.textContent("#message"), "");
  phone.assertNoProblems();
});

test("the network page shows what the mode needs and checks it", async () => {
  const page = await phone.openAs("admin", "p=network&q=load");
  const visible = () => page.locator("main input:visible").evaluateAll((all) => all.filter(({ type }) => type !== "radio").map(({ name }) => name));
  assert.deepEqual(await visible(), []);
  await page.getByLabel("PPPoE", { exact: true }).check();
  assert.deepEqual(await visible(), ["NetworkPppoeUser", "NetworkPppoePin"]);
  await page.getByRole("radio", { name: "Static IP" }).check();
  assert.deepEqual(await visible(), ["NetworkWanStaticIp", "NetworkWanStaticMask", "NetworkWanStaticGateWay", "NetworkWanStaticPriDns", "NetworkWanStaticSecDns"]);
  const rows = [
    // field, text, error
    ["NetworkWanStaticIp", "", "This field must be filled in."],
    ["NetworkWanStaticIp", "192.168.1.256", "Enter an IPv4 address such as 192.168.1.20."],
    ["NetworkWanStaticIp", "192.168.01.2", "Enter an IPv4 address such as 192.168.1.20."],
    ["NetworkWanStaticIp", "192.168.1.77", ""],
    ["NetworkWanStaticMask", "255.0.255.0", "Enter a subnet mask such as 255.255.255.0."],
    ["NetworkWanStaticMask", "255.255.255.0", ""],
    ["NetworkWanStaticGateWay", "192.168.2.1", "This address is in another network than 192.168.1.77."],
    ["NetworkWanStaticGateWay", "192.168.1.1", ""],
    ["NetworkWanStaticPriDns", "", ""],
    ["NetworkWanStaticPriDns", "one", "Enter an IPv4 address such as 192.168.1.20."],
    ["NetworkWanStaticPriDns", "9.9.9.9", ""],
  ];
  for (const [id, text, error] of rows) {
    await page.fill(`#${id}`, text);
    await page.locator(`#${id}`).dispatchEvent("change");
    assert.equal(await errorOf(page, id), error, `${id} ${text}`);
  }
  await page.selectOption("#NetworkIPAddressMode", "1");
  await page.getByRole("radio", { name: "Static IP" }).check();
  assert.deepEqual(await visible(), ["NetworkIPv6WanIP", "NetworkIPv6Prefix", "NetworkIPv6WanGateway", "NetworkIPv6WanPrimaryDNS", "NetworkIPv6WanSecondaryDNS"]);
  const wrong = "Enter an IPv6 address such as 2001:db8::20.";
  for (const [text, error] of [["2001:db8::20", ""], ["::ffff:192.0.2.1", ""], ["1:2:3:4:5:6:7:8", ""], ["1:2:3:4:5:6:7", wrong], ["1::2::3", wrong], ["fe80::12345", wrong], ["::1::", wrong], [":::", wrong]]) {
    await page.fill("#NetworkIPv6WanIP", text);
    await page.locator("#NetworkIPv6WanIP").dispatchEvent("change");
    assert.equal(await errorOf(page, "NetworkIPv6WanIP"), error, text);
  }
  phone.assertNoProblems();
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
  const sent = await phone.messagesDuring(async () => {
    await page.getByRole("button", { name: "Save only" }).click();
    await page.getByText("Saved.").waitFor();
  });
  assert.deepEqual(sent, []);
  assert.deepEqual([await phone.config("NetworkWanType"), await phone.config("NetworkWanStaticIp")], ["2", "192.168.1.77"]);
  assert.match(page.url(), /p=network&q=load$/);

  await phone.state({ rebootSeconds: 2 });
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
  assert.equal(await page.inputValue("#NetworkPppoeUser"), "line7");
  assert.equal(await page.inputValue("#NetworkPppoePin"), "********");
  assert.equal(await page.textContent("#message"), "");
  phone.assertNoProblems("503", "ERR_");
});

test("the PC port page checks its address range", async () => {
  const page = await phone.openAs("admin", "p=network-pcport&q=load");
  assert.equal(await page.locator("#NetworkLanRouterIP").isVisible(), false);
  await page.getByLabel("Router").check();
  for (const [first, last, error] of [["10.0.0.50", "10.0.0.40", "The last address comes before the first."], ["10.0.0.50", "10.0.1.60", "This address is in another network than 10.0.0.1."], ["10.0.0.50", "10.0.0.60", ""]]) {
    await page.fill("#NetworkLanDHCPStartIP", first);
    await page.fill("#NetworkLanDHCPEndIP", last);
    await page.locator("#NetworkLanDHCPEndIP").dispatchEvent("change");
    assert.equal(await errorOf(page, "NetworkLanDHCPEndIP"), error);
  }
  await page.uncheck("#NetworkPCPortSwitch");
  await save(page);
  await page.getByRole("button", { name: "Save only" }).click();
  await page.getByText("Saved.").waitFor();
  assert.deepEqual(await Promise.all(["NetworkLanType", "NetworkLanDHCPEndIP", "NetworkPCPortSwitch"].map((key) => phone.config(key))), ["0", "10.0.0.60", "0"]);
  phone.assertNoProblems();
});

test("an account is saved, its stored password kept, its state followed", async () => {
  await phone.configure({}, { 1: { AccountPassword: "kept-secret", AccountEnable: "0" } });
  const page = await phone.openAs("admin", "p=account-register&q=load&acc=1");
  assert.equal(await page.textContent("#AccountStatus"), "Disabled");
  assert.doesNotMatch(await page.content(), /kept-secret/);
  await page.check("#AccountEnable");
  await page.fill("#AccountUserName", "2001");
  await page.fill("#server1", "not a host");
  await page.getByText("Enter a host name or an IP address.").waitFor();
  await page.fill("#server1", "sip2.example.com");
  await page.fill("#port2", "70000");
  await page.getByText("Enter a whole number from 0 to 65535.").waitFor();
  await page.fill("#port2", "5061");
  await page.selectOption("#AccountTransport", "2");
  const sent = await phone.messagesDuring(async () => {
    await save(page);
    await page.getByText("Saved.").waitFor();
  });
  assert.deepEqual(sent, ["0x10007 3 1"]);
  assert.deepEqual(await Promise.all(["AccountEnable", "AccountUserName", "AccountSIPServerHost", "AccountTransport", "AccountPassword"].map((key) => phone.config(key, 1))),
    ["1", "2001", "sip2.example.com", "2", "kept-secret"]);
  assert.deepEqual([await page.inputValue("#port2"), await page.inputValue("#AccountTransport")], ["5061", "2"]);
  await phone.state({ registration: [2, 3] });
  await page.locator('#AccountStatus[data-state="Register Failed"]').waitFor();
  assert.equal(await page.textContent("#AccountStatus"), "Registration failed");
  await page.fill("#AccountPassword", "new-one");
  await save(page);
  await page.getByText("Saved.").waitFor();
  assert.equal(await phone.config("AccountPassword", 1), "new-one");
  phone.assertNoProblems();
});

test("another account is opened, after a question when changes would be lost", async () => {
  const page = await phone.openAs("admin", "p=account-register&q=load&acc=0");
  const questions = [];
  let accept = false;
  page.on("dialog", (dialog) => { questions.push(dialog.type()); return accept ? dialog.accept() : dialog.dismiss(); });
  await page.fill("#AccountLabel", "Front desk");
  await page.selectOption("#acc", "2");
  assert.deepEqual([questions, await page.inputValue("#acc"), await page.inputValue("#AccountLabel")], [["confirm"], "0", "Front desk"]);
  accept = true;
  await page.selectOption("#acc", "2");
  await page.waitForURL(/acc=2/);
  assert.deepEqual([questions, await page.inputValue("[name=var_accountID]")], [["confirm", "confirm"], "2"]);
  phone.assertNoProblems();
});
