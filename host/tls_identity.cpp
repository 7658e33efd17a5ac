#include "host/tls_identity.h"

#include <span>
#include <stdexcept>

namespace host {
namespace {
void require(int result) {
  if (result < 0) throw std::runtime_error(gnutls_strerror(result));
}

gnutls_datum_t datumOf(const std::string& text) {
  // GnuTLS only reads it.
  auto* bytes = reinterpret_cast<unsigned char*>(const_cast<char*>(text.data()));
  return {bytes, static_cast<unsigned>(text.size())};
}

int copyKey(gnutls_x509_privkey_t from, gnutls_privkey_t* key) {
  int result = gnutls_privkey_init(key);
  if (result < 0) return result;
  result = gnutls_privkey_import_x509(*key, from, GNUTLS_PRIVKEY_IMPORT_COPY);
  if (result < 0) gnutls_privkey_deinit(*key);
  return result;
}
}  // namespace

TlsIdentity::TlsIdentity(const std::string& certificates, const std::string& key) {
  gnutls_certificate_credentials_t made = nullptr;
  require(gnutls_certificate_allocate_credentials(&made));
  const Credentials credentials(made);
  const gnutls_datum_t certificateText = datumOf(certificates), keyText = datumOf(key);
  // Puts the certificates in order and tries whether the key is theirs.
  require(gnutls_certificate_set_x509_key_mem2(made, &certificateText, &keyText, GNUTLS_X509_FMT_PEM, nullptr, 0));
  takeFrom(made);
}

void TlsIdentity::takeFrom(gnutls_certificate_credentials_t credentials) {
  gnutls_x509_crt_t* list = nullptr;
  unsigned count = 0;
  require(gnutls_certificate_get_x509_crt(credentials, 0, &list, &count));
  for (gnutls_x509_crt_t certificate : std::span(list, count)) certificates_.emplace_back(certificate);
  gnutls_free(list);
  gnutls_x509_privkey_t key = nullptr;
  require(gnutls_certificate_get_x509_key(credentials, 0, &key));
  key_.reset(key);
}

int TlsIdentity::give(gnutls_pcert_st** certificates, unsigned* count, gnutls_privkey_t* key) const {
  auto* list = static_cast<gnutls_pcert_st*>(gnutls_calloc(certificates_.size(), sizeof(gnutls_pcert_st)));
  if (!list) return GNUTLS_E_MEMORY_ERROR;
  unsigned made = 0;
  int result = 0;
  for (; result >= 0 && made < certificates_.size(); made += result >= 0) {
    result = gnutls_pcert_import_x509(list + made, certificates_[made].get(), 0);
  }
  if (result >= 0) result = copyKey(key_.get(), key);
  if (result < 0) {
    while (made > 0) gnutls_pcert_deinit(list + --made);
    gnutls_free(list);
    return result;
  }
  *certificates = list;
  *count = made;
  return 0;
}

}  // namespace host
