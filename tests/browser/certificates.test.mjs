// Certificates: taken to the phone, looked at, deleted.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import test, { after } from "node:test";
import { answerDialogs, axe, enter, phone, press, screenshot } from "./phone.mjs";

const folder = mkdtempSync(join(tmpdir(), "certificates-"));
after(() => rmSync(folder, { recursive: true }));

// The path of a file with a certificate for a name, and its key if wanted.
function certificate(name, days, withKey) {
  const [cert, key, both] = ["pem", "key", "both"].map((ending) => join(folder, `${name}.${ending}`));
  execFileSync("openssl", ["req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-noenc", "-keyout", key,
    "-out", cert, "-days", `${days}`, "-subj", `/O=Example/CN=${name}`, "-addext", `subjectAltName=DNS:${name}`], { stdio: "ignore" });
  writeFileSync(both, readFileSync(cert, "latin1") + readFileSync(key, "latin1"));
  return withKey ? both : cert;
}

async function upload(page, path, text) {
  await page.setInputFiles("#certificatefile", path);
  await press(page, "Upload");
  await page.getByText(text).waitFor();
}

const names = (page) => page.locator("form .name > [translate]").allTextContents();

test("trusted certificates are uploaded, marked when they run out, and deleted after a question", async () => {
  const page = await phone.openAs("admin", "trusted-cert");
  await page.getByText("No certificate has been uploaded.").waitFor();
  assert.equal(await page.getByRole("button", { name: "Delete the chosen ones" }).isVisible(), false);
  await press(page, "Upload");
  await page.getByText("Choose a file first.").waitFor();
  writeFileSync(join(folder, "big"), Buffer.alloc(5 << 20));
  await page.setInputFiles("#certificatefile", join(folder, "big"));
  await page.getByText("The file is too large for the phone.").waitFor();
  for (const [name, days] of [["one.example", 365], ["two.example", 20], ["three.example", 365]]) {
    await upload(page, certificate(name, days), "The certificate has been uploaded.");
  }
  assert.deepEqual(await page.locator(".certificates .badge").allTextContents(), ["Valid", "Expires soon", "Valid"]);
  await page.locator("summary").first().click();
  await page.getByText("DNS:one.example").waitFor();
  assert.deepEqual(await axe(page), []);
  await screenshot(page, "certificates-open");
  const questions = answerDialogs(page, false, true);
  await press(page, "Delete the chosen ones");
  await page.getByText("Choose a certificate first.").waitFor();
  await page.getByLabel("one.example").check();
  await page.getByLabel("three.example").check();
  await press(page, "Delete the chosen ones");
  await press(page, "Delete the chosen ones");
  await page.getByText("The certificates have been deleted.").waitFor();
  assert.deepEqual(questions, Array(2).fill("Delete these certificates from the phone?\n\none.example\nthree.example"));
  assert.deepEqual(await names(page), ["two.example"]);
  await upload(page, join(folder, "two.example.pem"), "This certificate is already on the phone.");
});

test("whom the phone trusts is saved", async () => {
  const page = await phone.openAs("admin", "trusted-cert");
  await enter(page, { HttpsCaCert: "2", HttpsCNValidation: false });
  await phone.assertSaves(page, { HTTPSTrustCertificates: "1", HttpsCNValidation: "0", HttpsCaCert: "2" });
  await enter(page, { HTTPSTrustCertificates: false });
  assert.equal(await page.isVisible("#HttpsCaCert"), false);
  await phone.assertSaves(page, { HTTPSTrustCertificates: "0", HttpsCaCert: "2" });
});

test("the server's certificate comes with its key, is chosen, and deleted", async () => {
  const page = await phone.openAs("admin", "server-cert", { timed: true });
  await upload(page, certificate("phone.example", 365), "The phone could not install the certificate (error -1).");
  await page.clock.fastForward(5000);
  await page.waitForURL(/p=server-cert&q=load/);
  await upload(page, certificate("phone.example", 365, true), "The certificate has been uploaded.");
  assert.deepEqual(await names(page), ["phone.example"]);
  await enter(page, { HttpsDevCert: "1" });
  await phone.assertSaves(page, { HttpsDevCert: "1" }, "Save only");
  const questions = answerDialogs(page, true);
  await page.locator("#delete-own button").click();
  await page.getByText("The certificate has been deleted.").waitFor();
  assert.match(questions[0], /^Delete the certificate and its key/);
  assert.deepEqual(await names(page), []);
  await page.getByText("No certificate has been uploaded.").waitFor();
});

test("certificates are the administrator's", async () => {
  phone.expectProblems("403");
  for (const page of ["trusted-cert", "server-cert"]) {
    const shown = await phone.openAs("var", page);
    assert.equal(await shown.textContent("#message"), "Your user level may not see this page.");
    assert.equal(await shown.locator(".card:visible").count(), 0);
  }
});
