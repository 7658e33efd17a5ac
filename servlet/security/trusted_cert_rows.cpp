#include "servlet/security/trusted_cert_rows.h"

#include <algorithm>
#include <string>

#include "framework/text_utils.h"
#include "platform/certificates.h"
#include "servlet/security/security_certificates.h"

namespace {

constexpr int kRows = 10;

TMPL_varlist* newRow(int number, const std::string& issuedTo, const std::string& issuedBy, const char* expiration) {
  return TMPL_add_var(nullptr, "row", std::to_string(number).c_str(), "setColor", number % 2 == 0 ? "0" : "1",
                      "IssuedTo", templateText(issuedTo).c_str(), "IssuedBy", templateText(issuedBy).c_str(),
                      "Expiration", expiration, nullptr);
}

TMPL_varlist* certificateRow(int number, const TrustedCertificateInfo& info) {
  const std::string path = info.path;
  const std::string name = path.substr(path.rfind('/') + 1);
  TMPL_varlist* row = newRow(number, info.issuedTo, info.issuedBy, info.expiration);
  return addCertificateDetails(TMPL_add_var(row, "FilePath", templateText(name).c_str(), nullptr), info.path);
}

}  // namespace

TMPL_loop* trustedCertificateRows() {
  TrustedCertificates found;
  if (dl_get_trust_ca_info(&found) != 0) found.count = 0;
  const int count = std::min(found.count, static_cast<int>(kMaxTrustedCertificates));
  TMPL_loop* rows = nullptr;
  int number = 1;
  for (; number <= count; ++number) {
    rows = TMPL_add_varlist(rows, certificateRow(number, found.records[number - 1]));
  }
  while (number <= kRows) rows = TMPL_add_varlist(rows, newRow(number++, "", "", ""));
  return rows;
}
