// The certificate library: whom the phone's HTTPS client trusts, and what its HTTPS server shows.
#pragma once

#include <cstddef>
#include <ctime>
#include <string>

// The options by their numbers; values are paths of the phone, unless something else is said.
enum CertificateOption : int {
  kTrustedFolder = 1,      // where trusted certificates are installed
  kServerCertificate = 2,  // where the server's is installed
  kCommonNameCheck = 10,   // const int*: whether the name of a server has to fit
  kTrustedInUse = 11,      // the folder of those that are trusted
  kServerInUse = 12,       // the certificate that the server shows
};
void dl_set_option(int option, const void* value);

inline constexpr std::size_t kMaxTrustedCertificates = 10;

// Texts end with a NUL within their field.
struct ServerCertificateInfo {
  char issuedTo[64], issuedBy[64], expiration[64];
};
struct TrustedCertificateInfo {
  char issuedTo[64], issuedBy[64], expiration[68], path[64];
};
struct TrustedCertificates {
  int count;
  TrustedCertificateInfo records[kMaxTrustedCertificates];
};
static_assert(sizeof(TrustedCertificateInfo) == 260);

// Each gives 0 and fills `info`, or something else when there is no server certificate, or the list cannot be read. At
// most as many as the list holds are given, in the order of their installation.
int dl_get_ser_ca_info(ServerCertificateInfo* info);
int dl_get_trust_ca_info(TrustedCertificates* info);

// What a person may want to know of an installed certificate beyond the record. Texts are UTF-8 without control
// characters, of bounded length; times are seconds since the epoch.
struct CertificateDetails {
  std::string issuedTo, issuedBy;  // as in the record
  std::string subject, issuer;     // whole names, "C = DE, O = Example, CN = Example CA"
  std::string alternativeNames;    // "DNS:phone.example, IP Address:192.0.2.1", empty without any
  std::string serial;              // hex digits
  std::string fingerprint;         // of SHA-256, "AB:CD:…"
  std::string beginning, expiration;
  std::time_t validFrom = 0, validTo = 0;
};
// Those of an installed certificate or of the built-in one of the server, by its path; of a chain the first. 0, or -1
// when there is none.
int dl_get_ca_details(const char* file, CertificateDetails* details);

// Installs a trusted certificate (PEM or DER, one in the file): 0 or one of the codes. The file is left where it is.
enum TrustedInstallResult : int {
  kTrustedInstallFailed = -1,
  kTrustedInstalledAlready = -2,
  kTrustedDelivered = -3,
  kTrustedFileError = -10,
};
int dl_install_ca(const char* file);

// Installs the server's certificate (PEM, with its key, which has no pass phrase, and with the certificates of those
// who issued it, in any order): 0, one of the codes, or -1. The file is left where it is.
enum ServerInstallResult : int {
  kServerInstalledAlready = -7,
  kServerDelivered = -8,
};
int dl_install_ser_ca(const char* file);

// Removes an installed certificate: 0, or -1 when there is none at that path or it is not one of theirs. The delivered
// ones and links are none.
int dl_del_ca(const char* file);
