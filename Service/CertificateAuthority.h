// The service's own small certificate authority, and the server's certificate that it signs, both made by the program
// openssl.
//
// A client that trusts the authority trusts it for orvane.localhost and the names below it only: its certificate says
// so, in a critical extension.
#pragma once

#include <filesystem>
#include <string_view>

namespace orvane_service {

/// All host names of the service are this or end in a point and this. Names under "localhost" lead to this machine
/// without being registered anywhere.
constexpr std::string_view kDomain = "orvane.localhost";

/// The PEM files of a certificate and its private key (0600).
struct Identity {
  std::filesystem::path certificate;
  std::filesystem::path key;
};

class CertificateAuthority {
 public:
  /// Opens the authority in the folder, or makes folder (0700), key (ca.key) and certificate (ca.pem). An authority
  /// that expires within a month is replaced; clients must then trust the new one. Throws std::runtime_error if openssl
  /// cannot make them.
  explicit CertificateAuthority(const std::filesystem::path& folder);

  /// What clients trust, and its key.
  const Identity& Files() const { return authority_; }

  /// Makes the server's identity for the domain and all names directly below it (server.pem, server.key), for a year.
  /// Nobody notices that it is another one than before. Throws std::runtime_error, also if the authority's key is
  /// missing or of another authority.
  Identity MakeServerIdentity() const;

 private:
  const Identity authority_;
};

}  // namespace orvane_service
