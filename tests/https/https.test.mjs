// HTTPS with the phone's certificates, asked by a client of its own kind.
import { execFileSync, spawn } from "node:child_process";
import { once } from "node:events";
import { chmodSync, mkdirSync, mkdtempSync, readFileSync, renameSync, rmSync, statSync, symlinkSync, writeFileSync } from "node:fs";
import http from "node:http";
import https from "node:https";
import net from "node:net";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";
import { after, test } from "node:test";
import { setTimeout } from "node:timers/promises";
import assert from "node:assert/strict";

const folder = mkdtempSync(join(tmpdir(), "phone-web-https-"));
const certificates = join(folder, "phone/config/certs");
const builtIn = join(certificates, "phonedev/WebServer.pem"), uploaded = join(certificates, "server/WebServer.pem");
const program = process.env.PHONE_WEB_HOST ?? new URL("../../build/release/phone-web-host", import.meta.url).pathname;
const host = spawn(program, ["--root", join(folder, "phone"), "--state", '{"mac":"02005e0000ab"}',
  "--listen-tls", "127.0.0.1:0", "--listen", "127.0.0.1:0"], { stdio: ["ignore", "pipe", "pipe"] });
let log = "";
host.stderr.on("data", (text) => { log += text; });
const lines = createInterface(host.stdout)[Symbol.asyncIterator]();
const plain = /^listening on (http:\S+)$/.exec((await lines.next()).value)[1];
const secure = /^listening on (https:\S+)$/.exec((await lines.next()).value)[1];

after(async () => {
  host.kill("SIGTERM");
  if (host.exitCode === null) await once(host, "exit");
  rmSync(folder, { recursive: true });
  assert.equal(host.exitCode, 0, log);
});

// Asks on a connection of its own, unless `options` has an agent that keeps one.
async function ask(address, { body, ...options } = {}) {
  const request = (address.startsWith("https") ? https : http).request(address, { agent: false, rejectUnauthorized: false, ...options });
  request.end(body);
  const [response] = await once(request, "response");
  const { subject, valid_from: from, valid_to: to } = response.socket.getPeerCertificate?.() ?? {};
  let text = "";
  for await (const piece of response) text += piece;
  return { status: response.statusCode, headers: response.headers, text, shown: subject?.CN, days: (Date.parse(to) - Date.parse(from)) / 86400_000 };
}
const shown = async (options) => (await ask(`${secure}/css/style.css`, options)).shown;
const choose = (value) => ask(`${plain}/simulator/config`, { method: "PUT", body: JSON.stringify({ global: { HttpsDevCert: value } }) });

const openssl = (...words) => execFileSync("openssl", words, { cwd: folder, encoding: "utf8", stdio: ["ignore", "pipe", "ignore"] });
const read = (name) => readFileSync(join(folder, name), "utf8");
// Makes NAME.pem and NAME.key, signed by `issuer` or by itself.
function issue(name, key, issuer, extensions) {
  openssl("req", "-x509", "-newkey", ...key, "-nodes", "-keyout", `${name}.key`, "-out", `${name}.pem`, "-days", "90", "-subj", `/CN=${name}`,
    ...(issuer ? ["-CA", `${issuer}.pem`, "-CAkey", `${issuer}.key`] : []), ...extensions.flatMap((text) => ["-addext", text]));
}
const p256 = ["ec", "-pkeyopt", "ec_paramgen_curve:P-256"], authority = ["basicConstraints=critical,CA:TRUE"];
const ofServer = ["basicConstraints=critical,CA:FALSE", "subjectAltName=IP:127.0.0.1"];

function store(text) {
  mkdirSync(join(certificates, "server"), { recursive: true });
  writeFileSync(`${uploaded}.new`, text);
  renameSync(`${uploaded}.new`, uploaded);
}

test("the phone has a certificate of its own", async () => {
  const { shown: name, days } = await ask(`${secure}/`);
  assert.deepEqual({ name, days }, { name: "02005e0000ab", days: 3650 });
  assert.equal(statSync(builtIn).mode & 0o777, 0o600);
  assert.match(openssl("x509", "-in", builtIn, "-noout", "-text"), /NIST CURVE: P-256/);
});

test("nothing older than TLS 1.2 and no weak cipher is spoken", async () => {
  const ciphers = "ALL:@SECLEVEL=0";
  for (const version of ["TLSv1.2", "TLSv1.3"]) await shown({ minVersion: version, maxVersion: version });
  await assert.rejects(shown({ minVersion: "TLSv1", maxVersion: "TLSv1.1", ciphers }));
  for (const weak of ["ECDHE-ECDSA-AES256-SHA", "ECDHE-ECDSA-AES256-CCM"]) {
    await assert.rejects(shown({ maxVersion: "TLSv1.2", ciphers: `${weak}:@SECLEVEL=0` }), weak);
  }
});

test("sessions over TLS and over plain HTTP are two things", async () => {
  const login = async (address) => {
    const form = { method: "POST", body: "username=admin&pwd=admin", headers: { "Content-Type": "application/x-www-form-urlencoded" } };
    const { headers } = await ask(`${address}/servlet?p=login&q=login`, form);
    return { cookie: headers["set-cookie"][0], hsts: headers["strict-transport-security"] };
  };
  const over = { [plain]: await login(plain), [secure]: await login(secure) };
  assert.match(over[plain].cookie, /^PHONESESSION=[0-9a-f]{32}; Path=\/; HttpOnly; SameSite=Strict$/);
  assert.match(over[secure].cookie, /^__Host-PHONESESSION=[0-9a-f]{32}; Path=\/; HttpOnly; SameSite=Strict; Secure$/);
  assert.deepEqual([over[plain].hsts, over[secure].hsts], [undefined, "max-age=604800"]);
  const [id, secureId] = [plain, secure].map((address) => /=(\w+)/.exec(over[address].cookie)[1]);
  const rows = [[plain, `PHONESESSION=${id}`, 200], [secure, `__Host-PHONESESSION=${secureId}`, 200],
    [plain, `PHONESESSION=${secureId}`, 302], [secure, `__Host-PHONESESSION=${id}`, 302], [secure, `PHONESESSION=${secureId}`, 302]];
  for (const [address, cookie, status] of rows) {
    assert.equal((await ask(`${address}/servlet?p=status&q=load`, { headers: { Cookie: cookie } })).status, status, `${address} ${cookie}`);
  }
});

test("the chosen certificate is shown with its chain, and anew when it changes", async () => {
  issue("root", p256, undefined, authority);
  issue("between", p256, "root", authority);
  issue("first", p256, "between", ofServer);
  issue("second", ["rsa:2048"], "between", ofServer);
  const verified = { ca: read("root.pem"), rejectUnauthorized: true };
  await choose("1");
  assert.equal(await shown(), "02005e0000ab", "nothing is uploaded yet");
  store(read("first.key") + read("first.pem") + read("between.pem"));
  const agent = new https.Agent({ keepAlive: true, maxSockets: 1 });
  assert.equal(await shown({ ...verified, agent }), "first");
  store(read("second.pem") + read("root.pem") + read("between.pem") + read("second.key"));
  assert.equal(await shown(verified), "second");
  assert.equal(await shown({ ...verified, agent }), "first", "who is connected stays so");
  agent.destroy();
  await choose("0");
  assert.equal(await shown(), "02005e0000ab");
  await choose("1");
  assert.equal(await shown(verified), "second");
});

test("what cannot be shown leaves the one before, with one line in the log", { timeout: 60_000 }, async () => {
  openssl("ec", "-in", "first.key", "-aes128", "-passout", "pass:x", "-out", "locked.key");
  const rows = [() => store("garbage"), () => store(""), () => store(read("first.pem")), () => store(read("first.pem") + read("second.key")),
    () => store(read("first.pem") + read("locked.key")), () => store(read("first.pem").slice(0, 300) + read("first.key")),
    () => store("x".repeat(200_000)), () => { rmSync(uploaded); mkdirSync(uploaded); },
    () => { rmSync(uploaded, { recursive: true }); symlinkSync("../phonedev/WebServer.pem", uploaded); },
    () => { rmSync(uploaded); execFileSync("mkfifo", [uploaded]); }];
  for (const [i, breakIt] of rows.entries()) {
    log = "";
    breakIt();
    for (let times = 0; times < 3; ++times) assert.equal(await shown(), "second", `row ${i}`);
    while (!log.includes("goes on")) await setTimeout(10);
    assert.equal(log.match(/no certificate and key in .*; the one before goes on/g)?.length, 1, `row ${i}: ${log}`);
    assert.doesNotMatch(log, /garbage|BEGIN/);
  }
  rmSync(uploaded);
  assert.equal(await shown(), "02005e0000ab");
  store(read("first.pem") + read("first.key"));
  chmodSync(uploaded, 0o400);
  assert.equal(await shown(), "first");
});

test("clients that only connect hold up nobody", async () => {
  const port = Number(new URL(secure).port);
  const silent = await Promise.all(Array.from({ length: 300 }, async (_, i) => {
    const socket = net.connect(port, "127.0.0.1").on("error", () => {});
    await once(socket, "connect");
    if (i % 3 === 0) socket.write("GET / HTTP/1.1\r\n\r\n");
    if (i % 3 === 1) socket.write("\x16\x03\x01\x02\x00\x01");
    return socket;
  }));
  assert.equal((await ask(`${plain}/css/style.css`)).status, 200);
  for (const socket of silent) socket.destroy();
  const body = Buffer.alloc(2_000_000, "x");
  assert.equal((await ask(`${secure}/servlet?p=status&q=load`, { method: "POST", body, headers: { "Content-Length": body.length } })).status, 302);
});

test("a phone that lost its certificate makes another when it reboots", async () => {
  await choose("0");
  const before = readFileSync(builtIn, "utf8");
  rmSync(builtIn);
  assert.equal(await shown(), "first", "the one before goes on");
  await ask(`${plain}/simulator/reboot`, { method: "POST" });
  assert.equal(await shown(), "02005e0000ab");
  assert.notEqual(readFileSync(builtIn, "utf8"), before);
});
