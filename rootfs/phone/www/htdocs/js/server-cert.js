// The server certificate: what another one means for those who open the pages.
import { fieldsOf, warnOfRisks } from "./connection-risks.js";
import { t } from "./i18n.js";

const form = document.querySelector("form:has(.bar)");
const { isAnyChanged } = fieldsOf(form);

warnOfRisks(form, () => ({
  texts: [isAnyChanged("HttpsDevCert") && t("After the restart, browsers are shown the other certificate over HTTPS. Those that do not trust it warn before they open these pages.")],
}));
