// The page for people of the simulated phone: shows its journal and state, and changes them.

const statusNames = {
  0: "Disabled", 1: "Registering", 2: "Registered", 3: "Register failed", 4: "Unregistered", 5: "Registered (5)",
  6: "Inexistent", "-1": "No answer",
};
const networkNames = {
  localIPv4: "IPv4 address", netmaskIPv4: "Subnet mask", gatewayIPv4: "IPv4 gateway", primaryDNSIPv4: "Primary IPv4 DNS",
  secondaryDNSIPv4: "Secondary IPv4 DNS", localIPv6: "IPv6 address", prefixIPv6: "IPv6 prefix", gatewayIPv6: "IPv6 gateway",
  primaryDNSIPv6: "Primary IPv6 DNS", secondaryDNSIPv6: "Secondary IPv6 DNS", lanIP: "PC port address",
};
const moduleNames = { 0: "38-key module", 1: "40-key module", 5: "Colour key module", 2: "Headset adapter" };
const messageNames = {
  0x10007: "configuration changed", 0x10101: "reboot", 0x10103: "reset to factory", 0x30006: "registration?",
  0x30007: "idle?", 0x3000e: "expansion modules?", 0x30011: "hang up", 0x30017: "action URI", 0x3001a: "show pushed XML",
  0x50004: "write the call history", 0x10009: "upgrade ahead", 0x1000a: "leave the servers", 0xb0003: "upgrade prepared",
  0x200001: "start capturing", 0x200002: "stop capturing", 0x200003: "capturing?", 0x200005: "write the capture",
  0xa0001: "provisioning?", 0xa0002: "make a call",
};
const queries = new Set([0x30006, 0x30007, 0x3000e, 0x200003]);
const keptRows = 500;
const shownAccounts = 6;
const newModule = { type: 0, hardware: "1.0.0.1", firmware: "1.2.0.46" };

const $ = (id) => document.getElementById(id);
let state = null;
let entries = [];
let last = 0;
let paused = false;

function element(name, properties = {}, ...children) {
  const { data = {}, attributes = {}, ...rest } = properties;
  const made = Object.assign(document.createElement(name), rest);
  Object.assign(made.dataset, data);
  for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, value);
  made.append(...children);
  return made;
}

async function request(path, method = "GET", body = undefined) {
  const options = { method, cache: "no-store" };
  if (body !== undefined) {
    options.body = JSON.stringify(body);
    options.headers = { "Content-Type": "application/json" };
  }
  const response = await fetch(`/simulator/${path}`, options);
  const answer = await response.json();
  if (!response.ok) throw new Error(answer.error ?? `status ${response.status}`);
  return answer;
}

function tell(text, isBad = false) {
  $("message").className = isBad ? "bad" : "";
  $("message").textContent = text;
}

async function attempt(work, done = "") {
  try {
    tell((await work()) ?? done);
  } catch (error) {
    tell(error.message, true);
    if (state) showState(true);
  }
}

const patch = (change, done) => attempt(async () => {
  state = await request("state", "PATCH", change);
  showState(true);
  return done ?? "Changed.";
});

// State

const at = (path) => path.split(".").reduce((value, key) => value?.[key], state);
const nested = (path, value) => path.split(".").reduceRight((inner, key) => ({ [key]: inner }), value);

// A field that somebody is in keeps what it holds, unless the change came from this page.
function show(field, value, force) {
  if (!force && field === document.activeElement) return;
  if (field.type === "checkbox") field.checked = value;
  else if (field.value !== String(value)) field.value = value;
}

function showState(force = false) {
  for (const field of document.querySelectorAll("[data-state]")) show(field, at(field.dataset.state), force);
  $("model").textContent = `Type ${state.phoneType}, hardware ${state.hardwareVersion}`;
  showAccounts(force);
  showRows($("modules"), state.expansionModules, moduleRow, force);
  showRows($("answers"), Object.entries(state.answers), ([name, value]) => pairRow("answers", name, value), force);
  showRows($("environment"), Object.entries(state.bootEnvironment), ([name, value]) => pairRow("bootEnvironment", name, value), force);
}

function accountField(i) {
  const made = element("label", {}, `Account ${i + 1}`, element("select", { data: { account: i } }));
  $(i < shownAccounts ? "accounts" : "more-accounts").append(made);
  return made;
}

function showAccounts(force) {
  const selects = [...document.querySelectorAll("[data-account]")];
  for (const extra of selects.splice(state.registration.length)) extra.parentElement.remove();
  state.registration.forEach((status, i) => {
    const select = selects[i] ?? accountField(i).querySelector("select");
    const codes = new Set([...Object.keys(statusNames), String(status)]);
    if (select.options.length !== codes.size) {
      select.replaceChildren(...[...codes].map((code) => new Option(statusNames[code] ?? `Status ${code}`, code)));
    }
    show(select, status, force);
  });
}

// Rows are made anew when what they show changed.
function showRows(list, items, row, force) {
  const shown = JSON.stringify(items);
  if (list.dataset.shown === shown || (!force && list.contains(document.activeElement))) return;
  list.dataset.shown = shown;
  list.replaceChildren(...items.map(row));
}

function moduleRow(module, index) {
  const types = Object.entries(moduleNames).map(([type, name]) => new Option(name, type));
  if (!(module.type in moduleNames)) types.push(new Option(`Type ${module.type}`, module.type));
  const select = element("select", {}, ...types);
  select.value = module.type;
  const texts = ["hardware", "firmware"].map((key) => element("input", { value: module[key], name: key }));
  const change = () => patchModules((modules) => {
    modules[index] = { type: Number(select.value), hardware: texts[0].value, firmware: texts[1].value };
  });
  for (const field of [select, ...texts]) field.addEventListener("change", change);
  const remove = element("button", { type: "button", onclick: () => patchModules((modules) => modules.splice(index, 1)) }, "Detach");
  remove.setAttribute("aria-label", `Detach module ${index + 1}`);
  return element("li", {}, element("div", { className: "fields" }, element("label", {}, `Module ${index + 1}`, select),
    element("label", {}, "Hardware", texts[0]), element("label", {}, "Firmware", texts[1])), remove);
}

function patchModules(change) {
  const modules = structuredClone(state.expansionModules);
  change(modules);
  return patch({ expansionModules: modules });
}

function pairRow(member, name, value) {
  const remove = element("button", { type: "button", onclick: () => patch({ [member]: { [name]: null } }) }, "Remove");
  remove.setAttribute("aria-label", `Remove ${name}`);
  return element("li", {}, element("code", {}, `${name} = ${value}`), remove);
}

function valueOf(field) {
  if (field.type === "checkbox") return field.checked;
  return field.type === "number" ? Number(field.value) : field.value;
}

// Scenes

const withRegistration = (change) => {
  const registration = state.registration.map(change);
  return { registration };
};
const scenes = {
  call: () => patch({ talking: true }, "A call is in progress: pages refuse to save."),
  hangup: () => patch({ talking: false }, "The call has ended."),
  drop: () => patch(withRegistration((status, i) => (i === 0 ? 3 : status)), "Account 1 lost its registration."),
  register: () => patch(withRegistration((status, i) => (i === 0 ? 2 : status)), "Account 1 is registered."),
  unplug: () => patch({ network: { cableConnected: false }, ...withRegistration((status) => ([2, 5].includes(status) ? 3 : status)) },
    "The cable is out; registered accounts have failed."),
  plug: () => patch({ network: { cableConnected: true }, registration: null }, "The cable is in; accounts registered again."),
  attach: () => patch({ expansionModules: [...state.expansionModules, newModule] }, "A key module is attached."),
  detach: () => patch({ expansionModules: [] }, "No module is attached."),
  registerAll: () => patch({ registration: null }, "Accounts registered as their settings say."),
  networkDefaults: () => patch({ network: null }, "The phone’s own addresses are back."),
  reboot: () => attempt(async () => {
    const { seconds } = await request("reboot", "POST");
    await refresh();
    return seconds > 0 ? `The phone reboots for ${seconds} s.` : "The reboot is in the journal; it takes no time.";
  }),
};

// Journal

const hex = (number) => `0x${(number >>> 0).toString(16)}`;

function matches(entry, words) {
  if (!$("queries").checked && entry.kind === "send" && queries.has(entry.message)) return false;
  const number = entry.message === undefined ? "" : hex(entry.message);
  const text = [entry.kind, entry.thread, entry.call, entry.text, entry.data, number, messageNames[entry.message]].join(" ").toLowerCase();
  return words.every((word) => text.includes(word));
}

function what(entry) {
  if (entry.kind === "system") return [element("span", { className: "data" }, entry.text)];
  const name = messageNames[entry.message] ? ` ${messageNames[entry.message]}` : "";
  const parts = [element("code", {}, `${hex(entry.message)} ${entry.wParam} ${entry.lParam}`), name];
  if (entry.data) parts.push(element("span", { className: "data" }, entry.data.slice(0, 2000)));
  return parts;
}

function entryRow(entry) {
  const target = entry.kind === "system" ? entry.call : entry.thread || "everyone";
  return element("tr", {}, element("td", {}, String(entry.seq)),
    element("td", { className: `kind kind-${entry.kind}` }, entry.kind), element("td", {}, target),
    element("td", {}, ...what(entry)), element("td", {}, entry.kind === "send" ? String(entry.answer) : ""));
}

function showJournal() {
  const words = $("filter").value.toLowerCase().split(/\s+/).filter(Boolean);
  const rows = entries.filter((entry) => matches(entry, words)).slice(-keptRows).reverse().map(entryRow);
  $("entries").replaceChildren(...rows);
  $("empty").hidden = rows.length > 0;
}

async function refreshJournal() {
  const { entries: answered } = await request(`journal?since=${last}`);
  const fresh = answered.filter((entry) => entry.seq > last);  // another request may have brought them meanwhile
  if (fresh.length === 0) return;
  last = fresh.at(-1).seq;
  entries = entries.concat(fresh).slice(-10 * keptRows);
  showJournal();
}

// Configuration

function configFields() {
  const form = $("config-form").elements;
  return { key: form.key.value, account: form.account.value, value: form.value };
}

function readConfig() {
  const { key, account, value } = configFields();
  const query = new URLSearchParams(account === "" ? { key } : { key, account });
  return attempt(async () => { value.value = (await request(`config?${query}`)).value; }, `${key} was read.`);
}

function storeConfig() {
  const { key, account, value } = configFields();
  if (!$("config-form").reportValidity()) return;
  const pair = { [key]: value.value };
  const values = account === "" ? { global: pair } : { accounts: { [account]: pair } };
  attempt(async () => { await request("config", "PUT", values); }, `${key} is stored; no application was told.`);
}

// Life of the page

function showClock() {
  if (state) $("clock").textContent = new Date(Date.now() + state.clockOffset * 1000).toLocaleString();
}

async function refresh() {
  if (!paused) await refreshJournal();
  state = await request("state");
  showState();
}

function showLink(text, isGood) {
  if ($("link").textContent === text) return;
  $("link").textContent = text;
  $("link").className = `badge ${isGood ? "good" : "bad"}`;
}

async function live() {
  try {
    await refresh();
    showLink("live", true);
  } catch {
    showLink("no answer", false);
    last = 0;  // it may be another phone when it comes back
    entries = [];
  }
  setTimeout(live, document.hidden ? 5000 : 1000);
}

function listen() {
  $("network").append(...Object.entries(networkNames).map(([key, name]) => element("label", {}, name,
    element("input", { type: "text", spellcheck: false, data: { state: `network.${key}` } }))));
  document.addEventListener("change", ({ target }) => {
    if (target.dataset.state && target.reportValidity()) patch(nested(target.dataset.state, valueOf(target)));
    if (target.dataset.account) {
      patch(withRegistration((status, i) => (i === Number(target.dataset.account) ? Number(target.value) : status)));
    }
  });
  document.addEventListener("click", ({ target }) => { if (state) scenes[target.dataset?.scene]?.(); });
  const onSubmit = (id, work) => $(id).addEventListener("submit", (event) => {
    event.preventDefault();
    work(event.target);
  });
  onSubmit("config-form", readConfig);
  $("config-form").elements.store.addEventListener("click", storeConfig);
  onSubmit("answer-form", async (form) => {
    await patch({ answers: { [form.elements.name.value]: Number(form.elements.answer.value) } });
    if (!$("message").classList.contains("bad")) form.reset();
  });
  onSubmit("environment-form", async (form) => {
    await patch({ bootEnvironment: { [form.elements.name.value]: form.elements.value.value } });
    if (!$("message").classList.contains("bad")) form.reset();
  });
  $("filter").addEventListener("input", showJournal);
  $("queries").addEventListener("change", showJournal);
  $("pause").addEventListener("click", () => {
    paused = !paused;
    $("pause").setAttribute("aria-pressed", String(paused));
  });
  $("clear").addEventListener("click", () => attempt(async () => {
    await request("journal", "DELETE");
    entries = [];
    showJournal();
  }, "The journal is empty."));
  setInterval(showClock, 1000);
}

listen();
live();
