// Certificates with their key, ready for handshakes.
#pragma once

#include <gnutls/abstract.h>
#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace host {

class TlsIdentity {
 public:
  // PEM texts, which may be one and the same: the server's certificate, then those that lead from it to a root, in any
  // order; and its key, unencrypted. Throws std::runtime_error with the reason when they are none that fit together.
  TlsIdentity(const std::string& certificates, const std::string& key);

  // Copies for one handshake, which then has them for itself: a `gnutls_certificate_retrieve_function3` hands them on
  // with GNUTLS_CERT_RETR_DEINIT_ALL. 0, or an error of GnuTLS; nothing is to be freed then.
  int give(gnutls_pcert_st** certificates, unsigned* count, gnutls_privkey_t* key) const;

 private:
  template <auto Free>
  struct Freeing {
    template <class Object>
    void operator()(Object* object) const {
      Free(object);
    }
  };
  template <class Handle, auto Free>
  using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Freeing<Free>>;
  using Credentials = Owned<gnutls_certificate_credentials_t, gnutls_certificate_free_credentials>;

  void takeFrom(gnutls_certificate_credentials_t credentials);

  std::vector<Owned<gnutls_x509_crt_t, gnutls_x509_crt_deinit>> certificates_;
  Owned<gnutls_x509_privkey_t, gnutls_x509_privkey_deinit> key_;
};

}  // namespace host
