// Configuration archives: what they hold and what they change is told before they are taken.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import test, { after } from "node:test";
import { answerDialogs, axe, enter, overflow, phone, press, screenshot } from "./phone.mjs";

const folder = mkdtempSync(join(tmpdir(), "phone-web-archives-"));
after(() => rmSync(folder, { recursive: true, force: true }));

// An archive of files, and of links ("-> target").
function archive(name, files, ...options) {
  const tree = mkdtempSync(join(folder, "tree-"));
  for (const [path, text] of Object.entries(files)) {
    mkdirSync(dirname(join(tree, path)), { recursive: true });
    if (text.startsWith("-> ")) execFileSync("ln", ["-s", text.slice(3), join(tree, path)]);
    else writeFileSync(join(tree, path), text);
  }
  const made = join(folder, name);
  execFileSync("tar", ["-C", tree, ...options, "-cf", made, ...new Set(Object.keys(files).map((path) => path.split("/")[0]))]);
  return made;
}

// The dialog that opens for a file: its title, its text and its lists, each as "title: number" and its rows.
async function review(page, field, file, button) {
  await page.setInputFiles(`#${field}`, file);
  await press(page, button);
  await page.locator("#question[open]").waitFor();
  return page.evaluate(() => ({
    title: document.getElementById("question-title").textContent,
    text: document.getElementById("question-text").textContent,
    lists: Object.fromEntries([...document.querySelectorAll("#question details")].map((list) => [
      list.querySelector("summary").textContent, [...list.querySelectorAll("li")].map((item) => item.textContent)])),
  }));
}

const inPhone = (path) => join(phone.root, path);

test("an export tells of its secrets, and is what was told", async () => {
  await phone.configure({ "AccountPassword@1": "geheim", AreaCode: "030" });
  const page = await phone.openAs("admin", "settings-config");
  await press(page, "Export the configuration");
  await page.locator("#question[open]").waitFor();
  assert.match(await page.textContent("#question"), /passwords and keys among them.*Account 2 › AccountPassword.*data\/htpasswd/s);
  assert.doesNotMatch(await page.content(), /geheim/);
  const [download] = await Promise.all([page.waitForEvent("download"), press(page, "Download")]);
  assert.equal(download.suggestedFilename(), "config.bin");
  const names = execFileSync("tar", ["-tf", await download.path()], { encoding: "utf8" });
  assert.match(names, /factory\/account\.ini\n/);
  await phone.configure({ "AccountPassword@1": "" });
});

test("an import is compared first: settings from what to what, secrets masked, files", async () => {
  await phone.state({ rebootSeconds: 1 });
  await phone.configure({ AreaCode: "030", LDAPPassword: "old-secret", "AccountLabel@0": "Front", HotlineNumber: "1" });
  const tone = readFileSync(inPhone("config/tone/CptToneCountry.cfg"), "utf8");
  const long = `data/${"long-".repeat(30)}name.xml`;
  const file = archive("other.bin", {
    "factory/global.ini": "[global]\nAreaCode = 089\nLDAPPassword = new-secret\nAreaCodeMin=\\:\\x20a\n",
    "factory/account.ini": "[account 0]\nAccountLabel=Front\n[account 2]\nAccountPassword=fresh-secret\n",
    "factory/tone/CptToneCountry.cfg": tone, [`factory/${long}`]: "<x/>", "factory/other/model.ini": "a=1\n",
  }, "--format=pax");
  const page = await phone.openAs("admin", "settings-config");
  const { title, lists } = await review(page, "ConfigFileName", file, "Compare");
  assert.equal(title, "Import other.bin?");
  assert.deepEqual(lists["Changed settings: 7"].sort(), ["Account 2 › AccountPassword: empty → default", "Account 3 › AccountPassword: default → a secret", "AreaCode: 030 → 089",
    "AreaCodeMin: default →  a", "HotlineNumber: 1 → default", "LDAPPassword: another secret", "other/model.ini › a: default → 1"]);
  assert.deepEqual(lists["New files: 2"].sort(), [long, "other/model.ini"]);
  assert.deepEqual(lists["Changed files: 2"].sort(), ["account.ini", "global.ini"]);
  assert.deepEqual(lists["Not used by this phone: 1"], ["other/model.ini"]);
  assert.ok(Object.entries(lists).some(([name, rows]) => name.startsWith("Files that stay") && rows.includes("tone/CptToneCountry.cfg")));
  assert.doesNotMatch(await page.content(), /-secret/);
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "config-review");
  await page.locator("#question-no").click();
  await phone.assertStored({ AreaCode: "030" });
  await press(page, "Compare");
  await press(page, "Import and restart");
  await page.getByText("The phone is updating its settings").waitFor();
  await phone.assertStored({ AreaCode: "089", LDAPPassword: "new-secret", "AccountPassword@2": "fresh-secret" });
  assert.equal(readFileSync(inPhone(`config/${long}`), "utf8"), "<x/>");
  await page.waitForURL(/p=login/);
  await phone.state({ rebootSeconds: 0 });
});

test("what the phone would refuse is told in the browser, and the phone agrees", async () => {
  const page = await phone.openAs("admin", "settings-config");
  const good = { "factory/user/a": "1" };
  const cut = archive("cut.bin", { "factory/big": "x".repeat(5000) });
  writeFileSync(cut, readFileSync(cut).subarray(0, 3000));
  const rows = [
    [archive("link.bin", { ...good, "factory/link": "-> /etc/passwd" }), "factory/link: only files and folders may be in the archive, no links."],
    [archive("beside.bin", { ...good, "phone/www/x": "1" }), "phone/www/x: lies outside the folder “factory”."],
    [archive("lines.bin", { "factory/a\nb": "1" }), "factory/a\nb: no such name may be in the archive."],
    [archive("zipped.bin", good, "-z"), "This is no archive of a configuration. Choose a file that a phone exported."],
    [cut, "The archive is cut short or damaged."],
  ];
  for (const [file, fault] of rows) {
    const { title, lists } = await review(page, "ConfigFileName", file, "Compare");
    assert.equal(title, "The phone would refuse this file");
    assert.ok(Object.values(lists).flat().includes(fault), `${file}: ${JSON.stringify(lists)}`);
    await press(page, "Close");
    const answer = await page.context().request.post(`${phone.origin}/servlet?p=settings-config&q=import`, {
      headers: { Accept: "application/json" }, multipart: { ConfigFileName: { name: "x", mimeType: "a/b", buffer: readFileSync(file) } } });
    assert.equal((await answer.json()).variables.noticeLabel, "setTimeout$settings-config$Error:Import config error!", file);
  }
  await phone.state({ talking: true });
  await page.setInputFiles("#ConfigFileName", archive("good.bin", good));
  await press(page, "Compare");
  await page.getByText("A call is in progress").waitFor();
  await phone.state({ talking: false });
});

test("custom factory settings are stored, shown with their date, and deleted after a question", async () => {
  const page = await phone.openAs("admin", "settings-config");
  const { title, lists } = await review(page, "FactoryConfig", archive("mine.bin", { "factory/global.ini": "AreaCode=1\nLDAPPassword=x\n" }), "Continue");
  assert.equal(title, "Store mine.bin?");
  assert.deepEqual(lists["Passwords and keys: 1"], ["LDAPPassword"]);
  await page.locator("#question-yes").click();
  await page.getByText("The custom factory settings have been stored.").waitFor();
  assert.ok(existsSync(inPhone("data/customfactory/global.ini")));
  await phone.go(page, "settings-config");
  assert.match(await page.textContent("#delete-factory output"), /\d\d:\d\d/);
  const questions = answerDialogs(page, false, true);
  await press(page, "Delete");
  assert.ok(existsSync(inPhone("data/customfactory")));
  await press(page, "Delete");
  await page.getByText("The custom factory settings have been deleted.").waitFor();
  assert.deepEqual(questions, Array(2).fill("Delete the custom factory settings from the phone?"));
});

test("the log's settings are saved; the page fits a telephone's screen", async () => {
  const page = await phone.openAs("admin", "settings-config", { viewport: { width: 360, height: 740 } });
  assert.ok(await overflow(page) <= 0);
  await screenshot(page, "config-narrow");
  await enter(page, { SyslogServerName: "log.example", SysLogLevel: "6", ServerLogLevel: "5" });
  await phone.assertSaves(page, { SyslogServerName: "log.example", SysLogLevel: "6", ServerLogLevel: "5" });
});
