// The preferences: language, sliders, wallpapers and rings.
import assert from "node:assert/strict";
import { copyFileSync, existsSync, readFileSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { answerDialogs, assertErrors, axe, enter, phone, press, save, screenshot, values } from "./phone.mjs";

const inRoot = (path) => join(phone.root, path);
const picture = readFileSync(inRoot("phone/resource/sysdata/wallpaper/pictures (02).png"));
const sound = readFileSync(inRoot("phone/resource/sysdata/sound/Ring2.wav"));
const choose = (page, id, name, buffer, mimeType = "") => page.setInputFiles(`#${id}`, { name, mimeType, buffer });
const told = (page, id, text) => page.locator(`#${id}`).getByText(text, { exact: true }).waitFor();

test("a language speaks for itself and is there as soon as it is saved", async () => {
  const page = await phone.openAs("user", "settings-preference");
  assert.deepEqual((await page.locator("#LanguageWebLang option").allTextContents()).sort(), ["Deutsch", "English", "العربية"]);
  await enter(page, { LanguageWebLang: "German" });
  await save(page);
  await page.getByText("Gespeichert.", { exact: true }).waitFor();
  assert.equal(await page.getAttribute("html", "lang"), "de");
  await enter(page, { LanguageWebLang: "English" });
  await save(page);
  await page.getByText("Saved.", { exact: true }).waitFor();
});

test("sliders show their values; what is not on a scale stays until it is moved; the PIN stays on the phone", async () => {
  const stored = { BacklightLevel: "50", ContrastLevel: "", ActiveLevel: "x<b>", UnlockPIN: "4711", BacklightTime: "7", EnableWatchDog: "1" };
  await phone.configure(stored);
  const page = await phone.openAs("admin", "settings-preference");
  const shown = () => page.locator("output").allTextContents();
  assert.deepEqual(await shown(), ["–", "1", "50", "–"]);
  await phone.assertSaves(page, stored);
  assert.doesNotMatch(await page.content(), /4711/);
  await page.focus("#BacklightLevel");
  await page.keyboard.press("ArrowLeft");
  await enter(page, { ContrastLevel: "3", InactiveLevel: "0", UnlockPIN: "0815", PredialAutodial: true });
  assert.deepEqual(await shown(), ["–", "0", "9", "3"]);
  await phone.assertSaves(page, { ...stored, BacklightLevel: "9", ContrastLevel: "3", InactiveLevel: "0", UnlockPIN: "0815", PredialAutodial: "1" });
  await enter(page, { ContrastLevel: "10", BacklightLevel: "0" });
  await press(page, "Cancel");
  await page.locator("output", { hasText: "9" }).waitFor();
  assert.deepEqual(await shown(), ["–", "0", "9", "3"]);
  await assertErrors(page, [["UnlockPIN", "Enter 1 to 15 digits.", ["12a", "1 2"], "12"], ["UnlockPIN", "This field is required.", ""],
    ["InterDigitTime", "Enter a whole number from 1 to 14.", ["0", "15"], "14"]]);
});

test("an own wallpaper is seen, uploaded, used and deleted; pictures of every other kind are refused before they are sent", async () => {
  const page = await phone.openAs("admin", "settings-preference");
  const upload = page.locator("button[form=wallpaper-upload]");
  for (const [name, bytes, text] of [["a.gif", picture, "Choose a picture whose name ends in .jpg, .png or .bmp."],
    ["a.png", Buffer.alloc(5000001), "The picture is too large. The phone takes up to 5 MB."],
    [`${"ä".repeat(114)}.png`, picture, "The file's name is too long."], ["a.png", Buffer.from("no picture"), "The browser cannot read this picture."]]) {
    await choose(page, "nameUploadWallpaper", name, bytes);
    await told(page, "wallpaper-result", text);
    assert.equal(await page.isVisible("#wallpaper-preview"), false, name);
  }
  await upload.click();  // the browser may not know what the phone knows
  await told(page, "wallpaper-result", "The phone cannot use this picture. Choose a JPEG, PNG or BMP picture of up to 5 MB.");
  const name = "50% of #1: $(x) 'ä' & <b>.jpeg", kept = "50% of #1- $(x) 'ä' & <b>.jpg";
  await enter(page, { InterDigitTime: "9" });
  await choose(page, "nameUploadWallpaper", name, picture);
  await page.waitForSelector("#wallpaper-preview:visible");
  await screenshot(page, "preference-preview");
  await upload.click();
  await told(page, "wallpaper-result", `${kept} has been uploaded. Save the page to use it.`);
  const tile = page.locator("#wallpapers label", { hasText: kept });
  const isSeen = (image) => image.evaluate((element) => element.decode().then(() => [element.naturalWidth, element.naturalHeight]));
  assert.deepEqual(await isSeen(tile.locator("img")), [480, 272]);
  assert.deepEqual(await isSeen(page.locator("#wallpapers img").first()), [480, 272]);
  assert.deepEqual([await tile.locator("input").isChecked(), await values(page, "InterDigitTime")], [true, ["9"]]);
  assert.deepEqual(await axe(page), []);
  await phone.assertSaves(page, { CurrentWallpaper: `Config:${kept}`, InterDigitTime: "9" });

  const questions = answerDialogs(page, false, true);
  await choose(page, "nameUploadWallpaper", name, picture);
  await upload.click();
  await page.click("#wallpaper-delete");
  await told(page, "wallpaper-result", `${kept} has been deleted.`);
  assert.deepEqual(questions, [`The phone has a file named ${kept} already. Replace it?`, `Delete ${kept} from the phone?`]);
  assert.equal(existsSync(inRoot(`data/userdata/wallpaper/${kept}`)), false);
  await page.getByText("None of these is chosen: the phone shows a picture of its own choice.").waitFor();
  assert.deepEqual([await tile.count(), await page.isVisible("#wallpaper-delete")], [0, false]);
  await phone.assertSaves(page, { CurrentWallpaper: "pictures (01).png" });
  await page.locator("#wallpapers input").first().focus();
  for (const key of ["Space", "ArrowRight", "ArrowRight"]) await page.keyboard.press(key);
  await phone.assertSaves(page, { CurrentWallpaper: "Resource:pictures (02).png" });
});

test("an own ring is uploaded, heard, used and deleted", async () => {
  await phone.configure({ Ringtype: "Resource:Ring3.wav" });
  copyFileSync(inRoot("phone/resource/sysdata/sound/Ring1.wav"), inRoot("data/userdata/sound/Ring3.wav"));
  const page = await phone.openAs("user", "settings-preference");
  assert.deepEqual([await values(page, "Ringtype"), await page.isVisible("#ring-delete")], [["Resource:Ring3.wav"], false]);
  for (const [name, bytes, text] of [["a.mp3", sound, "Choose a sound whose name ends in .wav."],
    ["a.wav", Buffer.alloc(8000001), "The sound is too large. The phone takes up to 8 MB."], [`${"x".repeat(103)}.wav`, sound, "The file's name is too long."]]) {
    await choose(page, "nameUploadRing", name, bytes);
    await told(page, "ring-result", text);
  }
  const name = "My ring & 100%.WAV";
  await choose(page, "nameUploadRing", name, sound);
  await phone.state({ talking: true });
  await page.locator("button[form=ring-upload]").click();
  await told(page, "ring-result", "A call is in progress, so nothing was changed. Please try again after it.");
  await phone.state({ talking: false });
  await page.locator("button[form=ring-upload]").click();
  await told(page, "ring-result", `${name} has been uploaded. Save the page to use it.`);
  const heard = page.waitForResponse(`**/media/user/sound/${encodeURIComponent(name)}`);
  await press(page, `Play: ${name}`);
  assert.match((await heard).headers()["content-type"], /audio\/wav/);
  await phone.assertSaves(page, { Ringtype: `Config:${name}` });
  const questions = answerDialogs(page, true);
  await page.click("#ring-delete");
  await told(page, "ring-result", `${name} has been deleted.`);
  assert.deepEqual(questions, [`Delete ${name} from the phone?`]);
  assert.deepEqual(await values(page, "Ringtype"), ["Resource:Ring1.wav"]);
  assert.equal(existsSync(inRoot(`data/userdata/sound/${name}`)), false);
});
