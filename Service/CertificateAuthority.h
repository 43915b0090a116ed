// The service's own small certificate authority, and the server's certificate that it signs, both made by the program
// openssl.
//
// A client that trusts the authority trusts it for orvane.localhost and the names below it only: its certificate says
// so, in a critical extension.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Sessions.h"

namespace orvane_service {

/// The PEM files of a certificate and its private key (0600).
struct Identity {
  std::filesystem::path certificate;
  std::filesystem::path key;
};

/// Validity of a server's certificate in days. Browsers refuse more than 398.
constexpr int kServerDays = 395;
/// A certificate with fewer days left is replaced.
constexpr int kRenewalDays = 30;

class CertificateAuthority {
 public:
  /// Opens the authority in the folder, or makes folder (0700), key (ca.key) and certificate (ca.pem). An authority
  /// that expires soon is replaced; clients must then trust the new one. Throws std::runtime_error if openssl cannot
  /// make them, or if one of the two is missing or not of the other.
  CertificateAuthority(std::filesystem::path folder, Clock clock);

  /// The certificate that clients trust.
  const std::filesystem::path& CertificateFile() const { return authority_.certificate; }
  const std::filesystem::path& KeyFile() const { return authority_.key; }

  /// The server's identity for the domain and all names directly below it (server.pem, server.key). Made anew when it
  /// expires soon, is damaged, or is not of this authority. Throws std::runtime_error.
  Identity ServerIdentity();

  /// Signs a new certificate, with a new key, for names such as "DNS:www.orvane.localhost", into NAME.pem and NAME.key.
  /// It signs any name; whether a client accepts it is decided by the authority's constraints. Throws
  /// std::runtime_error.
  Identity Sign(const std::string& name, const std::vector<std::string>& names, int days);

 private:
  bool ExpiresSoon(const Identity& identity) const;

  std::filesystem::path folder_;
  Clock clock_;
  Identity authority_;
};

}  // namespace orvane_service
