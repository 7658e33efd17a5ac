// What the pages of certificates share.
#pragma once

#include <string>

#include "framework/servlet_base.h"

// True when the request's body is larger than the pages take.
bool isCertificateTooLarge(HttpRequest* request);

// The file that was uploaded, under a fixed name for as long as the library looks at it.
class UploadedCertificate {
 public:
  // `target` is a path of the phone, a literal.
  UploadedCertificate(HttpRequest* request, const char* target);
  // Whatever happened, nothing of the upload stays.
  ~UploadedCertificate();
  UploadedCertificate(const UploadedCertificate&) = delete;
  UploadedCertificate& operator=(const UploadedCertificate&) = delete;

  // False when there is none, or it could not get its name.
  explicit operator bool() const { return isTaken_; }
  const char* path() const { return target_; }
  // Where the upload was stored first; empty when none came.
  const std::string& upload() const { return upload_; }

 private:
  const char* target_;
  std::string upload_;
  bool isTaken_;
};

// Adds what the page says of an installed certificate when asked: "Subject", "Issuer", "Names", "Serial", "ValidFrom",
// "Fingerprint", and in "State" how it stands on the phone's clock: "Valid", "Not valid yet", "Expires soon" (within 30
// days) or "Expired". Adds nothing when there is none at the path.
TMPL_varlist* addCertificateDetails(TMPL_varlist* row, const char* path);
