#include "CertificateAuthority.h"

#include "HostNames.h"
#include "Secrets.h"

#include <fcntl.h>
#include <openssl/bn.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace orvane_service {
namespace {

namespace fs = std::filesystem;

constexpr int64_t kDay = 24 * 60 * 60;
constexpr int kAuthorityDays = 3650;

// Throws with OpenSSL's reason.
[[noreturn]] void Fail(const std::string& what) {
  const unsigned long code = ERR_get_error();
  const char* reason = code == 0 ? nullptr : ERR_reason_error_string(code);
  throw std::runtime_error(reason == nullptr ? what : what + ": " + reason);
}

void Check(bool ok, const char* what) {
  if (!ok) Fail(what);
}

struct FileCloser {
  void operator()(FILE* file) const { fclose(file); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

FilePtr OpenToRead(const fs::path& path) {
  FilePtr file(fopen(path.c_str(), "re"));
  if (!file) throw std::runtime_error("cannot read " + path.string() + ": " + strerror(errno));
  return file;
}

// Writes to a file beside it first, so that a half-written certificate or key is never found.
template <typename Write>
void WriteFile(const fs::path& path, mode_t mode, const Write& write) {
  const fs::path temporary = path.string() + ".new";
  fs::remove(temporary);
  const int descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  FilePtr file(descriptor < 0 ? nullptr : fdopen(descriptor, "w"));
  if (!file) throw std::runtime_error("cannot write " + temporary.string() + ": " + strerror(errno));
  Check(write(file.get()) == 1 && fflush(file.get()) == 0 && fsync(fileno(file.get())) == 0, "cannot write a PEM file");
  fs::rename(temporary, path);
}

void WriteIdentity(const Identity& identity, const fs::path& certificate_file, const fs::path& key_file) {
  WriteFile(key_file, 0600, [&](FILE* file) {
    return PEM_write_PrivateKey(file, identity.key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
  WriteFile(certificate_file, 0644, [&](FILE* file) { return PEM_write_X509(file, identity.certificate.get()); });
}

Identity ReadIdentity(const fs::path& certificate_file, const fs::path& key_file) {
  Identity identity;
  identity.certificate.reset(PEM_read_X509(OpenToRead(certificate_file).get(), nullptr, nullptr, nullptr));
  if (!identity.certificate) Fail("no certificate in " + certificate_file.string());
  identity.key.reset(PEM_read_PrivateKey(OpenToRead(key_file).get(), nullptr, nullptr, nullptr));
  if (!identity.key) Fail("no key in " + key_file.string());
  if (X509_check_private_key(identity.certificate.get(), identity.key.get()) != 1) {
    Fail(certificate_file.string() + " and " + key_file.string() + " do not belong together");
  }
  return identity;
}

bool ExpiresSoon(const Identity& identity, int64_t now) {
  time_t limit = now + kRenewalDays * kDay;
  return X509_cmp_time(X509_get0_notAfter(identity.certificate.get()), &limit) < 0;
}

void AddExtension(X509* certificate, X509* issuer, int id, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, id, value.c_str());
  if (extension == nullptr) Fail("certificate extension " + value);
  const int ok = X509_add_ext(certificate, extension, -1);
  X509_EXTENSION_free(extension);
  Check(ok == 1, "certificate extension");
}

// Serial numbers are random, so a replaced certificate never has the number of its predecessor.
void SetSerial(X509* certificate) {
  BIGNUM* number = nullptr;
  // A first digit below 8 keeps it positive, one above 0 keeps its length.
  const std::string digits = "4" + RandomHex(kIdentifierBytes).substr(1);
  const bool ok = BN_hex2bn(&number, digits.c_str()) > 0 &&
                  BN_to_ASN1_INTEGER(number, X509_get_serialNumber(certificate)) != nullptr;
  BN_free(number);
  Check(ok, "certificate serial number");
}

void SetName(X509* certificate, const std::string& common_name) {
  X509_NAME* name = X509_get_subject_name(certificate);
  const auto add = [&](const char* field, const std::string& value) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(value.c_str());
    Check(X509_NAME_add_entry_by_txt(name, field, MBSTRING_UTF8, bytes, -1, -1, 0) == 1, "certificate name");
  };
  add("O", "Orvane local review service");
  add("CN", common_name);
}

// A version 3 certificate with a new key, everything set but issuer, extensions and signature.
Identity NewIdentity(const std::string& common_name, int64_t now, int days) {
  Identity identity;
  identity.key.reset(EVP_EC_gen("P-256"));
  identity.certificate.reset(X509_new());
  X509* certificate = identity.certificate.get();
  Check(identity.key && certificate != nullptr && X509_set_version(certificate, X509_VERSION_3) == 1,
        "new certificate");
  SetSerial(certificate);
  SetName(certificate, common_name);
  // An hour in the past, for clients whose clock is a little slow.
  const time_t begin = now - 60 * 60;
  Check(ASN1_TIME_set(X509_getm_notBefore(certificate), begin) != nullptr &&
            ASN1_TIME_set(X509_getm_notAfter(certificate), begin + days * kDay) != nullptr &&
            X509_set_pubkey(certificate, identity.key.get()) == 1,
        "new certificate");
  return identity;
}

void SignWith(X509* certificate, X509* issuer, EVP_PKEY* key) {
  Check(X509_set_issuer_name(certificate, X509_get_subject_name(issuer)) == 1 &&
            X509_sign(certificate, key, EVP_sha256()) > 0,
        "signing a certificate");
}

Identity NewAuthority(int64_t now) {
  // The random part keeps the authorities of two data folders apart for clients that trust both.
  Identity identity = NewIdentity("Orvane local authority " + RandomHex(4), now, kAuthorityDays);
  X509* certificate = identity.certificate.get();
  AddExtension(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
  AddExtension(certificate, certificate, NID_key_usage, "critical,keyCertSign,cRLSign");
  AddExtension(certificate, certificate, NID_subject_key_identifier, "hash");
  // A constraint binds only names of its own kind, so addresses need one of their own: none at all.
  AddExtension(certificate, certificate, NID_name_constraints,
               "critical,permitted;DNS:" + std::string(kDomain) +
                   ",excluded;IP:0.0.0.0/0.0.0.0,excluded;IP:0:0:0:0:0:0:0:0/0:0:0:0:0:0:0:0");
  SignWith(certificate, certificate, identity.key.get());
  return identity;
}

}  // namespace

CertificateAuthority::CertificateAuthority(fs::path folder, Clock clock)
    : folder_(std::move(folder)), certificate_file_(folder_ / "ca.pem"), clock_(std::move(clock)) {
  fs::create_directories(folder_);
  fs::permissions(folder_, fs::perms::owner_all);
  const fs::path key_file = folder_ / "ca.key";
  const bool has_certificate = fs::exists(certificate_file_);
  // A key alone is left by a first start that was cut short: nobody can trust its certificate yet.
  if (has_certificate && !fs::exists(key_file)) {
    throw std::runtime_error(key_file.string() + " is missing. Restore it, or remove " + certificate_file_.string() +
                             " for a new authority, which clients must then trust anew");
  }
  if (has_certificate) identity_ = ReadIdentity(certificate_file_, key_file);
  if (has_certificate && !ExpiresSoon(identity_, clock_())) return;
  identity_ = NewAuthority(clock_());
  WriteIdentity(identity_, certificate_file_, key_file);
}

Identity CertificateAuthority::Sign(const std::vector<std::string>& names, int days) {
  // The common name is for people; clients look at the alternative names.
  Identity identity = NewIdentity("Orvane local server", clock_(), days);
  X509* certificate = identity.certificate.get();
  X509* issuer = identity_.certificate.get();
  std::string alternative_names;
  for (const std::string& name : names) alternative_names += (alternative_names.empty() ? "" : ",") + name;
  AddExtension(certificate, issuer, NID_basic_constraints, "critical,CA:FALSE");
  AddExtension(certificate, issuer, NID_key_usage, "critical,digitalSignature");
  AddExtension(certificate, issuer, NID_ext_key_usage, "serverAuth");
  AddExtension(certificate, issuer, NID_subject_alt_name, alternative_names);
  AddExtension(certificate, issuer, NID_subject_key_identifier, "hash");
  AddExtension(certificate, issuer, NID_authority_key_identifier, "keyid");
  SignWith(certificate, issuer, identity_.key.get());
  return identity;
}

Identity CertificateAuthority::ServerIdentity() {
  const fs::path certificate_file = folder_ / "server.pem";
  const fs::path key_file = folder_ / "server.key";
  try {
    Identity identity = ReadIdentity(certificate_file, key_file);
    const bool ours = X509_verify(identity.certificate.get(), identity_.key.get()) == 1;
    if (ours && !ExpiresSoon(identity, clock_())) return identity;
  } catch (const std::runtime_error&) {
    // Missing or damaged: unlike the authority, it can be made anew without anybody noticing.
  }
  ERR_clear_error();
  const std::string domain(kDomain);
  Identity identity = Sign({"DNS:" + domain, "DNS:*." + domain, "DNS:www." + domain}, kServerDays);
  WriteIdentity(identity, certificate_file, key_file);
  return identity;
}

}  // namespace orvane_service
