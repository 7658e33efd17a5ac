// The advanced network page: certificates and the VPN's archive, and what a save may cost its reader.
import { fieldsOf, warnOfRisks } from "./connection-risks.js";
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

const { isOn, valueOf, isAnyChanged } = fieldsOf(form);

const addressOf = (protocol, port, usual) => `${protocol}//${location.hostname}${port === usual ? "" : `:${port}`}/`;
const httpAddress = () => addressOf("http:", valueOf("NetworkhttpPort"), "80");
const httpsAddress = () => addressOf("https:", valueOf("NetworkhttpsPort"), "443");

// Where the pages will be found; those that the reader's browser is at home with come first.
function webAddresses() {
  const open = [isOn("HttpServerSwitch") && httpAddress(), isOn("HttpsServerSwitch") && httpsAddress()].filter(Boolean);
  return open.sort((one) => one.startsWith(location.protocol) ? -1 : 1);
}

function webRisk(addresses) {
  if (!addresses.length) return t("Nobody will be able to open these pages. Only a reset at the phone itself brings them back.");
  return t("After the restart, these pages are found at %1.", addresses.join(" · "));
}

warnOfRisks(form, () => {
  const isWebChanged = isAnyChanged("HttpServerSwitch", "HttpsServerSwitch", "NetworkhttpPort", "NetworkhttpsPort");
  const addresses = isWebChanged ? webAddresses() : [];
  return {
    addresses,
    texts: [
      isWebChanged && webRisk(addresses),
      isAnyChanged("VlanWanSwitch", "VlanWanVid") && (isOn("VlanWanSwitch")
        ? t("The phone moves to VLAN %1. Computers outside it may no longer reach it.", valueOf("VlanWanVid"))
        : t("The phone leaves its VLAN. Computers inside it may no longer reach it.")),
      isAnyChanged("VlanPcSwitch", "VlanPcVid") && t("The computer behind the phone moves to another VLAN. If it is yours, you may no longer reach the phone."),
      isAnyChanged("EthernetWANPortLink") && t("If the other end of the cable does not use the same speed, the phone has no network."),
      isAnyChanged("EthernetPCPortLink") && t("If the computer behind the phone does not use the same speed, it has no network. If it is yours, you no longer reach the phone."),
      isAnyChanged("Network802_1XMode", "Network802_1XIdentity", "Network802_1XMD5Passwd") && t("If the network refuses the new 802.1X settings, the phone has no network."),
    ],
  };
});
byId("pppoe-vlan").hidden = form.dataset.wanType !== "1";
