#include "simulator/x509.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <optional>
#include <span>
#include <utility>

namespace simulator {
namespace {

constexpr std::size_t kMaxFileSize = 5 << 20;
constexpr long kMaxBlockSize = 64 << 10;  // of a certificate or key
constexpr std::size_t kMaxChain = 10;

struct FreeBio {
  void operator()(BIO* stream) const { BIO_free(stream); }
};
using Stream = std::unique_ptr<BIO, FreeBio>;

// Failures leave errors behind, which nobody is to find later.
struct ForgetErrors {
  ~ForgetErrors() { ERR_clear_error(); }
};

// One part of a PEM file.
class PemBlock {
 public:
  // False at the end of the file, and where it is broken.
  bool read(BIO* stream) {
    clear();
    return PEM_read_bio(stream, &name_, &header_, &bytes_, &size_) == 1;
  }
  PemBlock() = default;
  ~PemBlock() { clear(); }
  PemBlock(const PemBlock&) = delete;
  PemBlock& operator=(const PemBlock&) = delete;

  bool isCertificate() const { return name() == PEM_STRING_X509 || name() == PEM_STRING_X509_OLD; }
  bool isKey() const { return name().ends_with("PRIVATE KEY"); }
  bool isEncrypted() const { return name() == PEM_STRING_PKCS8 || *header_ != '\0'; }
  std::string_view bytes() const { return {reinterpret_cast<const char*>(bytes_), static_cast<std::size_t>(size_)}; }

 private:
  std::string_view name() const { return name_; }
  void clear() {
    OPENSSL_free(std::exchange(name_, nullptr));
    OPENSSL_free(std::exchange(header_, nullptr));
    OPENSSL_clear_free(std::exchange(bytes_, nullptr), static_cast<std::size_t>(std::exchange(size_, 0)));
  }

  char* name_ = nullptr;
  char* header_ = nullptr;
  unsigned char* bytes_ = nullptr;
  long size_ = 0;
};

// What a PEM file holds; null stands for a key that cannot be used.
struct Parts {
  std::vector<Certificate> certificates;
  std::vector<PrivateKey> keys;
};

bool isValidTime(const ASN1_TIME* time) {
  tm parts{};
  return ASN1_TIME_to_tm(time, &parts) == 1;
}

Certificate certificateOf(std::string_view der) {
  if (der.size() > kMaxBlockSize) return nullptr;
  const auto* next = reinterpret_cast<const unsigned char*>(der.data());
  const unsigned char* end = next + der.size();
  Certificate certificate(d2i_X509(nullptr, &next, static_cast<long>(der.size())));
  const bool isWhole = certificate && next == end && isValidTime(X509_get0_notBefore(certificate.get())) &&
                       isValidTime(X509_get0_notAfter(certificate.get()));
  return isWhole ? std::move(certificate) : nullptr;
}

PrivateKey keyOf(const PemBlock& block) {
  if (block.isEncrypted() || block.bytes().size() > kMaxBlockSize) return nullptr;
  const auto* next = reinterpret_cast<const unsigned char*>(block.bytes().data());
  return PrivateKey(d2i_AutoPrivateKey(nullptr, &next, static_cast<long>(block.bytes().size())));
}

bool take(const PemBlock& block, Parts& parts) {
  if (block.isCertificate()) {
    parts.certificates.push_back(certificateOf(block.bytes()));
    return parts.certificates.back() && parts.certificates.size() <= kMaxChain;
  }
  if (block.isKey()) parts.keys.push_back(keyOf(block));
  return parts.keys.size() <= kMaxChain;
}

Stream streamOver(std::string_view file) {
  return Stream(BIO_new_mem_buf(file.data(), static_cast<int>(std::min(file.size(), kMaxFileSize))));
}

bool isAtEnd() {
  return ERR_GET_REASON(ERR_peek_last_error()) == PEM_R_NO_START_LINE;
}

// Nothing when a part of the file is broken or no certificate, or it is too much.
std::optional<Parts> partsOf(std::string_view file) {
  ERR_clear_error();
  const ForgetErrors forget;
  const Stream stream = streamOver(file);
  Parts parts;
  PemBlock block;
  while (stream && file.size() <= kMaxFileSize && block.read(stream.get())) {
    if (!take(block, parts)) return std::nullopt;
  }
  return isAtEnd() ? std::optional(std::move(parts)) : std::nullopt;
}

// The certificate of the key, behind it each one's issuer as far as there is one.
std::vector<Certificate> chainOf(std::vector<Certificate> found, EVP_PKEY* key) {
  std::vector<Certificate> chain;
  const auto moveFirst = [&](const std::function<bool(const Certificate&)>& fits) {
    const auto next = std::ranges::find_if(found, fits);
    if (next == found.end()) return false;
    chain.push_back(std::move(*next));
    found.erase(next);
    return true;
  };
  const auto isOfKey = [&](const Certificate& one) { return X509_check_private_key(one.get(), key) == 1; };
  const auto issuedLast = [&](const Certificate& one) {
    return X509_check_issued(one.get(), chain.back().get()) == X509_V_OK;
  };
  if (moveFirst(isOfKey)) {
    while (moveFirst(issuedLast)) {
    }
  }
  return chain;
}

std::string contentOf(BIO* stream) {
  char* data = nullptr;
  const long size = BIO_get_mem_data(stream, &data);
  return size > 0 ? std::string(data, static_cast<std::size_t>(size)) : std::string();
}

// What `print` writes.
std::string printed(const std::function<bool(BIO*)>& print) {
  const ForgetErrors forget;
  const Stream stream(BIO_new(BIO_s_mem()));
  return stream && print(stream.get()) ? contentOf(stream.get()) : std::string();
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    unsigned long character = 0;
    const int length = UTF8_getc(reinterpret_cast<const unsigned char*>(text.data()),
                                 static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX)), &character);
    if (length <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return true;
}

// Texts of certificates may hold any bytes, whatever they say of themselves.
std::string readable(const std::function<bool(BIO*, unsigned long)>& print, unsigned long flags) {
  std::string text = printed([&](BIO* stream) {
    return print(stream, (flags | ASN1_STRFLGS_UTF8_CONVERT) & ~static_cast<unsigned long>(ASN1_STRFLGS_ESC_MSB));
  });
  if (!text.empty() && isUtf8(text)) return text;
  const unsigned long asBytes = (flags | ASN1_STRFLGS_IGNORE_TYPE | ASN1_STRFLGS_ESC_MSB) &
                                ~static_cast<unsigned long>(ASN1_STRFLGS_UTF8_CONVERT);
  return printed([&](BIO* stream) { return print(stream, asBytes); });
}

std::string partOfName(const X509_NAME* name, int part) {
  const int index = X509_NAME_get_index_by_NID(name, part, -1);
  if (index < 0) return {};
  const ASN1_STRING* value = X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, index));
  return readable([&](BIO* stream, unsigned long flags) { return ASN1_STRING_print_ex(stream, value, flags) >= 0; },
                  ASN1_STRFLGS_ESC_CTRL);
}

}  // namespace

Certificate readCertificate(std::string_view file) {
  if (file.find("-----BEGIN") == std::string_view::npos) {
    const ForgetErrors forget;
    return certificateOf(file);
  }
  std::optional<Parts> parts = partsOf(file);
  return parts && parts->certificates.size() == 1 ? std::move(parts->certificates[0]) : nullptr;
}

Certificate readFirstCertificate(std::string_view file) {
  const ForgetErrors forget;
  const Stream stream = streamOver(file);
  PemBlock block;
  while (stream && block.read(stream.get())) {
    if (block.isCertificate()) return certificateOf(block.bytes());
  }
  return nullptr;
}

ServerIdentity readServerIdentity(std::string_view file) {
  const ForgetErrors forget;
  std::optional<Parts> parts = partsOf(file);
  if (!parts || parts->keys.size() != 1 || !parts->keys[0]) return {};
  std::vector<Certificate> chain = chainOf(std::move(parts->certificates), parts->keys[0].get());
  return {std::move(chain), std::move(parts->keys[0])};
}

bool isSame(const Certificate& one, const Certificate& other) {
  return one && other && X509_cmp(one.get(), other.get()) == 0;
}

std::string pemText(const Certificate& certificate) {
  return printed([&](BIO* stream) { return PEM_write_bio_X509(stream, certificate.get()) == 1; });
}

std::string pemText(const ServerIdentity& identity) {
  std::string text;
  for (const Certificate& certificate : identity.chain) text += pemText(certificate);
  if (!identity.key) return text;
  return text + printed([&](BIO* stream) {
           return PEM_write_bio_PKCS8PrivateKey(stream, identity.key.get(), nullptr, nullptr, 0, nullptr, nullptr) == 1;
         });
}

std::string wholeName(const X509_NAME* name) {
  return readable([&](BIO* stream, unsigned long flags) { return X509_NAME_print_ex(stream, name, 0, flags) >= 0; },
                  XN_FLAG_ONELINE);
}

std::string shortName(const X509_NAME* name) {
  for (const int part : {NID_commonName, NID_organizationName}) {
    if (std::string text = partOfName(name, part); !text.empty()) return text;
  }
  return wholeName(name);
}

std::string alternativeNames(const Certificate& certificate) {
  const auto free = [](GENERAL_NAMES* names) { GENERAL_NAMES_free(names); };
  const ForgetErrors forget;
  const std::unique_ptr<GENERAL_NAMES, decltype(free)> names(
      static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate.get(), NID_subject_alt_name, nullptr, nullptr)), free);
  std::string all;
  for (int i = 0; names && i < sk_GENERAL_NAME_num(names.get()); ++i) {
    all += (all.empty() ? "" : ", ") +
           printed([&](BIO* stream) { return GENERAL_NAME_print(stream, sk_GENERAL_NAME_value(names.get(), i)) >= 0; });
  }
  std::ranges::replace_if(
      all, [](unsigned char c) { return c < ' ' || c > '~'; }, '.');
  return all;
}

std::string serialNumber(const Certificate& certificate) {
  return printed([&](BIO* stream) { return i2a_ASN1_INTEGER(stream, X509_get0_serialNumber(certificate.get())) > 0; });
}

std::string timeText(const ASN1_TIME* time) {
  return printed([&](BIO* stream) { return ASN1_TIME_print(stream, time) == 1; });
}

std::time_t secondsOf(const ASN1_TIME* time) {
  tm parts{};
  return ASN1_TIME_to_tm(time, &parts) == 1 ? timegm(&parts) : 0;
}

std::string fingerprint(const Certificate& certificate) {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned size = 0;
  if (X509_digest(certificate.get(), EVP_sha256(), digest, &size) != 1) return {};
  std::string text;
  for (const unsigned char byte : std::span(digest, size)) {
    for (const int digit : {byte >> 4, byte & 15}) text += "0123456789abcdef"[digit];
  }
  return text;
}

}  // namespace simulator
