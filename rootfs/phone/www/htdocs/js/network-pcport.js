// The PC port page: a computer there may lose the phone.
import { addressAt, fieldsOf, warnOfRisks } from "./connection-risks.js";
import { t } from "./i18n.js";

const router = "0";

const form = document.querySelector("form:has(.bar)");
const { isOn, valueOf, storedOf, isAnyChanged } = fieldsOf(form);

warnOfRisks(form, () => {
  const isRouter = valueOf("type") === router;
  const address = addressAt(valueOf("NetworkLanRouterIP"));
  const isMoved = isOn("NetworkPCPortSwitch") && isAnyChanged("type", "NetworkLanRouterIP");
  // Who is at the port has the phone under its address there.
  const isReaderThere = location.hostname === storedOf("NetworkLanRouterIP");
  return {
    addresses: isMoved && isRouter && isReaderThere ? [address] : [],
    texts: [
      isAnyChanged("NetworkPCPortSwitch") && !isOn("NetworkPCPortSwitch") &&
        t("A computer at the PC port loses its connection. If it is yours, you no longer reach the phone."),
      isMoved && (isRouter
        ? t("After the restart, a computer at the PC port is in a network of its own and finds these pages at %1.", address)
        : t("After the restart, a computer at the PC port is in the phone's network and has another address.")),
    ],
  };
});
