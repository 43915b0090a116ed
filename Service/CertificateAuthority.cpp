#include "CertificateAuthority.h"

#include <glib.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Secrets.h"

namespace orvane_service {
namespace {

namespace fs = std::filesystem;

const char* const kAuthorityDays = "3650";
// Browsers refuse more than 398.
const char* const kServerDays = "395";
const char* const kMonthInSeconds = "2592000";

// Runs the program openssl to its end. Returns what it complains about, or nothing when it succeeds.
std::optional<std::string> ErrorsOfOpenSsl(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "openssl");
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  g_autofree char* errors = nullptr;
  int status = 0;
  if (!g_spawn_sync(nullptr, pointers.data(), nullptr,
                    static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL), nullptr, nullptr,
                    nullptr, &errors, &status, nullptr)) {
    return "the program cannot be started";
  }
  if (g_spawn_check_wait_status(status, nullptr)) return std::nullopt;
  return errors;
}

// Makes key and certificate, signed by themselves unless there is more to say.
void Make(const Identity& identity, const std::string& name, const std::vector<std::string>& extensions,
          const std::vector<std::string>& more) {
  // Without the system's settings, which may add extensions of their own.
  std::vector<std::string> arguments = {"req", "-x509", "-config", "/dev/null", "-newkey", "ec", "-noenc"};
  arguments.insert(arguments.end(), {"-pkeyopt", "ec_paramgen_curve:P-256", "-keyout", identity.key, "-out"});
  arguments.insert(arguments.end(), {identity.certificate, "-subj", "/O=Orvane local review service/CN=" + name});
  for (const std::string& extension : extensions) arguments.insert(arguments.end(), {"-addext", extension});
  arguments.insert(arguments.end(), more.begin(), more.end());
  const std::optional<std::string> errors = ErrorsOfOpenSsl(arguments);
  if (errors) throw std::runtime_error("openssl cannot make " + identity.certificate.string() + ": " + *errors);
  fs::permissions(identity.key, fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace

CertificateAuthority::CertificateAuthority(const fs::path& folder) : authority_{folder / "ca.pem", folder / "ca.key"} {
  fs::create_directories(folder);
  fs::permissions(folder, fs::perms::owner_all);
  // A key alone is left by a first start that was cut short: nobody can trust its certificate yet.
  if (fs::exists(authority_.certificate) &&
      !ErrorsOfOpenSsl({"x509", "-noout", "-checkend", kMonthInSeconds, "-in", authority_.certificate})) {
    return;
  }
  // A constraint binds only names of its own kind, so addresses need one of their own: none at all. The random part of
  // the name keeps the authorities of two data folders apart for clients that trust both.
  Make(authority_, "Orvane local authority " + RandomHex(4),
       {"basicConstraints=critical,CA:TRUE,pathlen:0", "keyUsage=critical,keyCertSign,cRLSign",
        "subjectKeyIdentifier=hash",
        "nameConstraints=critical,permitted;DNS:" + std::string(kDomain) +
            ",excluded;IP:0.0.0.0/0.0.0.0,excluded;IP:0:0:0:0:0:0:0:0/0:0:0:0:0:0:0:0"},
       {"-days", kAuthorityDays});
}

Identity CertificateAuthority::MakeServerIdentity() const {
  const fs::path folder = authority_.certificate.parent_path();
  const Identity identity = {folder / "server.pem", folder / "server.key"};
  const std::string domain(kDomain);
  // The name is for people; clients look at the alternative names.
  Make(identity, "Orvane local server",
       {"basicConstraints=critical,CA:FALSE", "keyUsage=critical,digitalSignature", "extendedKeyUsage=serverAuth",
        "subjectKeyIdentifier=hash", "authorityKeyIdentifier=keyid",
        "subjectAltName=DNS:" + domain + ",DNS:*." + domain + ",DNS:www." + domain},
       {"-days", kServerDays, "-CA", authority_.certificate, "-CAkey", authority_.key});
  return identity;
}

}  // namespace orvane_service
