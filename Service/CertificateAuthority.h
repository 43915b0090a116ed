// The service's own small certificate authority, and the server's certificate that it signs.
//
// A client that trusts the authority trusts it for orvane.localhost and the names below it only: its certificate says
// so, in a critical extension.
#pragma once

#include "Sessions.h"

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orvane_service {

struct OpenSslDeleter {
  void operator()(X509* certificate) const { X509_free(certificate); }
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
};
using CertificatePtr = std::unique_ptr<X509, OpenSslDeleter>;
using KeyPtr = std::unique_ptr<EVP_PKEY, OpenSslDeleter>;

/// A certificate with its private key.
struct Identity {
  CertificatePtr certificate;
  KeyPtr key;
};

/// Validity of a server's certificate in days. Browsers refuse more than 398.
constexpr int kServerDays = 395;
/// A certificate with fewer days left is replaced.
constexpr int kRenewalDays = 30;

class CertificateAuthority {
 public:
  /// Opens the authority in the folder, or makes folder (0700), key (ca.key, 0600) and certificate (ca.pem). An
  /// authority that expires soon is replaced; clients must then trust the new one. Throws std::runtime_error if a file
  /// cannot be read or written, or if one of the two is missing.
  CertificateAuthority(std::filesystem::path folder, Clock clock);

  /// The certificate that clients trust.
  const std::filesystem::path& CertificateFile() const { return certificate_file_; }

  /// The server's identity for the domain and all names directly below it, kept in server.pem and server.key (0600).
  /// Made anew when it expires soon, or when it is not of this authority. Throws std::runtime_error.
  Identity ServerIdentity();

  /// Signs a new certificate, with a new key, for names such as "DNS:www.orvane.localhost". It signs any name; whether
  /// a client accepts it is decided by the authority's constraints. Throws std::runtime_error.
  Identity Sign(const std::vector<std::string>& names, int days);

 private:
  std::filesystem::path folder_;
  std::filesystem::path certificate_file_;
  Clock clock_;
  Identity identity_;
};

}  // namespace orvane_service
