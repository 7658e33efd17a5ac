// Certificates as files hold them. Nothing here asks for a pass phrase.
#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <ctime>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct FreeX509 {
  void operator()(X509* certificate) const { X509_free(certificate); }
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
};
using Certificate = std::unique_ptr<X509, FreeX509>;
using PrivateKey = std::unique_ptr<EVP_PKEY, FreeX509>;

// The one certificate of a file, PEM with whatever else or DER; null when there is none or several of them, or it is
// no certificate with which one could tell from when to when it is valid.
Certificate readCertificate(std::string_view file);

// A server's certificate, behind it those of its issuers as far as the file has them, and the key.
struct ServerIdentity {
  std::vector<Certificate> chain;
  PrivateKey key;
};
// From a PEM file, which may hold them in any order; with an empty chain when a part is missing, the key has a pass
// phrase, or there are several keys.
ServerIdentity readServerIdentity(std::string_view file);

// The first certificate of a PEM file, which may hold more; null when there is none.
Certificate readFirstCertificate(std::string_view file);

bool isSame(const Certificate& one, const Certificate& other);

// As PEM files.
std::string pemText(const Certificate& certificate);
std::string pemText(const ServerIdentity& identity);

// Names and times for people: UTF-8 without control characters.
std::string shortName(const X509_NAME* name);  // the common name, else the organization, else all of it
std::string wholeName(const X509_NAME* name);
std::string alternativeNames(const Certificate& certificate);  // joined by ", "
std::string serialNumber(const Certificate& certificate);
std::string timeText(const ASN1_TIME* time);  // "Nov 23 10:00:00 2027 GMT"
std::time_t secondsOf(const ASN1_TIME* time);

// The SHA-256 of the certificate in hex digits.
std::string fingerprint(const Certificate& certificate);

}  // namespace simulator
