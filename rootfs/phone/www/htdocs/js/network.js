// The network page: where the phone will be found after a save, and what may keep its reader from it.
import { addressAt, fieldsOf, warnOfRisks } from "./connection-risks.js";
import { t } from "./i18n.js";

const ipv6Only = "1";
const ipv4Only = "0";
const pppoe = "1";
const isStatic = { ipv4: (type) => type === "2", ipv6: (type) => type === "1" };

const form = document.querySelector("form:has(.bar)");
const { valueOf, isAnyChanged } = fieldsOf(form);

// The addresses that the reader gives the phone; what the network gives it cannot be told.
function hosts() {
  const mode = valueOf("NetworkIPAddressMode");
  return [
    mode !== ipv6Only && isStatic.ipv4(valueOf("ipv4type")) && valueOf("NetworkWanStaticIp"),
    mode !== ipv4Only && isStatic.ipv6(valueOf("ipv6type")) && valueOf("NetworkIPv6WanIP"),
  ].filter(Boolean);
}

function addressRisk(addresses) {
  if (addresses.length) return t("After the restart, these pages are found at %1.", addresses.join(" · "));
  return t("After the restart, the phone may have another address: look at its screen.");
}

warnOfRisks(form, () => {
  const isMoved = isAnyChanged("NetworkIPAddressMode", "ipv4type", "ipv6type", "NetworkWanStaticIp", "NetworkIPv6WanIP");
  const addresses = isMoved ? hosts().map(addressAt) : [];
  const isPppoe = valueOf("NetworkIPAddressMode") !== ipv6Only && valueOf("ipv4type") === pppoe;
  return {
    addresses,
    texts: [
      isMoved && addressRisk(addresses),
      isAnyChanged("NetworkWanStaticMask", "NetworkWanStaticGateWay", "NetworkIPv6Prefix", "NetworkIPv6WanGateway") &&
        t("With a wrong gateway, subnet mask or prefix length, computers of other networks do not reach the phone."),
      isPppoe && isAnyChanged("NetworkIPAddressMode", "ipv4type") && t("With PPPoE, the phone is at the internet provider's network and uses no VLAN. Computers in yours may no longer reach it."),
      isPppoe && isAnyChanged("ipv4type", "NetworkPppoeUser", "NetworkPppoePin") && t("If the provider refuses the user name or the password, the phone has no network."),
    ],
  };
});
