#include "servlet/security/security_certificates.h"

#include <cstdint>

#include "framework/file_utils.h"
#include "framework/text_utils.h"
#include "framework/uploads.h"
#include "platform/certificates.h"
#include "platform/os_services.h"

namespace {

constexpr int kBodyLimit = 0x500000;  // bytes
constexpr std::int64_t kWarningTime = std::int64_t{30} * 24 * 60 * 60;

const char* stateOf(const CertificateDetails& details) {
  const std::time_t now = osTime();
  if (details.validTo < now) return "Expired";
  if (details.validFrom > now) return "Not valid yet";
  return details.validTo - now <= kWarningTime ? "Expires soon" : "Valid";
}

}  // namespace

bool isCertificateTooLarge(HttpRequest* request) {
  return request->getContentLength() >= kBodyLimit;
}

UploadedCertificate::UploadedCertificate(HttpRequest* request, const char* target)
    : target_(target),
      upload_(uploadedFile(request, "certificatefile", "/tmp/cert_XXXXXX")),
      isTaken_(!upload_.empty() && RenameUploadFile(upload_.c_str(), target)) {}

UploadedCertificate::~UploadedCertificate() {
  if (!upload_.empty()) removeFile(isTaken_ ? target_ : upload_.c_str());
}

TMPL_varlist* addCertificateDetails(TMPL_varlist* row, const char* path) {
  CertificateDetails details;
  if (dl_get_ca_details(path, &details) != 0) return row;
  return TMPL_add_var(row, "Subject", templateText(details.subject).c_str(), "Issuer",
                      templateText(details.issuer).c_str(), "Names", templateText(details.alternativeNames).c_str(),
                      "Serial", details.serial.c_str(), "ValidFrom", details.beginning.c_str(), "Fingerprint",
                      details.fingerprint.c_str(), "State", stateOf(details), nullptr);
}
