#include "Certificates.h"

#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <stdexcept>

namespace orvane_test {

namespace {

constexpr long kDaySeconds = 24L * 60 * 60;

void Check(bool worked, const char* what) {
  if (!worked) throw std::runtime_error(std::string("cannot make a certificate: ") + what);
}

void AddExtension(X509* certificate, X509* issuer, int nid, const std::string& text) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, nid, text.c_str());
  Check(extension != nullptr && X509_add_ext(certificate, extension, -1) == 1, text.c_str());
  X509_EXTENSION_free(extension);
}

/// A certificate with a new key, a random serial number and a life of a day, unsigned and without an issuer.
Identity MakeUnsigned(const std::string& commonName) {
  Identity identity = {PrivateKey(EVP_EC_gen("P-256"), EVP_PKEY_free), Certificate(X509_new(), X509_free)};
  X509* certificate = identity.certificate.get();
  Check(identity.key != nullptr && certificate != nullptr, "allocation");
  unsigned char random[8];
  Check(RAND_bytes(random, sizeof random) == 1, "random numbers");
  random[0] &= 0x7F;
  BIGNUM* serial = BN_bin2bn(random, sizeof random, nullptr);
  Check(BN_to_ASN1_INTEGER(serial, X509_get_serialNumber(certificate)) != nullptr, "serial number");
  BN_free(serial);
  X509_set_version(certificate, X509_VERSION_3);
  // From yesterday on, so that a clock that is set back during the tests does no harm.
  X509_gmtime_adj(X509_getm_notBefore(certificate), -kDaySeconds);
  X509_gmtime_adj(X509_getm_notAfter(certificate), kDaySeconds);
  X509_set_pubkey(certificate, identity.key.get());
  X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(commonName.c_str()), -1, -1, 0);
  return identity;
}

void Sign(X509* certificate, const X509* issuer, EVP_PKEY* issuerKey) {
  Check(X509_set_issuer_name(certificate, X509_get_subject_name(issuer)) == 1, "issuer");
  Check(X509_sign(certificate, issuerKey, EVP_sha256()) > 0, "signature");
}

}  // namespace

Identity MakeAuthority(const std::string& name) {
  Identity authority = MakeUnsigned(name);
  X509* certificate = authority.certificate.get();
  AddExtension(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE");
  AddExtension(certificate, certificate, NID_key_usage, "critical,keyCertSign");
  Sign(certificate, certificate, authority.key.get());
  return authority;
}

Identity IssueCertificate(const Identity& authority, const std::vector<std::string>& names) {
  Identity identity = MakeUnsigned("Test server");
  X509* certificate = identity.certificate.get();
  std::string alternatives;
  for (const std::string& name : names) alternatives += (alternatives.empty() ? "DNS:" : ",DNS:") + name;
  AddExtension(certificate, authority.certificate.get(), NID_subject_alt_name, alternatives);
  AddExtension(certificate, authority.certificate.get(), NID_ext_key_usage, "serverAuth");
  Sign(certificate, authority.certificate.get(), authority.key.get());
  return identity;
}

std::string ToPem(const Identity& identity) {
  const std::unique_ptr<BIO, int (*)(BIO*)> out(BIO_new(BIO_s_mem()), BIO_free);
  Check(out != nullptr && PEM_write_bio_X509(out.get(), identity.certificate.get()) == 1, "PEM text");
  char* text = nullptr;
  const long length = BIO_get_mem_data(out.get(), &text);
  return std::string(text, static_cast<size_t>(length));
}

}  // namespace orvane_test
