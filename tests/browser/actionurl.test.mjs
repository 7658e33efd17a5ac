// The action URL page: which addresses it takes, who sees the command server, what is stored.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { startPhone } from "./phone.mjs";

let phone;
before(async () => { phone = await startPhone(); });
after(() => phone?.stop());

test("an address is http or https and may hold variables", async () => {
  const page = await phone.openAs("admin", "p=features-actionurl&q=load");
  assert.equal(await page.locator("main input:visible").count(), 34);
  assert.equal(await page.locator("#AURemoteIP").count(), 0);
  const wrong = "Enter an address that begins with http:// or https://, without spaces.";
  const rows = [
    ["http://192.168.1.5/event?phone=$mac&caller=$remote", ""], ["https://$ip:8443/$call_id", ""], ["HTTP://host", ""], ["", ""],
    ["ftp://host/x", wrong], ["host/x", wrong], ["http://", wrong], ["http:///x", wrong], ["http://host/a b", wrong], ["http://host:99999/", wrong], ["javascript:alert(1)", wrong],
  ];
  for (const [text, error] of rows) {
    await page.fill("#AUIncomingCall", text);
    await page.locator("#AUIncomingCall").dispatchEvent("change");
    assert.equal(await page.textContent("#AUIncomingCall-error"), error, text);
  }
  await page.fill("#AUIncomingCall", "http://192.168.1.5/?ip=$ip&user=$active_user");
  await page.getByText("What an address may hold").click();
  await page.getByText("$display_remote").waitFor();
  const messages = await phone.messagesDuring(async () => {
    await page.locator(".bar .primary").click();
    await page.getByText("Saved.").waitFor();
  });
  assert.deepEqual([messages, await phone.config("AUIncomingCall")], [["0x10007 38 0"], "http://192.168.1.5/?ip=$ip&user=$active_user"]);
  assert.equal(await page.inputValue("#AUIncomingCall"), "http://192.168.1.5/?ip=$ip&user=$active_user");
  phone.assertNoProblems();
});

test("the command server belongs to phones that follow one", async () => {
  await phone.configure({ ISUME: "1", AURemoteIP: "192.0.2.9" });
  const page = await phone.openAs("admin", "p=features-actionurl&q=load");
  assert.equal(await page.inputValue("#AURemoteIP"), "192.0.2.9");
  await page.fill("#AURemoteIP", "commands.example");
  await page.locator(".bar .primary").click();
  await page.getByText("Saved.").waitFor();
  assert.equal(await phone.config("AURemoteIP"), "commands.example");
  await page.getByRole("link", { name: "Command server" }).click();
  assert.match(page.url(), /#events-server$/);
  phone.assertNoProblems();
});
