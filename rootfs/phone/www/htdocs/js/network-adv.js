// The advanced network page: certificates and the VPN's archive, and what a save may cost its reader.
import { t } from "./i18n.js";
import { prepareUpload } from "./upload-field.js";

const form = document.getElementById("network-adv");
const byId = (id) => document.getElementById(id);

// --- Uploads

const maxPem = 1024 * 1024;
const stored = { ca: byId("ca-stored"), client: byId("client-stored"), vpn: byId("vpn-stored") };

// What the phone has now.
async function refresh() {
  const response = await fetch("/servlet?p=network-adv&q=load", { headers: { Accept: "application/json" } });
  const { variables } = await response.json();
  stored.ca.textContent = variables.Network802_1CA_FileName ?? "";
  stored.client.textContent = variables.Network802_1Device_FileName ?? "";
  stored.vpn.textContent = variables.VPNFileShowName ?? "";
  stored.vpn.dataset.ready = variables.VPNEnable;
  return variables;
}

async function certificateFault(file) {
  const text = file.size <= maxPem ? await file.text() : "";
  return text.includes("-----BEGIN CERTIFICATE-----") ? "" : t("This is no PEM file with a certificate.");
}

async function deviceFault(file) {
  const fault = await certificateFault(file);
  const text = fault ? "" : await file.text();
  if (fault) return fault;
  if (!/-----BEGIN [A-Z ]*PRIVATE KEY-----/.test(text)) return t("The key of the certificate is missing in this file.");
  return /ENCRYPTED/.test(text) ? t("The key in this file has a pass phrase, which the phone does not know.") : "";
}

async function archiveFault(file) {
  const magic = await file.slice(257, 262).text();
  return magic === "ustar" ? "" : t("This is no .tar archive.");
}

async function certificateStored() {
  await refresh();
  return [t("The certificate is on the phone.")];
}

async function vpnStored() {
  const { VPNEnable } = await refresh();
  if (VPNEnable !== "true") return [t("The archive is on the phone, but it holds no file that ends in .cnf. VPN does not work without one."), "warning"];
  return [t("The VPN configuration is on the phone.")];
}

const notStored = () => t("The phone could not store the file. Please try again.");
prepareUpload(byId("ca-upload"), { outcome: byId("ca-result"), fault: certificateFault, done: certificateStored, failed: notStored });
prepareUpload(byId("client-upload"), { outcome: byId("client-result"), fault: deviceFault, done: certificateStored, failed: notStored });
prepareUpload(byId("vpn-upload"), {
  outcome: byId("vpn-result"),
  fault: archiveFault,
  mayReplace: () => stored.vpn.dataset.ready !== "true" || confirm(t("Replace the VPN configuration on the phone? It is deleted even if the new one turns out to be broken.")),
  done: vpnStored,
  failed: () => {
    refresh();
    return t("The phone refused the archive. It may hold plain files and folders only. There is no VPN configuration on the phone now.");
  },
});

// --- What may lock the reader out

const field = (name) => [...form.querySelectorAll(`[name="${name}"]`)].find((input) => input.type !== "hidden");
const isOn = (name) => field(name)?.checked;
const isChanged = (name) => {
  const input = field(name);
  if (!input || input.disabled) return false;
  if (input.options) return !input.selectedOptions[0].defaultSelected;
  return input.type === "checkbox" ? input.checked !== input.defaultChecked : input.value !== input.defaultValue;
};
const isAnyChanged = (...names) => names.some(isChanged);

const addressOf = (protocol, port, usual) => `${protocol}//${location.hostname}${port === usual ? "" : `:${port}`}/`;
const httpAddress = () => addressOf("http:", field("NetworkhttpPort").value, "80");
const httpsAddress = () => addressOf("https:", field("NetworkhttpsPort").value, "443");

function webRisk() {
  if (!isAnyChanged("HttpServerSwitch", "HttpsServerSwitch", "NetworkhttpPort", "NetworkhttpsPort")) return "";
  const open = [isOn("HttpServerSwitch") && httpAddress(), isOn("HttpsServerSwitch") && httpsAddress()].filter(Boolean);
  if (!open.length) return t("Nobody will be able to open these pages. Only a reset at the phone itself brings them back.");
  return t("After the restart, these pages are found at %1.", open.join(" · "));
}

const risks = () => [
  webRisk(),
  isAnyChanged("VlanWanSwitch", "VlanWanVid") && (isOn("VlanWanSwitch")
    ? t("The phone moves to VLAN %1. Computers outside it may no longer reach it.", field("VlanWanVid").value)
    : t("The phone leaves its VLAN. Computers inside it may no longer reach it.")),
  isAnyChanged("VlanPcSwitch", "VlanPcVid") && t("The computer behind the phone moves to another VLAN. If it is yours, you may no longer reach the phone."),
  isAnyChanged("EthernetWANPortLink") && t("If the other end of the cable does not use the same speed, the phone has no network."),
  isAnyChanged("Network802_1XMode", "Network802_1XIdentity", "Network802_1XMD5Passwd") && t("If the network refuses the new 802.1X settings, the phone has no network."),
].filter(Boolean);

const list = document.createElement("ul");
list.className = "findings";
byId("restart-text").after(list);

function showRisks() {
  list.replaceChildren(...risks().map((text) => {
    const item = document.createElement("li");
    item.dataset.kind = "warning";
    item.textContent = text;
    return item;
  }));
}

for (const event of ["input", "change"]) form.addEventListener(event, showRisks);
form.addEventListener("reset", () => setTimeout(showRisks));
byId("pppoe-vlan").hidden = form.dataset.wanType !== "1";
