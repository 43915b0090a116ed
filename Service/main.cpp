// orvane-service: the options of the command line, and the service's life from start to signal.
#include <CLI/CLI.hpp>
#include <glib.h>
#include <malloc.h>
#include <signal.h>
#include <sys/stat.h>

#include <fstream>
#include <iostream>
#include <string>

#include "Deployment.h"
#include "Service.h"

namespace {

using orvane_service::Service;
using orvane_service::ServiceOptions;

// Exit codes.
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

void WarnIfReadable(const std::string& file) {
  struct stat info {};
  if (stat(file.c_str(), &info) == 0 && (info.st_mode & (S_IRGRP | S_IROTH)) != 0) {
    std::cerr << "orvane-service: warning: other users of this machine may read " << file << std::endl;
  }
}

// Takes the password from the file's first line. It must be one that a client can send: the plug-in sends its login
// form unescaped, so "&", "+" and "%" would never arrive as they are.
std::string ReadPassword(const std::string& file) {
  WarnIfReadable(file);
  std::ifstream stream(file);
  std::string password;
  std::getline(stream, password);
  if (password.empty() || password.find_first_of("&+%") != std::string::npos) {
    throw CLI::ValidationError("--demo-password-file", "a text without &, + and % is needed in the first line");
  }
  return password;
}

// What is printed often ends in a log, so the password is not: it gets a file that nobody else can read.
void WritePassword(const std::string& file, const std::string& password) {
  std::ofstream stream(file);
  stream << password << std::endl;
  if (!stream) throw std::runtime_error("cannot write " + file);
}

void AddOptions(CLI::App& app, ServiceOptions& options) {
  app.add_option("--data", options.data,
                 "folder for everything it keeps (default: orvane-service in $XDG_DATA_HOME or ~/.local/share)")
      ->type_name("DIR");
  app.add_option("--port", options.port, "port on 127.0.0.1; 0 for any free one (default: 48443)")
      ->type_name("N")
      ->check(CLI::Range(0, 65535).description(""));
  app.add_option_function<std::string>(
         "--demo-password-file", [&options](const std::string& file) { options.demo_password = ReadPassword(file); },
         "take the demo user's password from the first line of this file, at the first start (default: random, and "
         "written to DIR/demo-password)")
      ->type_name("FILE");
  app.add_option("--web-version", options.web_version,
                 "what the web site gives as the newest plug-in version (default: what DIR/downloads/version.txt says, "
                 "or " ORVANE_VERSION ")")
      ->type_name("TEXT");
  app.add_option("--refuse-uploads", options.refuse_uploads, "refuse every upload with this message")
      ->type_name("MESSAGE");
}

int Run(ServiceOptions options) {
  // What the check of a password took goes back to the system, and is not kept by its thread's heap.
  mallopt(M_MMAP_THRESHOLD, 1 << 20);
  // Blocked before any thread starts, so that no thread is interrupted and sigwait() below gets them.
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  // Passwords' hashes, keys and films are nobody else's business.
  umask(077);
  if (options.data.empty()) options.data = std::string(g_get_user_data_dir()) + "/orvane-service";
  options.log = [](const std::string& line) { std::cerr << "orvane-service: " << line << std::endl; };
  const bool password_was_given = options.demo_password.has_value();
  Service service(std::move(options));
  WarnIfReadable(service.AuthorityKey());
  if (service.DemoPassword() && !password_was_given) {
    const std::string file = (service.Data() / "demo-password").string();
    WritePassword(file, *service.DemoPassword());
    std::cout << "orvane-service: demo login: subdomain acme, user editor, password in " << file << std::endl;
  }
  service.Start();
  std::cout << "orvane-service: ready on https://127.0.0.1:" << service.Port() << " (data in "
            << service.Data().string() << ")" << std::endl;
  int signal = 0;
  sigwait(&signals, &signal);
  service.Stop();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  ServiceOptions options;
  CLI::App app("Runs a review service on this machine only, for the subdomains of orvane.localhost.", "orvane-service");
  app.footer(
      "Clients trust DIR/ca/ca.pem. The web site offers the installer that is put at\n"
      "DIR/downloads/orvane-vorrel-APP.dmg. SIGTERM, SIGINT and SIGHUP end the service.");
  AddOptions(app, options);
  try {
    app.parse(argc, argv);
    return Run(std::move(options));
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  } catch (const std::exception& exception) {
    std::cerr << "orvane-service: " << exception.what() << std::endl;
    return kFailed;
  }
}
