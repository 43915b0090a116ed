#include "CertificateAuthority.h"

#include <glib.h>

#include <ctime>
#include <fstream>
#include <stdexcept>

#include "HostNames.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

namespace fs = std::filesystem;

constexpr int64_t kDay = 24 * 60 * 60;
constexpr int kAuthorityDays = 3650;

const char* const kAuthorityExtensions = R"(basicConstraints = critical, CA:TRUE, pathlen:0
keyUsage = critical, keyCertSign, cRLSign
subjectKeyIdentifier = hash
)";

const char* const kServerExtensions = R"(basicConstraints = critical, CA:FALSE
keyUsage = critical, digitalSignature
extendedKeyUsage = serverAuth
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
)";

// A constraint binds only names of its own kind, so addresses need one of their own: none at all.
std::string NameConstraints() {
  return "nameConstraints = critical, permitted;DNS:" + std::string(kDomain) +
         ", excluded;IP:0.0.0.0/0.0.0.0, excluded;IP:0:0:0:0:0:0:0:0/0:0:0:0:0:0:0:0\n";
}

struct Outcome {
  bool ok = false;
  std::string output;
  std::string errors;
};

// Runs the program openssl to its end.
Outcome OpenSsl(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "openssl");
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  g_autofree char* output = nullptr;
  g_autofree char* errors = nullptr;
  int status = 0;
  if (!g_spawn_sync(nullptr, pointers.data(), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, &output, &errors, &status,
                    nullptr)) {
    throw std::runtime_error("the program openssl cannot be started");
  }
  return {g_spawn_check_wait_status(status, nullptr) != 0, output, errors};
}

// Makes key and certificate, by the authority or, without one, signed by itself. They come to their places complete.
void Make(const Identity& identity, const std::string& common_name, const std::string& extensions, int days,
          const Identity* authority) {
  const fs::path settings = identity.certificate.string() + ".cnf";
  const std::string new_key = identity.key.string() + ".new";
  const std::string new_certificate = identity.certificate.string() + ".new";
  std::ofstream(settings) << "[req]\nprompt = no\ndistinguished_name = name\nx509_extensions = extensions\n"
                          << "[name]\nO = Orvane local review service\nCN = " << common_name << "\n"
                          << "[extensions]\n"
                          << extensions;
  std::vector<std::string> arguments = {"req",
                                        "-x509",
                                        "-config",
                                        settings,
                                        "-newkey",
                                        "ec",
                                        "-pkeyopt",
                                        "ec_paramgen_curve:P-256",
                                        "-noenc",
                                        "-keyout",
                                        new_key,
                                        "-out",
                                        new_certificate,
                                        "-days",
                                        std::to_string(days)};
  if (authority) arguments.insert(arguments.end(), {"-CA", authority->certificate, "-CAkey", authority->key});
  const Outcome outcome = OpenSsl(arguments);
  fs::remove(settings);
  if (!outcome.ok) throw std::runtime_error("openssl cannot make a certificate: " + outcome.errors);
  fs::permissions(new_key, fs::perms::owner_read | fs::perms::owner_write);
  fs::rename(new_key, identity.key);
  fs::rename(new_certificate, identity.certificate);
}

bool BelongTogether(const Identity& identity) {
  const Outcome of_certificate = OpenSsl({"x509", "-noout", "-pubkey", "-in", identity.certificate});
  const Outcome of_key = OpenSsl({"pkey", "-pubout", "-in", identity.key});
  return of_certificate.ok && of_key.ok && of_certificate.output == of_key.output;
}

}  // namespace

CertificateAuthority::CertificateAuthority(fs::path folder, Clock clock)
    : folder_(std::move(folder)), clock_(std::move(clock)), authority_{folder_ / "ca.pem", folder_ / "ca.key"} {
  fs::create_directories(folder_);
  fs::permissions(folder_, fs::perms::owner_all);
  // A key alone is left by a first start that was cut short: nobody can trust its certificate yet.
  if (fs::exists(authority_.certificate)) {
    if (!fs::exists(authority_.key) || !BelongTogether(authority_)) {
      throw std::runtime_error(authority_.key.string() + " is missing or of another authority. Restore it, or remove " +
                               authority_.certificate.string() +
                               " for a new authority, which clients must then trust anew");
    }
    if (!ExpiresSoon(authority_)) return;
  }
  // The random part keeps the authorities of two data folders apart for clients that trust both.
  Make(authority_, "Orvane local authority " + RandomHex(4), kAuthorityExtensions + NameConstraints(), kAuthorityDays,
       nullptr);
}

bool CertificateAuthority::ExpiresSoon(const Identity& identity) const {
  const int64_t left = kRenewalDays * kDay + clock_() - time(nullptr);
  return !OpenSsl({"x509", "-noout", "-checkend", std::to_string(left), "-in", identity.certificate}).ok;
}

Identity CertificateAuthority::Sign(const std::string& name, const std::vector<std::string>& names, int days) {
  Identity identity = {folder_ / (name + ".pem"), folder_ / (name + ".key")};
  std::string alternative_names;
  for (const std::string& entry : names) alternative_names += (alternative_names.empty() ? "" : ", ") + entry;
  // The common name is for people; clients look at the alternative names.
  Make(identity, "Orvane local server", kServerExtensions + ("subjectAltName = " + alternative_names + "\n"), days,
       &authority_);
  return identity;
}

Identity CertificateAuthority::ServerIdentity() {
  const Identity identity = {folder_ / "server.pem", folder_ / "server.key"};
  const bool ours = OpenSsl({"verify", "-CAfile", authority_.certificate, identity.certificate}).ok;
  // Unlike the authority, it can be made anew without anybody noticing.
  if (ours && BelongTogether(identity) && !ExpiresSoon(identity)) return identity;
  const std::string domain(kDomain);
  return Sign("server", {"DNS:" + domain, "DNS:*." + domain, "DNS:www." + domain}, kServerDays);
}

}  // namespace orvane_service
