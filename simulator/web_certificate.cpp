#include "simulator/web_certificate.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/log.h"
#include "platform/phone_root.h"
#include "simulator/files.h"
#include "simulator/phone.h"
#include "simulator/simulator.h"

namespace simulator {
namespace {

constexpr char kDeviceFile[] = "/config/certs/phonedev/WebServer.pem";
constexpr char kUploadedFile[] = "/config/certs/server/WebServer.pem";
constexpr int kDaysValid = 3650;

template <auto Free>
struct Freeing {
  template <class Object>
  void operator()(Object* object) const {
    Free(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Freeing<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Freeing<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freeing<X509_EXTENSION_free>>;
using Memory = std::unique_ptr<BIO, Freeing<BIO_free_all>>;

Memory memoryOf(std::string_view text) {
  return Memory(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
}

int noPassphrase(char*, int, int, void*) {
  return 0;
}

bool isCertificateWithKey(std::string_view pem) {
  const Memory first = memoryOf(pem), second = memoryOf(pem);
  const Certificate certificate(PEM_read_bio_X509(first.get(), nullptr, noPassphrase, nullptr));
  const Key key(PEM_read_bio_PrivateKey(second.get(), nullptr, noPassphrase, nullptr));
  return certificate && key && X509_check_private_key(certificate.get(), key.get()) == 1;
}

bool setSerialNumber(X509* certificate) {
  std::uint64_t number = 0;
  return RAND_bytes(reinterpret_cast<unsigned char*>(&number), sizeof number) == 1 &&
         ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), number >> 1) == 1;
}

bool setNames(X509* certificate, const std::string& name) {
  X509_NAME* subject = X509_get_subject_name(certificate);
  const auto* text = reinterpret_cast<const unsigned char*>(name.c_str());
  return X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_ASC, text, -1, -1, 0) == 1 &&
         X509_set_issuer_name(certificate, subject) == 1;
}

bool addExtension(X509* certificate, int kind, const std::string& value) {
  const Extension extension(X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str()));
  return extension && X509_add_ext(certificate, extension.get(), -1) == 1;
}

bool fillIn(X509* certificate, EVP_PKEY* key, const std::string& name) {
  return X509_set_version(certificate, X509_VERSION_3) == 1 && setSerialNumber(certificate) &&
         X509_gmtime_adj(X509_getm_notBefore(certificate), 0) != nullptr &&
         X509_time_adj_ex(X509_getm_notAfter(certificate), kDaysValid, 0, nullptr) != nullptr &&
         setNames(certificate, name) && addExtension(certificate, NID_subject_alt_name, "DNS:" + name) &&
         addExtension(certificate, NID_basic_constraints, "critical,CA:FALSE") &&
         addExtension(certificate, NID_key_usage, "critical,digitalSignature") &&
         addExtension(certificate, NID_ext_key_usage, "serverAuth") && X509_set_pubkey(certificate, key) == 1 &&
         X509_sign(certificate, key, EVP_sha256()) > 0;
}

// PEM; empty when it could not be made.
std::string makeCertificateWithKey(const std::string& name) {
  const Key key(EVP_EC_gen("P-256"));
  const Certificate certificate(X509_new());
  const Memory pem(BIO_new(BIO_s_mem()));
  if (!key || !certificate || !pem || !fillIn(certificate.get(), key.get(), name) ||
      PEM_write_bio_X509(pem.get(), certificate.get()) != 1 ||
      PEM_write_bio_PrivateKey(pem.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) != 1) {
    return {};
  }
  char* text = nullptr;
  const long length = BIO_get_mem_data(pem.get(), &text);
  return {text, static_cast<std::size_t>(length)};
}

// Whether the uploaded certificate is to be shown. What was true last is, while the phone is busy.
bool choosesUploaded() {
  static std::atomic<bool> chosen = false;
  const std::unique_lock lock(phone().mutex, std::try_to_lock);
  if (lock) chosen = phone().config.get("HttpsDevCert") == "1";
  return chosen;
}

}  // namespace

void ensureDeviceCertificate(const std::string& mac) {
  const std::string path = phonePath(kDeviceFile);
  if (isCertificateWithKey(readFile(path).value_or(""))) return;
  const std::string pem = makeCertificateWithKey(mac.empty() ? "phone" : mac);
  if (pem.empty() || !replaceFile(path, pem, 0600)) {
    log_log(kWebLog, kLogError, "no certificate could be made at %s\n", kDeviceFile);
  }
}

std::vector<std::string> webCertificates() {
  std::vector<std::string> files;
  if (choosesUploaded()) files.push_back(phonePath(kUploadedFile));
  files.push_back(phonePath(kDeviceFile));
  return files;
}

}  // namespace simulator
