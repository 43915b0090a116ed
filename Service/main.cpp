// orvane-service: the options of the command line, and the service's life from start to signal.
#include "DataFolder.h"
#include "Service.h"

#include <getopt.h>
#include <signal.h>
#include <sys/stat.h>

#include <charconv>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>

namespace {

using orvane_service::Service;
using orvane_service::ServiceOptions;

constexpr const char* kUsage =
    "Usage: orvane-service [OPTION]...\n"
    "Runs a review service on this machine only, for the subdomains of orvane.localhost.\n"
    "\n"
    "  --data DIR                folder for everything it keeps\n"
    "                            (default: orvane-service in $XDG_DATA_HOME or ~/.local/share)\n"
    "  --port N                  port on 127.0.0.1; 0 for any free one (default: 48443)\n"
    "  --demo-password-file FILE take the demo user's password from the first line of this file, at the first start\n"
    "                            (default: random, and printed)\n"
    "  --web-version TEXT        what the web site gives as the newest plug-in version (default: 1.1)\n"
    "  --refuse-uploads MESSAGE  refuse every upload with this message\n"
    "  --help                    print this and exit\n"
    "\n"
    "Clients trust DIR/ca/ca.pem. The web site offers the installer that is put at\n"
    "DIR/downloads/orvane-vorrel-APP.dmg. SIGTERM and SIGINT end the service.\n";

// Exit codes.
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int WrongUsage(const std::string& message) {
  if (!message.empty()) std::cerr << "orvane-service: " << message << "\n";
  std::cerr << "Try 'orvane-service --help'.\n";
  return kWrongUsage;
}

bool ParsePort(const char* text, int& port) {
  const char* end = text + strlen(text);
  const auto [stop, error] = std::from_chars(text, end, port);
  return error == std::errc() && stop == end && port >= 0 && port <= 65535;
}

// Takes the password from the file's first line. Returns false when there is none that a client can send: the plug-in
// sends its login form unescaped, so "&", "+" and "%" would never arrive as they are.
bool ReadPassword(const char* file, std::optional<std::string>& password) {
  std::ifstream stream(file);
  password.emplace();
  std::getline(stream, *password);
  return !password->empty() && password->find_first_of("&+%") == std::string::npos;
}

// Fills in the options, or returns the exit code with which the program ends.
std::optional<int> ParseOptions(int argc, char** argv, ServiceOptions& options) {
  enum { kData = 1, kPort, kPasswordFile, kWebVersion, kRefuseUploads, kHelp };
  static const option known[] = {{"data", required_argument, nullptr, kData},
                                 {"port", required_argument, nullptr, kPort},
                                 {"demo-password-file", required_argument, nullptr, kPasswordFile},
                                 {"web-version", required_argument, nullptr, kWebVersion},
                                 {"refuse-uploads", required_argument, nullptr, kRefuseUploads},
                                 {"help", no_argument, nullptr, kHelp},
                                 {nullptr, 0, nullptr, 0}};
  for (int found; (found = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
    switch (found) {
      case kData:
        options.data = optarg;
        if (options.data.empty()) return WrongUsage("--data needs a folder");
        break;
      case kPort:
        if (!ParsePort(optarg, options.port)) return WrongUsage("--port needs a number from 0 to 65535");
        break;
      case kPasswordFile:
        if (!ReadPassword(optarg, options.demo_password)) {
          return WrongUsage("--demo-password-file needs a file with a text without & + and % in its first line");
        }
        break;
      case kWebVersion:
        options.web_version = optarg;
        break;
      case kRefuseUploads:
        options.refuse_uploads = optarg;
        break;
      case kHelp:
        std::cout << kUsage;
        return 0;
      default:
        // getopt_long() has said what is wrong.
        return WrongUsage("");
    }
  }
  if (optind < argc) return WrongUsage(std::string("unexpected argument ") + argv[optind]);
  return std::nullopt;
}

int Run(ServiceOptions options) {
  // Blocked before any thread starts, so that no thread is interrupted and sigwait() below gets them.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  // Passwords' hashes, keys and films are nobody else's business.
  umask(077);
  if (options.data.empty()) options.data = orvane_service::DefaultDataFolder();
  options.log = [](const std::string& line) { std::cerr << "orvane-service: " << line << std::endl; };
  const bool password_was_given = options.demo_password.has_value();
  Service service(std::move(options));
  if (service.DemoPassword() && !password_was_given) {
    std::cout << "orvane-service: demo login: subdomain acme, user editor, password " << *service.DemoPassword()
              << std::endl;
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
  if (const std::optional<int> code = ParseOptions(argc, argv, options)) return *code;
  try {
    return Run(std::move(options));
  } catch (const std::exception& exception) {
    std::cerr << "orvane-service: " << exception.what() << std::endl;
    return kFailed;
  }
}
