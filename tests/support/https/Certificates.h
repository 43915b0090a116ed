// Throw-away certificates for a test server.
#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>
#include <vector>

namespace orvane_test {

using PrivateKey = std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)>;
using Certificate = std::unique_ptr<X509, void (*)(X509*)>;

/// A certificate with its private key.
struct Identity {
  PrivateKey key;
  Certificate certificate;
};

/// A new authority of that name, valid for a day. Throws std::runtime_error when OpenSSL fails, as IssueCertificate()
/// does.
Identity MakeAuthority(const std::string& name);

/// A new server certificate for the DNS names (wildcards allowed), signed by the authority.
Identity IssueCertificate(const Identity& authority, const std::vector<std::string>& names);

/// The certificate as PEM text.
std::string ToPem(const Identity& identity);

}  // namespace orvane_test
