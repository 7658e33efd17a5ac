// Multicast paging.
import test from "node:test";
import { assertErrors, phone } from "./phone.mjs";

test("paging addresses are checked and saved", async () => {
  const page = await phone.openAs("admin", "p=contacts-multicastIP&q=load");
  const wrong = "Enter a multicast address such as 224.0.1.75:5010.";
  const bad = ["192.168.1.1:5010", "224.0.1.75:0", "240.0.0.1", "224.0.1"];
  const right = ["239.255.255.255:65535", "224.0.1.75"];
  await assertErrors(page, [...bad.map((text) => ["ListenAddress7IPAddress", text, wrong]), ...right.map((text) => ["ListenAddress7IPAddress", text, ""])]);
  await page.fill("#ListenAddress7Label", "Hall");
  const stored = { ListenAddress7IPAddress: "224.0.1.75", ListenAddress7Label: "Hall", ReceivePriority: "10" };
  await phone.assertSaves(page, ["0x10007 42 0"], stored);
  await phone.assertSaves(page, [], stored);
});
